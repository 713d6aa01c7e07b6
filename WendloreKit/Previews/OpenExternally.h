#pragma once

namespace wendlore {

class FileURL;

/// True for the kinds of files that the toolbar offers to open outside the program: PDF, images, web pages,
/// documents and pointers to Google documents.
[[nodiscard]] bool opensInExternalApp(const FileURL& file);

} // namespace wendlore
