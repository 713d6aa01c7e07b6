#include "Vault/FolderWalk.h"

#include <QByteArrayList>
#include <QSemaphore>
#include <QSet>
#include <QTest>

#include <atomic>
#include <mutex>
#include <set>
#include <thread>

using namespace wendlore;

namespace {

/// A tree that exists in no file system: every folder above `depth` holds `width` folders and one file.
class ImaginedTree final
{
public:
    ImaginedTree(int width, int depth)
        : m_width(width)
        , m_depth(depth)
    {}

    std::vector<FileNode> walk()
    {
        return walkFolders(FileURL::fromBytes("/", true),
                           [this](const FolderPlace& folder) { return list(folder.url, folder.followLink); });
    }

    QByteArrayList listed;
    QByteArrayList listedFollowingLinks;
    std::set<std::thread::id> threads;

private:
    std::vector<FileNode> list(const FileURL& folder, FollowLink followLink)
    {
        const std::lock_guard lock(m_mutex);
        listed.append(folder.bytes());
        if (followLink == FollowLink::Yes)
            listedFollowingLinks.append(folder.bytes());
        threads.insert(std::this_thread::get_id());

        std::vector<FileNode> nodes;
        const bool isDeepest = folder.bytes() != "/" && folder.bytes().count('/') >= m_depth;
        for (int number = 0; number < (isDeepest ? 0 : m_width); ++number)
            nodes.push_back({folder.appendingBytes(QByteArray::number(number), true), true, {}});
        nodes.push_back({folder.appendingBytes("A.md", false), false, {}});
        return nodes;
    }

    int m_width;
    int m_depth;
    std::mutex m_mutex;
};

/// How many folders `nodes` and all below them hold, when every one of them has what it should.
int countFolders(const std::vector<FileNode>& nodes, const FileURL& folder)
{
    if (nodes.empty() || nodes.back().url != folder.appendingBytes("A.md", false) || nodes.back().children)
        qFatal("the contents of %s are wrong", folder.bytes().constData());
    int count = 0;
    for (std::size_t number = 0; number + 1 < nodes.size(); ++number) {
        const FileNode& node = nodes[number];
        if (node.url != folder.appendingBytes(QByteArray::number(number), true) || !node.children)
            qFatal("%s is wrong", node.url.bytes().constData());
        count += 1 + countFolders(*node.children, node.url);
    }
    return count;
}

} // namespace

class FolderWalkTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFolderIsListedOnceAndHasItsContents_data();
    void everyFolderIsListedOnceAndHasItsContents();
    void smallTreesStayOnTheCallersThread();
    void idleThreadsWaitForWhatABusyOneMayFind();
    void onlyTheRootMayBeALink();
    void nothingIsListedInFiles();
};

void FolderWalkTests::everyFolderIsListedOnceAndHasItsContents_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("folders");

    QTest::newRow("empty") << 0 << 1 << 0;
    QTest::newRow("one below another") << 1 << 500 << 500;
    QTest::newRow("flat") << 3000 << 1 << 3000;
    QTest::newRow("bushy") << 5 << 5 << 3905;
    QTest::newRow("narrow") << 2 << 10 << 2046;
}

void FolderWalkTests::everyFolderIsListedOnceAndHasItsContents()
{
    QFETCH(const int, width);
    QFETCH(const int, depth);
    QFETCH(const int, folders);

    for (int time = 0; time < 5; ++time) {
        ImaginedTree tree(width, depth);

        const auto nodes = tree.walk();

        QCOMPARE(countFolders(nodes, FileURL::fromBytes("/", true)), folders);
        QCOMPARE(tree.listed.size(), folders + 1);
        QCOMPARE(QSet<QByteArray>(tree.listed.begin(), tree.listed.end()).size(), folders + 1);
    }
}

void FolderWalkTests::smallTreesStayOnTheCallersThread()
{
    ImaginedTree tree(3, 2);

    QCOMPARE(tree.walk().size(), 4);

    QCOMPARE(tree.threads, std::set{std::this_thread::get_id()});
}

void FolderWalkTests::idleThreadsWaitForWhatABusyOneMayFind()
{
    constexpr int others = 20;
    constexpr int patience = 20000;
    QSemaphore othersListed;
    QSemaphore arrivals;
    std::atomic_int met = 0;
    const auto list = [&](const FolderPlace& place) {
        const FileURL& folder = place.url;
        std::vector<FileNode> nodes;
        const auto addFolder = [&](const QByteArray& name) {
            nodes.push_back({folder.appendingBytes(name, true), true, {}});
        };
        if (folder.bytes() == "/") {
            addFolder("all"); // there is nothing to share at first
        } else if (folder.bytes() == "/all") {
            for (int number = 0; number < others; ++number)
                addFolder(QByteArray::number(number));
            addFolder("late");
        } else if (folder.bytes() == "/all/late") {
            othersListed.tryAcquire(others, patience);
            addFolder("left");
            addFolder("right");
        } else if (folder.bytes().startsWith("/all/late/")) {
            arrivals.release();
            met += arrivals.tryAcquire(2, patience) ? 1 : 0; // both are inside at the same time
            arrivals.release(2);
        } else {
            othersListed.release();
        }
        return nodes;
    };

    const auto nodes = walkFolders(FileURL::fromBytes("/", true), list);

    QCOMPARE(nodes.back().children->back().children->size(), 2);
    QCOMPARE(met, 2);
}

void FolderWalkTests::onlyTheRootMayBeALink()
{
    ImaginedTree tree(10, 2);

    QCOMPARE(tree.walk().size(), 11);

    QCOMPARE(tree.listedFollowingLinks, QByteArrayList{"/"});
}

void FolderWalkTests::nothingIsListedInFiles()
{
    QByteArrayList listed;
    const auto nodes = walkFolders(FileURL::fromBytes("/", true), [&](const FolderPlace& folder) {
        listed.append(folder.url.bytes());
        return std::vector<FileNode>{{folder.url.appendingBytes("Report.rtfd", false), false, {}}};
    });

    QCOMPARE(nodes.size(), 1);
    QCOMPARE(listed, QByteArrayList{"/"});
}

QTEST_GUILESS_MAIN(FolderWalkTests)
#include "FolderWalkTests.moc"
