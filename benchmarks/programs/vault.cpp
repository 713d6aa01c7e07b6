// Measures what reads a whole bucket: bench-vault search FOLDER QUERY | tree FOLDER | notes FOLDER | floor
// FOLDER | command PROGRAM ARGUMENT... | forget FOLDER. Prints {"ms", "found", "grown"}: the milliseconds of
// one call, how much it found, and by how many megabytes the memory's peak grew. "floor" only reads every
// note on two threads, "command" runs another program to its end, and "forget" makes the system read the
// notes from the disk next time.

#include "Vault/Collation.h"
#include "Vault/FileTree.h"
#include "Vault/NoteSearch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

/// Does what is measured, and gives what counts the result, which lives as long.
using Count = std::function<std::size_t()>;
using Action = std::function<Count(const FileURL& folder)>;

/// A figure in kilobytes of what the kernel tells about this process.
long memory(const QByteArray& name)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        qFatal("the kernel does not tell how much memory is used");
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.simplified().split(' ').at(1).toLong();
    }
    return 0;
}

/// Starts counting the peak anew.
void resetPeak()
{
    QFile references(u"/proc/self/clear_refs"_s);
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}

std::size_t countNodes(const std::vector<FileNode>& nodes)
{
    std::size_t count = nodes.size();
    for (const FileNode& node : nodes)
        count += node.children ? countNodes(*node.children) : 0;
    return count;
}

/// Opens, reads and closes every second file, and says how many.
std::size_t readEverySecond(const std::vector<FileURL>& files, std::size_t first)
{
    std::vector<char> buffer(256 * 1024);
    std::size_t count = 0;
    for (std::size_t i = first; i < files.size(); i += 2) {
        const int file = ::open(files[i].bytes().constData(), O_RDONLY | O_CLOEXEC);
        if (file < 0)
            continue;
        while (::read(file, buffer.data(), buffer.size()) > 0) {
        }
        ::close(file);
        ++count;
    }
    return count;
}

std::size_t readEveryNote(const FileURL& folder)
{
    const std::vector<FileURL> notes = allMarkdownFiles(folder);
    std::size_t other = 0;
    std::jthread helper([&] { other = readEverySecond(notes, 1); });
    const std::size_t mine = readEverySecond(notes, 0);
    helper.join();
    return mine + other;
}

std::size_t forget(const FileURL& folder)
{
    const std::vector<FileURL> notes = allMarkdownFiles(folder);
    for (const FileURL& note : notes) {
        const int file = ::open(note.bytes().constData(), O_RDONLY | O_CLOEXEC);
        ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
        ::close(file);
    }
    return notes.size();
}

/// Runs a program to its end with its output thrown away; gives its exit status.
std::size_t runCommand(std::vector<char*> arguments)
{
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    if (::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        qFatal("cannot start %s", arguments[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::posix_spawn_file_actions_destroy(&actions);
    return std::size_t(WEXITSTATUS(status));
}

Action actionFor(const QStringList& arguments)
{
    const QString what = arguments.value(1);
    const NameOrder order("sv_SE");
    if (what == "search"_L1) {
        return [query = arguments.value(3), order](const FileURL& folder) -> Count {
            return [hits = searchNotes(folder, query, order, FoldingRule::standard)] { return hits.size(); };
        };
    }
    if (what == "tree"_L1) {
        return [order](const FileURL& folder) -> Count {
            return [tree = buildTree(folder, order)] { return countNodes(tree); };
        };
    }
    if (what == "notes"_L1) {
        return [](const FileURL& folder) -> Count {
            return [notes = allMarkdownFiles(folder)] { return notes.size(); };
        };
    }
    if (what != "floor"_L1 && what != "forget"_L1)
        qFatal("bench-vault search|tree|notes|floor|command|forget FOLDER [QUERY]");
    return [act = what == "floor"_L1 ? readEveryNote : forget](const FileURL& folder) -> Count {
        return [count = act(folder)] { return count; };
    };
}

void print(std::size_t found, double elapsed, long grown)
{
    std::printf("{\"ms\": %f, \"found\": %zu, \"grown\": %f}\n", elapsed, found, double(grown) / 1024);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QElapsedTimer elapsed;
    if (application.arguments().value(1) == "command"_L1 && argc > 2) {
        elapsed.start();
        const std::size_t status = runCommand({argv + 2, argv + argc});
        print(status, double(elapsed.nsecsElapsed()) / 1e6, 0);
        return 0;
    }
    const Action act = actionFor(application.arguments());
    // What is made once in a run of the program is not part of a call.
    const QTemporaryDir empty;
    (void)act(FileURL::directory(empty.path()));
    resetPeak();
    const long before = memory("VmRSS");
    elapsed.start();
    const Count found = act(FileURL::fromBytes(QFile::encodeName(application.arguments().at(2)), true));
    const double duration = double(elapsed.nsecsElapsed()) / 1e6;
    print(found(), duration, memory("VmHWM") - before);
    return 0;
}
