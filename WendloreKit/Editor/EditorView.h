#pragma once

#include "Editor/EditorSession.h"

#include <QPointer>
#include <QWidget>

class QMessageBox;
class QWebEngineView;

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
    /// Gives the page the window's colours, and the web view the ground to show until the page has painted.
    void takeColors();
    void showConflictNotice();
    void giveFocusBack();

    AppState& m_appState;
    EditorSession m_session;
    QPointer<QWebEngineView> m_webView;
    QMessageBox* m_notice = nullptr;
};

} // namespace wendlore
