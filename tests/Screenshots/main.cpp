// Writes pictures of the main window to a folder: what a person sees first, in the colours asked for. The
// scale is the toolkit's own (QT_SCALE_FACTOR).

#include "Editor/WebEditorController.h"
#include "Editor/WebEngineEditorView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/RealDesktop.h"
#include "Support/Window.h"
#include "Wendlores/MainWindow.h"

#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QWebEngineView>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr QSize windowSize(1180, 790);

class Photographer final
{
public:
    Photographer(QString folder, QString suffix)
        : m_folder(std::move(folder))
        , m_suffix(std::move(suffix))
    {}

    void take(QWidget& widget, const QString& name) const
    {
        const QString path = u"%1/%2-%3.png"_s.arg(m_folder, name, m_suffix);
        if (!pictureOf(widget).save(path))
            qFatal("cannot write %s", qPrintable(path));
    }

private:
    QString m_folder;
    QString m_suffix;
};

/// Waits until the page has painted the note that was set last.
void waitForNote(AppState& state)
{
    auto& controller = state.editorController();
    if (!controller.isReady() && !QSignalSpy(&controller, &WebEditorController::becameReady).wait(20000))
        qFatal("the editor page did not come");
    auto* view = static_cast<WebEngineEditorView&>(controller.webView()).widget();
    bool isPainted = false;
    const auto ask = [&] {
        view->page()->runJavaScript(
            u"document.fonts.status === 'loaded' && document.querySelector('#editor').innerText.length > 20"_s,
            [&isPainted](const QVariant& answer) { isPainted = answer.toBool(); });
    };
    if (!QTest::qWaitFor(
            [&] {
                ask();
                return isPainted;
            },
            20000))
        qFatal("the note was not shown");
    QTest::qWait(300); // the engine paints after the page has settled, and tells nobody
}

void photograph(const FileURL& bucket, const Photographer& photographer)
{
    RealDesktop desktop;
    AppState state(desktop.services());
    MainWindow window(state);
    showAt(window, windowSize);
    photographer.take(window, u"empty"_s);

    state.addVault(bucket);
    state.setSelectedFolder(bucket.appending(u"Arbete"_s, true));
    state.setSelectedFile(bucket.appending(u"Arbete/Möte om budget.md"_s));
    waitForNote(state);
    photographer.take(window, u"main"_s);

    state.setSelectedFile(bucket.appending(u"Arbete/Budget 2025.csv"_s));
    photographer.take(window, u"card"_s);
    for (auto* menu : window.menuBar()->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (menu->title().isEmpty())
            continue; // where entries go that find no room
        menu->popup({0, 0});
        photographer.take(*menu, u"menu-%1"_s.arg(menu->title().remove(u'&').toLower()));
        menu->hide();
    }
}

} // namespace

int main(int argc, char** argv)
{
    prepareEngine();
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5)
        qFatal("usage: screenshots BUCKET FOLDER light|dark SUFFIX");
    useProductLook(arguments.at(3) == u"dark"_s ? ColorScheme::dark : ColorScheme::light);
    photograph(FileURL::directory(QFileInfo(arguments.at(1)).canonicalFilePath()),
               Photographer(arguments.at(2), arguments.at(4)));
    return 0;
}
