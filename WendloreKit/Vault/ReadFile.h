#pragma once

#include "Vault/FileSystemCalls.h"
#include "Vault/FileURL.h"

#include <QByteArray>

#include <optional>

namespace wendlore {

/// The ordinary file at `url`, open for reading; not open when there is none. Never waits for another
/// program, as opening a pipe does.
[[nodiscard]] Descriptor openRegularFile(const FileURL& url,
                                         FileSystemCalls& calls = FileSystemCalls::real());

/// What the ordinary file at `url` holds, or nothing when it cannot be read.
[[nodiscard]] std::optional<QByteArray> readFile(const FileURL& url,
                                                 FileSystemCalls& calls = FileSystemCalls::real());

/// What the open file holds from its start to its end, or nothing (and `errno`) when it cannot be read.
[[nodiscard]] std::optional<QByteArray> readFile(int descriptor, FileSystemCalls& calls);

} // namespace wendlore
