#include "Look/RowDelegate.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"

#include <QPainter>

namespace wendlore {

RowDelegate::RowDelegate(QString symbol, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_symbol(std::move(symbol))
{}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const Colors& colors = Colors::of(option.palette);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    if (isSelected || option.state.testFlag(QStyle::State_MouseOver))
        fillRounded(*painter, option.rect, isSelected ? colors.selected : colors.hover, metrics::radius);
    QRect area = option.rect.adjusted(metrics::inset, 0, -metrics::inset, 0);
    drawSymbol(*painter, QRect(area.left(), area.top(), metrics::icon, area.height()), m_symbol,
               isSelected ? colors.selectedText : colors.muted, metrics::icon);
    area.setLeft(area.left() + metrics::icon + metrics::gap);
    painter->setPen(isSelected ? colors.selectedText : colors.text);
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, area.width()));
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {metrics::sidebarMinimum, metrics::rowHeight};
}

} // namespace wendlore
