#include "Shell/FileTreeDelegate.h"

#include "Look/FileSymbol.h"
#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

int depthOf(const QModelIndex& index)
{
    int depth = 0;
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent())
        ++depth;
    return depth;
}

bool isFolder(const QModelIndex& index)
{
    return index.data(FileTreeModel::IsFolderRole).toBool();
}

/// Siblings begin in one column, folders and files alike. The top level leaves room for its disclosures; what
/// lies below starts from the edge, so that the first step in is a small one.
QRect symbolPlace(const QModelIndex& index, const QRect& row)
{
    const int depth = depthOf(index);
    const int start = depth == 0 ? metrics::disclosure + metrics::gap : depth * metrics::indent;
    return {row.left() + 2 * metrics::inset + start, row.top(), metrics::icon, row.height()};
}

QRect disclosurePlace(const QModelIndex& index, const QRect& row)
{
    QRect place = symbolPlace(index, row);
    place.translate(-metrics::disclosure - metrics::gap, 0);
    place.setWidth(metrics::disclosure);
    return place;
}

} // namespace

FileTreeDelegate::FileTreeDelegate(FileTreeView* view)
    : QStyledItemDelegate(view)
    , m_view(*view)
{}

void FileTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const Colors& colors = Colors::of(option.palette);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    paintGround(*painter, option, index, colors);
    if (isFolder(index))
        paintDisclosure(*painter, disclosurePlace(index, option.rect), index, colors);

    const QRect place = symbolPlace(index, option.rect);
    const bool isOpenFolder = isFolder(index) && (m_view.isChosenFolder(index) || m_view.isDropTarget(index));
    const QString symbol = isOpenFolder ? openFolderSymbol : index.data(FileTreeModel::SymbolRole).toString();
    drawSymbol(*painter, place, symbol, isSelected ? colors.selectedText : colors.muted, metrics::icon);

    QRect text = option.rect.adjusted(0, 0, -2 * metrics::inset, 0);
    text.setLeft(place.right() + 1 + metrics::gap);
    painter->save();
    painter->setFont(sized(option.font, metrics::textSize, isSelected ? QFont::Medium : QFont::Normal));
    painter->setPen(isSelected ? colors.selectedText : colors.text);
    const QString name = index.data().toString();
    painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      painter->fontMetrics().elidedText(name, Qt::ElideRight, text.width()));
    painter->restore();
}

QSize FileTreeDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {metrics::sidebarMinimum, metrics::rowHeight};
}

QRect FileTreeDelegate::disclosureArea(const QModelIndex& index, const QRect& row) const
{
    const QRect place = disclosurePlace(index, row);
    return place.adjusted(-metrics::inset, 0, metrics::gap / 2, 0);
}

void FileTreeDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index, const Colors& colors) const
{
    const QRectF row = QRectF(option.rect).adjusted(metrics::inset, 0, -metrics::inset, 0);
    if (option.state.testFlag(QStyle::State_Selected))
        fillRounded(painter, row, colors.selected, metrics::radius);
    else if (m_view.isDropTarget(index))
        fillRounded(painter, row, colors.pressed, metrics::radius);
    else if (option.state.testFlag(QStyle::State_MouseOver))
        fillRounded(painter, row, colors.hover, metrics::radius);
    const bool hasRing = option.state.testFlag(QStyle::State_HasFocus) && m_view.isSteeredByKeyboard();
    if (hasRing || m_view.isDropTarget(index))
        drawFocusRing(painter, row, colors.accent);
}

void FileTreeDelegate::paintDisclosure(QPainter& painter, const QRect& area, const QModelIndex& index,
                                       const Colors& colors) const
{
    const double open = m_view.disclosure(index);
    if (open == 0 || open == 1) {
        drawSymbol(painter, area, open == 0 ? u"chevron.right"_s : u"chevron.down"_s, colors.faint,
                   metrics::disclosure);
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(QRectF(area).center());
    painter.rotate(90 * open);
    drawSymbol(painter, QRectF(-area.width() / 2.0, -area.height() / 2.0, area.width(), area.height()),
               u"chevron.right"_s, colors.faint, metrics::disclosure);
    painter.restore();
}

} // namespace wendlore
