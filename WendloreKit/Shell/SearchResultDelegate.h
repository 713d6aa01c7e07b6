#pragma once

#include <QStyledItemDelegate>

namespace wendlore {

/// Draws one note that was found: symbol and name, and below it the line that holds the query.
class SearchResultDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace wendlore
