#pragma once

#include <QString>

namespace wendlore {

class FileURL;

inline const QString folderSymbol = QStringLiteral("folder");
inline const QString openFolderSymbol = QStringLiteral("folder.fill");

/// The name of the symbol that stands for a file, by its extension.
[[nodiscard]] QString symbolOf(const FileURL& file);

} // namespace wendlore
