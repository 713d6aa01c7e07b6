// How long it takes from selecting a note to its being painted, in the program's own window, engine and page,
// on real files: two notes of 20 KB in turn. Prints the median and the longest in milliseconds.

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
#include <vector>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr int rounds = 60;
constexpr int warmUp = 6;
constexpr qsizetype noteSize = 20'000;

/// Says in the page's title which note was painted last: the frame after the one that drew it has begun.
const QString tellWhatIsPainted = uR"js(
    new MutationObserver(() => requestAnimationFrame(() => requestAnimationFrame(() => {
        const heading = document.querySelector('.ProseMirror h1');
        if (heading) document.title = heading.textContent;
    }))).observe(document.querySelector('#editor'), { childList: true, subtree: true });
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
    const auto shows = [&page](const FileURL& note) {
        return QTest::qWaitFor([&] { return page.title() == note.nameWithoutExtension(); }, patience);
    };

    state.setSelectedFile(notes[0]);
    bool isThere = false;
    const auto look = [&] {
        page.runJavaScript(u"document.querySelector('.ProseMirror h1') !== null"_s,
                           [&isThere](const QVariant& answer) { isThere = answer.toBool(); });
        return isThere;
    };
    if (!QTest::qWaitFor(look, patience))
        qFatal("the first note was not shown");
    page.runJavaScript(tellWhatIsPainted);

    std::vector<double> times;
    for (int round = 1; round <= warmUp + rounds; ++round) {
        const FileURL& note = notes[round % 2];
        QElapsedTimer timer;
        QEventLoop loop;
        const auto connection =
            QObject::connect(&page, &QWebEnginePage::titleChanged, &loop, &QEventLoop::quit);
        QTimer::singleShot(patience, &loop, [] { qFatal("a note was not shown"); });
        timer.start();
        state.setSelectedFile(note);
        loop.exec();
        const double time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        QObject::disconnect(connection);
        if (!shows(note))
            qFatal("another note was shown");
        if (round > warmUp)
            times.push_back(time);
    }
    std::ranges::sort(times);
    std::printf("%-40s median %7.2f ms   longest %7.2f ms   (%zu switches)\n", "switching notes of 20 KB",
                times[times.size() / 2], times.back(), times.size());
    return 0;
}
