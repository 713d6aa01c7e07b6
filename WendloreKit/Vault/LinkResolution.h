#pragma once

#include "Vault/FileNode.h"

#include <QString>

#include <optional>
#include <vector>

namespace wendlore {

/// What a link inside a note points at: its text without escapes, without the heading after "#" and without
/// blanks around it. A link that is only a heading gives the heading.
[[nodiscard]] QString linkedPath(const QString& linkText);

/// The note name in a link without folders: "Plan" of "Plan.md" and "Plan.MD".
[[nodiscard]] QString linkedNoteName(const QString& path);

/// Where `path` may lie in `folder`: as it is, and, when it does not end in ".md", with that added.
[[nodiscard]] std::vector<FileURL> pathCandidates(const QString& path, const FileURL& folder);

/// The first candidate for `path` that exists in one of `folders`, in their order.
[[nodiscard]] std::optional<FileURL> existingCandidate(const QString& path,
                                                       const std::vector<FileURL>& folders);

/// The file that `path` means from the root of the nearest folder around the note at `linkingNote` in which
/// it exists, up to `root`; without a note it is looked for in `root` only. So a folder of notes that was
/// moved as a whole keeps its links.
[[nodiscard]] std::optional<FileURL>
resolveBundleAbsolute(const QString& path, const std::optional<FileURL>& linkingNote, const FileURL& root);

/// The first file in tree order whose name without extension is `name`, whatever the case.
[[nodiscard]] std::optional<FileURL> findNote(const QString& name, const std::vector<FileNode>& nodes);

} // namespace wendlore
