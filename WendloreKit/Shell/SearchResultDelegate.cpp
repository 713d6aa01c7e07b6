#include "Shell/SearchResultDelegate.h"

#include "Shell/SearchResultsModel.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int resultHeight = 44;
constexpr int lineHeight = 17;

void drawLine(QPainter& painter, const QRect& area, const QFont& font, const QColor& color,
              const QString& text)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, area.width()));
}

} // namespace

void SearchResultDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    const Colors& colors = Colors::of(option.palette);
    const bool isShown = index.data(SearchResultsModel::IsSelectedFileRole).toBool();
    const QRect row = option.rect.adjusted(metrics::inset, 0, -metrics::inset, 0);
    if (isShown)
        fillRounded(*painter, row, colors.selected, metrics::radius);
    else if (option.state.testFlag(QStyle::State_MouseOver))
        fillRounded(*painter, row, colors.hover, metrics::radius);

    painter->save();
    if (option.state.testFlag(QStyle::State_HasFocus))
        drawFocusRing(*painter, row, colors.accent);
    const QString snippet = index.data(SearchResultsModel::SnippetRole).toString();
    QRect name = row.adjusted(metrics::inset, 0, -metrics::inset, 0);
    name.setHeight(lineHeight);
    name.moveTop(row.top() +
                 (snippet.isEmpty() ? (row.height() - lineHeight) / 2 : (row.height() - 2 * lineHeight) / 2));
    drawSymbol(*painter, QRect(name.left(), name.top(), metrics::icon, name.height()), u"doc.text"_s,
               isShown ? colors.selectedText : colors.muted, metrics::icon);
    name.setLeft(name.left() + metrics::icon + metrics::gap);
    drawLine(*painter, name, sized(option.font, metrics::textSize, isShown ? QFont::Medium : QFont::Normal),
             isShown ? colors.selectedText : colors.text, index.data().toString());
    drawLine(*painter, name.translated(0, lineHeight), sized(option.font, metrics::noticeSize),
             isShown ? colors.selectedText : colors.muted, snippet);
    painter->restore();
}

QSize SearchResultDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {metrics::sidebarMinimum, resultHeight};
}

} // namespace wendlore
