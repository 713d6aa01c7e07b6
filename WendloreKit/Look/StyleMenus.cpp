#include "Look/StyleMenus.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"

#include <QPainter>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int separatorHeight = 9;
constexpr int itemPadding = 10;
constexpr int itemRadius = 5;
constexpr int shortcutGap = 28;
constexpr int barItemPadding = 9;

bool isChecked(const QStyleOptionMenuItem& item)
{
    return item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked;
}

/// Whether the menu keeps a column before its texts.
bool hasLeadingColumn(const QStyleOptionMenuItem& item)
{
    return item.menuHasCheckableItems || item.maxIconWidth > 0;
}

int leadingWidth(const QStyleOptionMenuItem& item)
{
    return hasLeadingColumn(item) ? metrics::icon + metrics::inset : 0;
}

void drawLeading(QPainter& painter, const QStyleOptionMenuItem& item, const QRect& area, const QColor& color)
{
    const QRect place(area.left(), area.top(), metrics::icon, area.height());
    painter.setPen(color);
    if (isChecked(item))
        drawSymbol(painter, place, u"checkmark"_s, color, metrics::icon);
    else if (!item.icon.isNull())
        item.icon.paint(&painter, place);
}

} // namespace

void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& item, EntryTone tone)
{
    const Colors& colors = Colors::of(item.palette);
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(item.rect.left() + itemPadding, item.rect.center().y(),
                         item.rect.width() - 2 * itemPadding, 1, colors.line);
        return;
    }
    const bool isEnabled = item.state.testFlag(QStyle::State_Enabled);
    const bool isSelected = isEnabled && item.state.testFlag(QStyle::State_Selected);
    if (isSelected)
        fillRounded(painter, item.rect, colors.selected, itemRadius);
    const bool isDestructive = isEnabled && tone == EntryTone::destructive;
    const QColor text = isDestructive ? colors.destructive
                        : !isEnabled  ? colors.faint
                        : isSelected  ? colors.selectedText
                                      : colors.text;

    painter.save();
    painter.setFont(item.font);
    QRect area = item.rect.adjusted(itemPadding, 0, -itemPadding, 0);
    drawLeading(painter, item, area, isEnabled && !isSelected && !isDestructive ? colors.muted : text);
    area.setLeft(area.left() + leadingWidth(item));

    const QStringList parts = item.text.split(u'\t');
    painter.setPen(text);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextHideMnemonic | Qt::TextSingleLine,
                     parts.front());
    if (parts.size() > 1) {
        painter.setPen(isEnabled && !isSelected ? colors.muted : text);
        painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, parts.at(1));
    }
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawSymbol(
            painter,
            QRectF(area.right() - metrics::disclosure + 1, area.top(), metrics::disclosure, area.height()),
            u"chevron.right"_s, isSelected ? text : colors.faint, metrics::disclosure);
    painter.restore();
}

void drawMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& item)
{
    const Colors& colors = Colors::of(item.palette);
    painter.fillRect(item.rect, colors.side);
    if (item.state.testFlag(QStyle::State_Selected))
        fillRounded(painter, item.rect, colors.pressed, itemRadius);
    painter.save();
    painter.setPen(item.state.testFlag(QStyle::State_Enabled) ? colors.text : colors.faint);
    painter.drawText(item.rect, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine, item.text);
    painter.restore();
}

QSize menuItemSize(const QStyleOptionMenuItem& item, const QSize& contents)
{
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return {contents.width(), separatorHeight};
    const QFontMetrics measure(item.font);
    const QStringList parts = item.text.split(u'\t');
    int width = 2 * itemPadding + leadingWidth(item) +
                measure.size(Qt::TextHideMnemonic | Qt::TextSingleLine, parts.front()).width();
    if (parts.size() > 1 || item.menuItemType == QStyleOptionMenuItem::SubMenu)
        width += shortcutGap + item.reservedShortcutWidth;
    return {width, metrics::rowHeight};
}

int menuWidth(int textWidth)
{
    return textWidth + metrics::icon + metrics::inset + 2 * (itemPadding + menuMargin);
}

QSize menuBarItemSize(const QSize& contents)
{
    return {contents.width() + 2 * barItemPadding, std::max(contents.height() + 8, 26)};
}

} // namespace wendlore
