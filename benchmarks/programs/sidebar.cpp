// How long the sidebar keeps the window from answering, in a bucket of 100,000 files: opening a folder of
// 10,000, scrolling through it, taking over a rebuilt tree, operations on its files and folders, and typing a
// query letter by letter, of which the first ones are in 10,000 notes. Prints the median and the longest of
// the steps in milliseconds, as JSON; a frame of the screen is 16. The bucket is made in the folder that is
// named, and stays there for the next run.

#include "Fakes/FakeServices.h"
#include "Look/Style.h"
#include "Platform/QtScheduler.h"
#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"
#include "Shell/SearchView.h"
#include "State/AppState.h"
#include "Times.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QSet>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr int folders = 10;
constexpr int filesInEach = 10'000;
constexpr int scrollSteps = 400;
constexpr int rounds = 9;

QString folderName(int folder)
{
    return u"Mapp %1"_s.arg(folder);
}

/// Removes what a run before has left in `folder` that is not among `wanted`; gives what is there of them.
QSet<QString> sweep(const QDir& folder, const QSet<QString>& wanted)
{
    QSet<QString> found;
    for (const QFileInfo& entry :
         folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        if (wanted.contains(entry.fileName()))
            found.insert(entry.fileName());
        else if (entry.isDir())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
    return found;
}

void writeNote(const QString& path, const QByteArray& text = {})
{
    QFile note(path);
    if (!note.open(QIODevice::WriteOnly) || note.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// Makes the bucket, or mends the one of a run before, which takes a moment where that takes half a minute.
void fill(const QDir& bucket)
{
    QSet<QString> folderNames;
    for (int folder = 0; folder < folders; ++folder)
        folderNames.insert(folderName(folder));
    QSet<QString> names;
    for (int file = 0; file < filesInEach; ++file)
        names.insert(u"Not %1.md"_s.arg(file));
    if (!bucket.mkpath(u"."_s))
        qFatal("cannot make %s", qPrintable(bucket.path()));
    sweep(bucket, folderNames);
    for (int folder = 0; folder < folders; ++folder) {
        const QDir place(bucket.filePath(folderName(folder)));
        place.mkpath(u"."_s);
        const QByteArray text = folder == 0 ? "Ett stycke om en plan.\n\nMötet om höstens förslag.\n" : "";
        for (const QString& missing : names - sweep(place, names))
            writeNote(place.filePath(missing), text);
    }
}

/// The time of `step`, with what it makes the window paint.
template <typename Step>
double time(QWidget& view, const Step& step)
{
    QElapsedTimer timer;
    timer.start();
    step();
    QCoreApplication::sendPostedEvents();
    view.repaint();
    QCoreApplication::processEvents();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void measureOpening(FileTreeView& view, Times& times)
{
    std::vector<double> opening;
    std::vector<double> closing;
    for (int folder = 0; folder < folders; ++folder) {
        const QModelIndex index = view.model()->index(folder, 0);
        opening.push_back(time(*view.viewport(), [&] { view.setExpanded(index, true); }));
    }
    for (int folder = folders - 1; folder > 0; --folder) {
        const QModelIndex index = view.model()->index(folder, 0);
        closing.push_back(time(*view.viewport(), [&] { view.setExpanded(index, false); }));
    }
    times["opening"] = opening;
    times["closing"] = closing;
}

std::vector<double> measureScrolling(FileTreeView& view)
{
    std::vector<double> scrolling;
    QScrollBar* bar = view.verticalScrollBar();
    for (int step = 0; step < scrollSteps; ++step)
        scrolling.push_back(
            time(*view.viewport(), [&] { bar->setValue(bar->maximum() / scrollSteps * step); }));
    return scrolling;
}

std::vector<double> measureRebuilding(AppState& state, FileTreeView& view, const QDir& bucket)
{
    std::vector<double> rebuilding;
    for (int round = 0; round < rounds; ++round) {
        writeNote(bucket.filePath(u"Mapp 0/Ny %1.md"_s.arg(round)));
        rebuilding.push_back(time(*view.viewport(), [&] { state.reloadTree(); }));
    }
    return rebuilding;
}

/// The longest turn of the event loop in each refresh, from the click until the tree is shown.
std::vector<double> measureRefreshing(AppState& state, FileTreeView& view, const QDir& bucket)
{
    std::vector<double> longest;
    for (int round = 0; round < rounds; ++round) {
        writeNote(bucket.filePath(u"Mapp 0/Nyare %1.md"_s.arg(round)));
        bool isRead = false;
        double turn = time(*view.viewport(), [&] { state.reloadTreeInBackground([&] { isRead = true; }); });
        while (!isRead)
            turn = std::max(turn, time(*view.viewport(), [] { QCoreApplication::processEvents(); }));
        longest.push_back(turn);
    }
    return longest;
}

/// The longest turn of the event loop in each operation, until the tree is as it is on disk.
template <typename Operation>
std::vector<double> measureOperation(AppState& state, FileTreeView& view, const Operation& operation)
{
    std::vector<double> longest;
    for (int round = 0; round < rounds; ++round) {
        double turn = time(*view.viewport(), [&] { operation(round); });
        bool isRead = false;
        state.reloadTreeInBackground([&] { isRead = true; });
        while (!isRead)
            turn = std::max(turn, time(*view.viewport(), [] { QCoreApplication::processEvents(); }));
        longest.push_back(turn);
    }
    return longest;
}

void measureOperations(AppState& state, FileTreeView& view, const FileURL& bucket, Times& times)
{
    const FileURL folder = bucket.appending(u"Mapp 1"_s, true);
    const auto note = [&folder](int number) { return folder.appending(u"Not %1.md"_s.arg(number)); };
    times["making"] = measureOperation(state, view, [&](int) { state.newNote(folder); });
    times["renaming"] = measureOperation(
        state, view, [&](int round) { state.renameFile(note(round), u"Omdöpt %1"_s.arg(round)); });
    times["moving"] =
        measureOperation(state, view, [&](int round) { state.moveFile(note(100 + round), bucket); });
    times["deleting"] =
        measureOperation(state, view, [&](int round) { state.deleteFile(note(200 + round)); });
    const auto nameIn = [](int round) { return round == 0 ? folderName(2) : u"Flyttad %1"_s.arg(round); };
    times["folder"] = measureOperation(state, view, [&](int round) {
        state.renameFile(bucket.appending(nameIn(round), true), nameIn(round + 1));
    });
    state.renameFile(bucket.appending(nameIn(rounds), true), nameIn(0)); // the next run finds it there
}

/// Every turn of the event loop from the key until the results are there and painted.
std::vector<double> measureSearching(AppState& state)
{
    SearchView view(state);
    view.resize(240, 700);
    view.show();
    auto& field = *view.findChild<QLineEdit*>();
    std::vector<double> turns;
    for (const QString& letter : {u"m"_s, u"ö"_s, u"t"_s, u"e"_s, u"t"_s, u" "_s, u"x"_s}) {
        turns.push_back(time(view, [&] { field.setText(field.text() + letter); }));
        while (state.isSearching())
            turns.push_back(time(view, [] { QCoreApplication::processEvents(); }));
        turns.push_back(time(view, [] {}));
    }
    return turns;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(new Style);
    if (argc != 2)
        qFatal("usage: bench-sidebar FOLDER");
    const QDir bucket(QDir::current().absoluteFilePath(QFile::decodeName(argv[1])));
    fill(bucket);
    FakeServices fakes;
    QtScheduler scheduler;
    const Services desktop = fakes.services();
    AppState state({desktop.defaults, desktop.cloud, desktop.bookmarks, desktop.coordinator,
                    desktop.workspace, desktop.panels, scheduler, desktop.recovered, desktop.trash,
                    desktop.makeEditorWebView});
    state.switchVault(FileURL::directory(bucket.path()));
    FileTreeView view(state);
    view.resize(240, 700);
    view.show();
    QCoreApplication::processEvents();

    Times times;
    measureOpening(view, times);
    times["scrolling"] = measureScrolling(view);
    times["rebuilding"] = measureRebuilding(state, view, bucket);
    times["refreshing"] = measureRefreshing(state, view, bucket);
    measureOperations(state, view, FileURL::directory(bucket.path()), times);
    times["searching"] = measureSearching(state);
    print(times);
    return 0;
}
