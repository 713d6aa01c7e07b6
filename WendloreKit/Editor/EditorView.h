#pragma once

#include "Editor/EditorSession.h"

#include <QPointer>
#include <QWidget>

class QWebEngineView;

namespace wendlore {

class EditorBar;

/// Shows the note that its session edits.
class EditorView final : public QWidget
{
    Q_OBJECT

public:
    explicit EditorView(AppState& appState, QWidget* parent = nullptr);
    ~EditorView() override;

    [[nodiscard]] EditorSession& session() { return m_session; }
    /// Shows the formatting buttons in a bar above the note, for windows that have no toolbar of their own.
    void setInlineToolbar(bool isShown);

protected:
    bool event(QEvent* event) override;

private:
    void showWebView();
    /// Gives the page the window's colours, and the web view the ground to show until the page has painted.
    void takeColors();
    void giveFocusBack();

    AppState& m_appState;
    EditorSession m_session;
    QPointer<QWebEngineView> m_webView;
    EditorBar* m_inlineToolbar = nullptr;
};

} // namespace wendlore
