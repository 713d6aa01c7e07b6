#pragma once

#include <QStringList>

class QObject;

namespace wendlore {

/// The controls in the accessible tree below `root` that people who cannot see them could not tell apart:
/// those without a name, and those whose role nobody knows. A line for each, with its path from the root.
[[nodiscard]] QStringList namelessControls(QObject& root);

/// The names of all controls of that tree, in its order.
[[nodiscard]] QStringList controlNames(QObject& root);

} // namespace wendlore
