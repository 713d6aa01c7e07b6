#include "Support/EditingWindow.h"

#include "Editor/WebEditorController.h"
#include "Support/EngineTest.h"

#include <QSignalSpy>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

EditingWindow::EditingWindow(RealDesktop& realDesktop)
    : desktop(realDesktop)
    , state(desktop.services())
    , view(state)
{
    QObject::connect(&state, &AppState::selectedFileChanged, &view, [this] {
        if (state.selectedFile())
            view.session().open(*state.selectedFile());
        else
            view.session().close();
    });
    view.resize(800, 600);
    m_other.resize(300, 200);
    view.show();
    activate();
    if (state.selectedFile())
        view.session().open(*state.selectedFile());
    WAIT_VERIFY(state.editorController().isReady());
}

void EditingWindow::open(const FileURL& note)
{
    QSignalSpy loaded(&view.session(), &EditorSession::loaded);
    state.setSelectedFile(note);
    WAIT_VERIFY(!loaded.empty());
    drain();
}

void EditingWindow::type(const QString& text)
{
    view.setFocus();
    state.editorController().focus();
    const QString listen =
        u"window.lastKey = ''; window.hearsKeys = window.hearsKeys || "
        "(window.addEventListener('keydown', event => window.lastKey = event.key, true), true)"_s;
    QVERIFY(value(listen).isValid());
    // Just after a dialog has closed the engine takes no keys yet, whatever the page says of its focus.
    const auto isHeard = [this] {
        QTest::keyClick(desktop.engine->widget()->focusProxy(), Qt::Key_End, Qt::ControlModifier);
        return value(u"document.hasFocus() && window.lastKey === 'End'"_s).toBool();
    };
    QVERIFY(waitFor(isHeard));
    pressKeys(*desktop.engine->widget()->focusProxy(), text);
}

void EditingWindow::drain()
{
    bool isDone = false;
    state.editorController().drain([&isDone] { isDone = true; });
    WAIT_VERIFY(isDone);
}

void EditingWindow::activate()
{
    view.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&view, patience));
}

void EditingWindow::deactivate()
{
    QSignalSpy moves(qGuiApp, &QGuiApplication::focusWindowChanged);
    m_other.show();
    m_other.activateWindow();
    WAIT_VERIFY(!moves.empty());
}

QVariant EditingWindow::value(const QString& expression)
{
    std::optional<QVariant> result;
    desktop.engine->widget()->page()->runJavaScript(expression,
                                                    [&result](const QVariant& answer) { result = answer; });
    static_cast<void>(waitFor([&result] { return result.has_value(); }));
    return result.value_or(QVariant());
}

} // namespace wendlore
