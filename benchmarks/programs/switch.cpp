// How long it takes from selecting a note until the page has laid it out, in the program's own window, engine
// and page, on real files: two notes of 20 KB in turn. Prints the median and the longest in milliseconds, of
// the whole and of the way until the program has handed the note to the page, as JSON.

#include "Editor/EditorSession.h"
#include "Editor/WebEditorController.h"
#include "Editor/WebEngineEditorView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/RealDesktop.h"
#include "Support/Window.h"
#include "Times.h"
#include "Wendlores/MainWindow.h"

#include <QDir>
#include <QElapsedTimer>
#include <QWebEngineView>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr int rounds = 60;
constexpr int warmUp = 6;
constexpr qsizetype noteSize = 20'000;

/// The heading of the note that the page shows, once its place is known; empty without a note.
const QString shownHeading = uR"js(
    (heading => heading && document.querySelector('.ProseMirror').offsetHeight > 0 ? heading.textContent : '')(
        document.querySelector('.ProseMirror h1'))
)js"_s;

/// No line of it stands in another note, which would else be taken for a newer state of the same one.
FileURL writeNote(const QTemporaryDir& bucket, const QString& name)
{
    QString text = u"# %1\n\n"_s.arg(name);
    for (int i = 1; text.size() < noteSize; ++i)
        text += u"## %1, avsnitt %2\n\nVi samlade **tre förslag** för %1, och läser [listan](Lista.md) före "
                u"fredag.\n\n"
                "- %1 ett\n- %1 två med `kod`\n- [ ] %1 tre\n\n"_s.arg(name, QString::number(i));
    QFile note(bucket.filePath(name + u".md"_s));
    if (!note.open(QIODevice::WriteOnly) || note.write(text.toUtf8()) < noteSize)
        qFatal("cannot write %s", qPrintable(note.fileName()));
    return FileURL::file(note.fileName());
}

/// How long one switch took, in milliseconds.
struct Switch final
{
    double handedOver = 0;
    double shown = 0;
};

double since(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Selects `note`, and waits until the page has laid it out.
Switch show(AppState& state, const EditorSession& session, QWebEnginePage& page, const FileURL& note)
{
    Switch times;
    QEventLoop loop;
    QTimer::singleShot(patience, &loop, [] { qFatal("a note was not shown"); });
    std::function<void()> ask = [&] {
        page.runJavaScript(shownHeading, [&](const QVariant& heading) {
            if (heading.toString() == note.nameWithoutExtension())
                loop.quit();
            else
                ask();
        });
    };
    QElapsedTimer timer;
    QObject::connect(&session, &EditorSession::loaded, &loop, [&] { times.handedOver = since(timer); });
    timer.start();
    state.setSelectedFile(note);
    ask();
    loop.exec();
    times.shown = since(timer);
    return times;
}

} // namespace

int main(int argc, char** argv)
{
    prepareEngine();
    QApplication application(argc, argv);
    useProductLook();
    const QTemporaryDir bucket;
    const FileURL notes[] = {writeNote(bucket, u"Första"_s), writeNote(bucket, u"Andra"_s)};
    RealDesktop desktop;
    AppState state(desktop.services());
    MainWindow window(state);
    showAt(window, {1180, 790});
    state.addVault(FileURL::directory(bucket.path()));
    QWebEnginePage& page = *desktop.engine->widget()->page();
    const auto isReady = [&state] { return state.editorController().isReady(); };
    if (!QTest::qWaitFor(isReady, patience))
        qFatal("the page did not come");

    std::vector<double> handedOver;
    std::vector<double> shown;
    for (int round = 1; round <= warmUp + rounds; ++round) {
        const Switch times = show(state, window.session(), page, notes[round % 2]);
        if (round <= warmUp)
            continue;
        handedOver.push_back(times.handedOver);
        shown.push_back(times.shown);
    }
    print({{"handed over", handedOver}, {"shown", shown}});
    return 0;
}
