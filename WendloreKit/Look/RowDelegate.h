#pragma once

#include <QStyledItemDelegate>

namespace wendlore {

/// Draws the rows of a plain list: one symbol for all, the text, and a rounded ground under the current row
/// and the one that is pointed at.
class RowDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit RowDelegate(QString symbol, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QString m_symbol;
};

} // namespace wendlore
