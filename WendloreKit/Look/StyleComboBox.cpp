#include "Look/StyleComboBox.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"

#include <QPainter>
#include <QStyleOptionComboBox>

using namespace Qt::StringLiterals;

namespace wendlore {

void drawComboBox(QPainter& painter, const QStyleOptionComboBox& box)
{
    const Colors& colors = Colors::of(box.palette);
    const bool isEnabled = box.state.testFlag(QStyle::State_Enabled);
    const bool isHovered = isEnabled && !box.editable && box.state.testFlag(QStyle::State_MouseOver);
    fillRounded(painter, box.rect, isHovered ? colors.hover : colors.paper, metrics::radius);
    if (box.state.testFlag(QStyle::State_HasFocus))
        drawFocusRing(painter, box.rect, colors.accent);
    else
        strokeRounded(painter, box.rect, colors.strongLine, 1, metrics::radius);
    constexpr int signWidth = metrics::disclosure + 2 * metrics::inset;
    QRect sign = box.rect;
    if (box.direction == Qt::RightToLeft)
        sign.setRight(sign.left() + signWidth);
    else
        sign.setLeft(sign.right() - signWidth);
    drawSymbol(painter, sign, u"chevron.down"_s, isEnabled ? colors.muted : colors.faint,
               metrics::disclosure);
}

} // namespace wendlore
