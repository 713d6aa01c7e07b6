#pragma once

#include "Vault/FileURL.h"

#include <array>
#include <string_view>

namespace wendlore {

// The extensions, in lower case, of the kinds of files that the program knows.

/// Files that count as notes in lists, search and links: fewer than open in the editor.
inline constexpr auto textExtensions = std::to_array<std::string_view>({"md", "txt"});
inline constexpr auto imageExtensions = std::to_array<std::string_view>(
    {"jpg", "jpeg", "png", "gif", "webp", "heic", "heif", "tif", "tiff", "bmp"});
inline constexpr auto pdfExtensions = std::to_array<std::string_view>({"pdf"});
inline constexpr auto htmlExtensions = std::to_array<std::string_view>({"html", "htm"});
/// Pointers to documents that live at Google.
inline constexpr auto googleExtensions = std::to_array<std::string_view>({"gdoc", "gsheet", "gslides"});
inline constexpr auto documentExtensions =
    std::to_array<std::string_view>({"docx", "doc", "rtf", "rtfd", "pages", "xlsx", "xls", "csv", "tsv",
                                     "numbers", "pptx", "ppt", "key", "odt", "ods", "odp", "epub"});

/// The kind of view that shows a file: one of six values, decided by the file's extension alone.
class FilePreviewKind final
{
public:
    enum Value { editor, image, pdf, html, google, other };

    /// Files that open in the editor.
    static constexpr auto editorExtensions =
        std::to_array<std::string_view>({"md", "markdown", "mdown", "mkd", "mkdn", "txt", "text"});

    constexpr FilePreviewKind(Value value) // stands for its value everywhere
        : m_value(value)
    {}
    constexpr operator Value() const { return m_value; }

    [[nodiscard]] static FilePreviewKind of(const FileURL& url);

private:
    Value m_value;
};

/// True when a file of that name counts as a note.
[[nodiscard]] bool isNoteName(QByteArrayView name);
/// True when a directory of that name is shown as one file.
[[nodiscard]] bool isPackageName(QByteArrayView name);
/// True for what can be shown as a file: anything but a folder, and packages. What cannot be read counts as a
/// file.
[[nodiscard]] bool isViewableFile(const FileURL& url);

} // namespace wendlore
