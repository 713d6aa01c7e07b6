#pragma once

#include "Editor/EditorSession.h"

#include <QWidget>

class QMessageBox;

namespace wendlore {

/// Shows the note that its session edits, and tells the user of conflicts.
class EditorView final : public QWidget
{
    Q_OBJECT

public:
    explicit EditorView(AppState& appState, QWidget* parent = nullptr);
    ~EditorView() override;

    [[nodiscard]] EditorSession& session() { return m_session; }

protected:
    bool event(QEvent* event) override;

private:
    void showWebView();
    void showConflictNotice();
    void giveFocusBack();

    AppState& m_appState;
    EditorSession m_session;
    QMessageBox* m_notice = nullptr;
};

} // namespace wendlore
