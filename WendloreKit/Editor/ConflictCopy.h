#pragma once

#include "Vault/FileURL.h"

#include <QDateTime>

namespace wendlore {

/// Where another device's version of `note` goes when both sides changed it: beside the note, as
/// "Möte (konflikt Annas dator 2025-03-14 0932).md", with " 2", " 3" and so on while that name is taken. A
/// computer without a name counts as "Mac". Names that would be too long for the file system are shortened.
[[nodiscard]] FileURL conflictCopyURL(const FileURL& note, const QString& computerName, const QDateTime& now);

} // namespace wendlore
