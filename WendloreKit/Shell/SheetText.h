#pragma once

#include <QLabel>

namespace wendlore {

/// A paragraph of a sheet, in secondary text, wrapped at a width that reads well.
[[nodiscard]] QLabel* makeSheetText(const QString& text, Qt::TextFormat format, QWidget* parent);

} // namespace wendlore
