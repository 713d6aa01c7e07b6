#pragma once

#include "Vault/FileURL.h"

namespace wendlore {

/// Where `url` is after `from`, which may be a folder above it, has become `to`; the same location when that
/// does not concern it.
[[nodiscard]] inline FileURL relocated(const FileURL& url, const FileURL& from, const FileURL& to)
{
    if (url.hasPathOf(from))
        return FileURL::fromBytes(to.bytes(), url.isDirectory());
    if (url.isBelow(from))
        return to.appendingBytes(url.bytes().mid(from.bytes().size() + 1), url.isDirectory());
    return url;
}

} // namespace wendlore
