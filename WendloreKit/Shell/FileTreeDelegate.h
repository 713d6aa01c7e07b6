#pragma once

#include <QStyledItemDelegate>

namespace wendlore {

class FileTreeView;
struct Colors;

/// Draws one row of the tree: disclosure, symbol and name on a rounded ground.
class FileTreeDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit FileTreeDelegate(FileTreeView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Where a click on the folder in `row` opens or closes it without choosing it.
    [[nodiscard]] QRect disclosureArea(const QModelIndex& index, const QRect& row) const;

private:
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                     const Colors& colors) const;
    void paintDisclosure(QPainter& painter, const QRect& area, const QModelIndex& index,
                         const Colors& colors) const;

    const FileTreeView& m_view;
};

} // namespace wendlore
