#pragma once

namespace wendlore {

class FileURL;
class Workspace;

/// True for the kinds of files that the toolbar offers to open outside the program: PDF, images, web pages,
/// documents and pointers to Google documents.
[[nodiscard]] bool opensInExternalApp(const FileURL& file);

/// Hands `file` to the desktop, which opens it with the program that the user has for it.
void openExternally(Workspace& workspace, const FileURL& file);

} // namespace wendlore
