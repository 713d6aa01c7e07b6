#pragma once

namespace wendlore {

class FileURL;
struct Services;

/// True for the kinds of files that the toolbar offers to open outside the program: PDF, images, web pages,
/// documents and pointers to Google documents.
[[nodiscard]] bool opensInExternalApp(const FileURL& file);

/// Hands `file` to the desktop, which opens it with the program that the user has for it; a pointer to a
/// Google document is read before, in the background, and its document opened in the browser.
void openExternally(const Services& services, const FileURL& file);

} // namespace wendlore
