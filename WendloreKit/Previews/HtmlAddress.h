#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace wendlore {

/// The scheme in which HTML files and what they refer to are loaded. Unlike "file" it lets the program decide
/// how a file is decoded and what may be read; unlike text that is handed over, its pages may have any size.
inline constexpr auto htmlScheme = "page";

/// The address under which the engine knows `file`: what is written relative to it lies beside the file.
[[nodiscard]] QUrl pageAddress(const FileURL& file);

/// The file behind an address of a page, or behind a file address; nothing for any other address.
[[nodiscard]] std::optional<FileURL> fileOfAddress(const QUrl& address);

/// The folder that what an HTML file shows may lie in: the open bucket when the file is in it, otherwise the
/// file's own folder.
[[nodiscard]] FileURL folderOfPage(const FileURL& file, const std::optional<FileURL>& bucket);

/// What happens when a link is clicked.
enum class LinkAction { follow, openOutside, openFile };

/// A link in the HTML file `shown`: web and mail addresses are for the desktop, other files for the program;
/// places within the page, and schemes that only the engine knows, are followed.
[[nodiscard]] LinkAction actionOfLink(const QUrl& link, const FileURL& shown);

/// Whether `address` is one of the web or of mail, which the user's own programs open.
[[nodiscard]] bool isForTheDesktop(const QUrl& address);

/// Whether `address` has a scheme that the web engine loads by itself.
[[nodiscard]] bool isKnownToTheEngine(const QUrl& address);

/// The text of an HTML file as UTF-8: bytes that are none are read as Latin-1.
[[nodiscard]] QByteArray htmlAsUtf8(const QByteArray& bytes);

} // namespace wendlore
