#pragma once

#include "Vault/FileURL.h"

#include <optional>

#include <sys/stat.h>

namespace wendlore {

/// What the system says of the file behind `file`; nothing when there is none. Unlike the toolkit it knows
/// files whose names are no text.
[[nodiscard]] inline std::optional<struct stat> statusOf(const FileURL& file)
{
    struct stat status = {};
    return ::stat(file.bytes().constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

[[nodiscard]] inline bool isOrdinaryFile(const std::optional<struct stat>& status)
{
    return status && S_ISREG(status->st_mode);
}

/// When the file was changed, in milliseconds since 1970.
[[nodiscard]] inline qint64 changeTime(const struct stat& status)
{
    return qint64(status.st_mtim.tv_sec) * 1000 + status.st_mtim.tv_nsec / 1'000'000;
}

} // namespace wendlore
