// How long it takes from selecting a note until the page has laid it out, in the program's own window, engine
// and page, on real files: two notes of 20 KB in turn. Prints the median and the longest in milliseconds, of
// the whole and of the way until the program has handed the note to the page.

#include "Editor/EditorSession.h"
#include "Editor/WebEditorController.h"
#include "Editor/WebEngineEditorView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/RealDesktop.h"
#include "Support/Window.h"
#include "Wendlores/MainWindow.h"

#include <QDir>
#include <QElapsedTimer>
#include <QWebEngineView>

#include <algorithm>
#include <cstdio>
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

FileURL writeNote(const QTemporaryDir& bucket, const QString& name)
{
    QByteArray text = "# " + name.toUtf8() + "\n\n";
    for (int i = 1; text.size() < noteSize; ++i)
        text += "## Avsnitt " + QByteArray::number(i) +
                "\n\nVi samlade **tre förslag** inför hösten, och läser [listan](Lista.md) före fredag.\n\n"
                "- ett\n- två med `kod`\n- [ ] tre\n\n";
    QFile note(bucket.filePath(name + u".md"_s));
    if (!note.open(QIODevice::WriteOnly) || note.write(text) != text.size())
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

void print(const char* what, std::vector<double> times)
{
    std::ranges::sort(times);
    std::printf("%-40s median %7.2f ms   longest %7.2f ms   (%zu switches)\n", what, times[times.size() / 2],
                times.back(), times.size());
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
    print("a note of 20 KB handed to the page", handedOver);
    print("a note of 20 KB shown", shown);
    return 0;
}
