#pragma once

#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>

#include <memory>
#include <utility>

namespace wendlore {

/// A drag that hovers over a tree, as the window system would deliver it.
class TreeDrag final
{
public:
    TreeDrag(FileTreeView& tree, std::unique_ptr<QMimeData> data)
        : m_tree(tree)
        , m_data(std::move(data))
    {}

    static TreeDrag of(FileTreeView& tree, const FileURL& item)
    {
        return TreeDrag(tree, tree.dragData(rowOf(tree, item)));
    }

    [[nodiscard]] bool enter() const
    {
        QDragEnterEvent event({1, 1}, actions, m_data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.viewport(), &event);
        return event.isAccepted();
    }
    void hoverOver(const FileURL& item) { hoverAt(m_tree.visualRect(rowOf(m_tree, item)).center()); }
    void hoverAt(const QPoint& place)
    {
        m_place = place;
        QDragMoveEvent event(place, actions, m_data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.viewport(), &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(event.dropAction(), Qt::MoveAction);
    }
    void leave() const
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(m_tree.viewport(), &event);
    }
    void drop() const
    {
        QDropEvent event(m_place, actions, m_data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.viewport(), &event);
        QCoreApplication::processEvents(); // what was dropped is taken once the drag is over
    }

private:
    static constexpr auto actions = Qt::MoveAction | Qt::CopyAction;

    static QModelIndex rowOf(const FileTreeView& tree, const FileURL& item)
    {
        return static_cast<const FileTreeModel*>(tree.model())->indexOf(item);
    }

    FileTreeView& m_tree;
    std::unique_ptr<QMimeData> m_data;
    QPoint m_place;
};

} // namespace wendlore
