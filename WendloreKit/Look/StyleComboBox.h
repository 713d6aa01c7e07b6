#pragma once

class QPainter;
class QStyleOptionComboBox;

namespace wendlore {

inline constexpr int comboBoxHeight = 32;

/// Draws a combo box without its text: a field with the sign of a list at its end.
void drawComboBox(QPainter& painter, const QStyleOptionComboBox& box);

} // namespace wendlore
