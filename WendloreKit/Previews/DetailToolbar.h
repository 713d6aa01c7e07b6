#pragma once

#include <QWidget>

class QHBoxLayout;

namespace wendlore {

class AppState;
class EditorToolbar;
class IconButton;
class Separator;
class TitleField;

/// The bar above the detail area: back and forward, the title, the editor's commands while a note is shown,
/// and what else can be done with the file.
class DetailToolbar final : public QWidget
{
    Q_OBJECT

public:
    explicit DetailToolbar(AppState& state, QWidget* parent = nullptr);

    enum class Title { editable, fixed };
    void setTitle(const QString& title, Title kind);
    void showEditorCommands(bool areShown);

Q_SIGNALS:
    void renamed(const QString& title);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addHistoryButtons(QHBoxLayout& row);
    void addWindowButton(QHBoxLayout& row);
    void addOpenButton(QHBoxLayout& row);
    void showHistory();
    void showFileButtons();

    AppState& m_state;
    IconButton* m_back = nullptr;
    IconButton* m_forward = nullptr;
    TitleField* m_title;
    EditorToolbar* m_editor;
    Separator* m_separator = nullptr; ///< between the editor's commands and those of the file
    IconButton* m_ownWindow = nullptr;
    IconButton* m_open = nullptr;
};

} // namespace wendlore
