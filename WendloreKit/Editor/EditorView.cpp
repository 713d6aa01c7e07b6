#include "Editor/EditorView.h"

#include "Editor/EditorBar.h"
#include "Editor/EditorPrompts.h"
#include "Editor/PageRequests.h"
#include "Editor/WebEditorController.h"
#include "Editor/WebEngineEditorView.h"

#include "State/AppState.h"

#include <QApplication>
#include <QEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int middleLightness = 128;

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < middleLightness;
}

} // namespace

EditorView::EditorView(AppState& appState, QWidget* parent)
    : QWidget(parent)
    , m_appState(appState)
    , m_session(appState, appState.editorController())
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    new PageRequests(appState, appState.editorController(), this);
    showWebView();
    takeColors();
    auto* prompts = new EditorPrompts(appState, appState.editorController(), this);
    auto* link = new QShortcut(Qt::CTRL | Qt::Key_K, this);
    link->setContext(Qt::WidgetWithChildrenShortcut);
    connect(link, &QShortcut::activated, prompts, &EditorPrompts::showLinkPrompt);
    connect(&m_session, &EditorSession::focusTaken, this, [this] { setFocus(); });
    connect(&appState.editorController(), &WebEditorController::focused, this, [this] { setFocus(); });
    connect(&appState.editorController(), &WebEditorController::becameReady, this,
            &EditorView::giveFocusBack);
}

EditorView::~EditorView() = default;

void EditorView::showWebView()
{
    auto* engine = dynamic_cast<WebEngineEditorView*>(&m_appState.editorController().webView());
    if (!engine || !engine->widget())
        return;
    m_webView = engine->widget();
    m_webView->setAccessibleName(u"Anteckning"_s);
    layout()->addWidget(m_webView);
    setFocusProxy(m_webView);
}

void EditorView::setInlineToolbar(bool isShown)
{
    if (isShown == (m_inlineToolbar != nullptr))
        return;
    if (!isShown) {
        delete std::exchange(m_inlineToolbar, nullptr);
        return;
    }
    m_inlineToolbar = new EditorBar(m_appState, this);
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, m_inlineToolbar);
    m_inlineToolbar->show();
}

void EditorView::takeColors()
{
    m_session.setDark(isDark(palette()));
    // A transparent ground would do, but stays blank where the window is composed by OpenGL in software.
    if (m_webView)
        m_webView->page()->setBackgroundColor(palette().color(QPalette::Base));
}

/// A page that is ready only now, or came back after a crash, knows nothing of the user's attention.
void EditorView::giveFocusBack()
{
    if (isAncestorOf(QApplication::focusWidget()))
        m_appState.editorController().focusInView();
}

bool EditorView::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowActivate:
        m_session.setScenePhase(ScenePhase::Active);
        break;
    case QEvent::WindowDeactivate:
        m_session.setScenePhase(ScenePhase::Inactive);
        break;
    case QEvent::PaletteChange:
        takeColors();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

} // namespace wendlore
