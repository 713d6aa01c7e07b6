#pragma once

#include "Vault/FileURL.h"

#include <QSet>
#include <QTreeView>
#include <QVariantAnimation>

namespace wendlore {

class AppState;
class FileTreeDelegate;
class FileTreeModel;

/// The open bucket's folders and files. A click or Enter opens a file, and chooses and opens or closes a
/// folder; arrows only move the focus.
class FileTreeView final : public QTreeView
{
    Q_OBJECT

public:
    explicit FileTreeView(AppState& state, QWidget* parent = nullptr);

    /// How far the folder at `index` shows itself open, from 0 to 1.
    [[nodiscard]] double disclosure(const QModelIndex& index) const;
    /// Whether the folder at `index` receives new notes.
    [[nodiscard]] bool isChosenFolder(const QModelIndex& index) const;
    /// Whether the user is steering by keyboard, so that the focused row has to show.
    [[nodiscard]] bool isSteeredByKeyboard() const { return m_isSteeredByKeyboard; }

    void reset() override;

protected:
    void rowsInserted(const QModelIndex& parent, int first, int last) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

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

    AppState& m_state;
    FileTreeModel* m_model;
    FileTreeDelegate* m_delegate;
    QSet<FileURL> m_expandedFolders;
    QPersistentModelIndex m_turning;
    QVariantAnimation m_turn;
    QPoint m_pressed;
    bool m_isSteeredByKeyboard = false;
};

} // namespace wendlore
