#pragma once

// choosing, expanding, keys        Shell/FileTreeView.cpp
// dragging items and dropping      Shell/FileTreeView+Dragging.cpp

#include "Shell/DropDelegates.h"
#include "Vault/FileURL.h"

#include <QSet>
#include <QTreeView>
#include <QVariantAnimation>

#include <memory>

namespace wendlore {

class AppState;
class FileTreeDelegate;
class FileTreeModel;
class ScheduledTask;

/// The open bucket's folders and files. A click or Enter opens a file, and chooses and opens or closes a
/// folder; arrows only move the focus. Items can be dragged into folders; a row of a file stands for the
/// folder that it lies in, and the space below the rows for the bucket.
class FileTreeView final : public QTreeView
{
    Q_OBJECT

public:
    explicit FileTreeView(AppState& state, QWidget* parent = nullptr);
    ~FileTreeView() override;

    /// Where moves by dragging leave their way back; it outlives the view.
    void setUndoRegistrar(UndoRegistrar* undo) { m_undo = undo; }

    /// How far the folder at `index` shows itself open, from 0 to 1.
    [[nodiscard]] double disclosure(const QModelIndex& index) const;
    /// Whether the folder at `index` receives new notes.
    [[nodiscard]] bool isChosenFolder(const QModelIndex& index) const;
    /// Whether what is being dragged would be dropped into the folder at `index`.
    [[nodiscard]] bool isDropTarget(const QModelIndex& index) const;
    /// What a drag of the item at `index` carries.
    [[nodiscard]] std::unique_ptr<QMimeData> dragData(const QModelIndex& index) const;
    /// Whether the user is steering by keyboard, so that the focused row has to show.
    [[nodiscard]] bool isSteeredByKeyboard() const { return m_isSteeredByKeyboard; }

    void reset() override;

Q_SIGNALS:
    /// The user asked for the menu of `item`.
    void menuRequested(const wendlore::FileURL& item, bool isFolder, const QPoint& globalPosition);
    void renameRequested(const wendlore::FileURL& item);

protected:
    void rowsInserted(const QModelIndex& parent, int first, int last) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    enum class Steering { pointer, keyboard };

    void connectState();
    void choose(const QModelIndex& index);
    void chooseFile(const FileURL& file);
    void clickAt(const QModelIndex& index);
    void turnDisclosure(const QModelIndex& index);
    void restoreExpansion(const QModelIndex& parent, int first, int last);
    void revealSelection();
    void showSelectionAgain();
    void setSteering(Steering steering);

    void startItemDrag(const QModelIndex& index);
    /// The folder that a drop at `position` goes into; nothing for the bucket itself.
    [[nodiscard]] std::optional<FileURL> folderAt(const QPoint& position) const;
    [[nodiscard]] FolderDropDelegate folderDropDelegate(const FileURL& folder);
    [[nodiscard]] RootDropDelegate rootDropDelegate();
    void aimAt(const QPoint& position);
    void endAim();
    void scheduleSpringOpen(const FileURL& folder);

    AppState& m_state;
    FileTreeModel* m_model;
    FileTreeDelegate* m_delegate;
    QSet<FileURL> m_expandedFolders;
    QPersistentModelIndex m_turning;
    QVariantAnimation m_turn;
    QPoint m_pressed;
    bool m_isSteeredByKeyboard = false;

    UndoRegistrar* m_undo = nullptr;
    /// The row that was pressed and may be dragged away.
    QPersistentModelIndex m_dragSource;
    std::optional<FileURL> m_droppingInto;
    bool m_droppingIntoRoot = false;
    std::unique_ptr<ScheduledTask> m_springWork;
};

} // namespace wendlore
