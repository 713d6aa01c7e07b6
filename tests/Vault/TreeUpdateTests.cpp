#include "Vault/TreeUpdate.h"

#include "Fakes/Bucket.h"
#include "Vault/FileTree.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

/// A tree that follows what happens in its bucket, folder by folder.
class TreeUpdateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatCameAndWentInAFolderIsSeen();
    void anUnchangedFolderChangesNothing();
    void onlyTheFolderItselfIsListed();
    void aNewFolderIsReadWhole();
    void aFolderThatTheTreeLacksComesWithTheOnesAbove();
    void aFileThatBecameAFolderIsOne();
    void placesOutsideOfTheBucketDoNotConcernIt_data();
    void placesOutsideOfTheBucketDoNotConcernIt();
    void aBucketThatIsALinkIsFollowed();
    void aMovedFolderTakesItsContentsAlong();
    void aFolderThatLeftTheBucketIsGone();
    void aFolderThatCameFromOutsideIsReadWhole();
    void aMoveThatDidNotHappenChangesNothing();
    void anyRowOfChangesGivesTheTreeThatIsOnDisk_data();
    void anyRowOfChangesGivesTheTreeThatIsOnDisk();
};

namespace {

bool rename(const FileURL& from, const FileURL& to)
{
    return QFile::rename(from.path(), to.path());
}

} // namespace

void TreeUpdateTests::whatCameAndWentInAFolderIsSeen()
{
    const Bucket bucket({{"Mapp/A.md", ""}, {"Mapp/Inre/B.md", ""}, {"C.md", ""}});
    auto tree = buildTree(bucket.root());
    bucket.write(u"Mapp/Ö.md"_s, {});
    bucket.write(u"Mapp/Nytt/"_s, {});
    bucket.remove(u"Mapp/A.md"_s);

    QVERIFY(updateFolder(tree, bucket.root(), bucket.folder(u"Mapp"_s)));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::anUnchangedFolderChangesNothing()
{
    const Bucket bucket({{"Mapp/A.md", ""}, {"Mapp/Inre/B.md", ""}});
    auto tree = buildTree(bucket.root());
    const auto before = tree;

    QVERIFY(!updateFolder(tree, bucket.root(), bucket.root()));
    QVERIFY(!updateFolder(tree, bucket.root(), bucket.folder(u"Mapp"_s)));

    QVERIFY(tree == before);
}

void TreeUpdateTests::onlyTheFolderItselfIsListed()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    auto tree = buildTree(bucket.root());
    bucket.write(u"Mapp/B.md"_s, {});
    bucket.write(u"C.md"_s, {});

    QVERIFY(updateFolder(tree, bucket.root(), bucket.root()));

    QCOMPARE(tree.size(), 2);
    QCOMPARE(tree[0].children->size(), 1);
}

void TreeUpdateTests::aNewFolderIsReadWhole()
{
    const Bucket bucket({{"A.md", ""}});
    auto tree = buildTree(bucket.root());
    bucket.write(u"Mapp/Inre/Innerst/B.md"_s, {});

    QVERIFY(updateFolder(tree, bucket.root(), bucket.root()));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::aFolderThatTheTreeLacksComesWithTheOnesAbove()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    auto tree = buildTree(bucket.root());
    bucket.write(u"Mapp/Inre/Innerst/B.md"_s, {});

    QVERIFY(updateFolder(tree, bucket.root(), bucket.folder(u"Mapp/Inre/Innerst"_s)));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::aFileThatBecameAFolderIsOne()
{
    const Bucket bucket({{"Plan", "text"}});
    auto tree = buildTree(bucket.root());
    bucket.remove(u"Plan"_s);
    bucket.write(u"Plan/A.md"_s, {});

    QVERIFY(updateFolder(tree, bucket.root(), bucket.root()));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::placesOutsideOfTheBucketDoNotConcernIt_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("folder above") << u"/.."_s;
    QTest::newRow("name that begins alike") << u"-annan"_s;
}

void TreeUpdateTests::placesOutsideOfTheBucketDoNotConcernIt()
{
    QFETCH(QString, ending);
    const Bucket bucket({{"A.md", ""}});
    auto tree = buildTree(bucket.root());
    bucket.write(u"B.md"_s, {});

    QVERIFY(
        !updateFolder(tree, bucket.root(), FileURL::directory(bucket.root().path() + ending).standardized()));

    QCOMPARE(tree.size(), 1);
}

void TreeUpdateTests::aBucketThatIsALinkIsFollowed()
{
    const Bucket bucket({{"A.md", ""}});
    const Bucket elsewhere;
    const FileURL link = elsewhere.folder(u"länk"_s);
    QVERIFY(QFile::link(bucket.root().path(), link.path()));
    auto tree = buildTree(link);
    bucket.write(u"B.md"_s, {});

    QVERIFY(updateFolder(tree, link, link));

    QVERIFY(tree == buildTree(link));
    QCOMPARE(tree.size(), 2);
}

void TreeUpdateTests::aMovedFolderTakesItsContentsAlong()
{
    const Bucket bucket({{"Mapp/Inre/A.md", ""}, {"Annan/B.md", ""}});
    auto tree = buildTree(bucket.root());
    const FileURL to = bucket.folder(u"Annan/Mapp"_s);
    QVERIFY(rename(bucket.folder(u"Mapp"_s), to));
    const auto moved = buildTree(bucket.root());
    bucket.remove(u"Annan/Mapp/Inre/A.md"_s);

    QVERIFY(updateMoved(tree, bucket.root(), bucket.folder(u"Mapp"_s), to));

    QVERIFY(tree == moved); // nothing in it was listed again
}

void TreeUpdateTests::aFolderThatLeftTheBucketIsGone()
{
    const Bucket bucket({{"Mapp/A.md", ""}, {"B.md", ""}});
    const Bucket elsewhere;
    auto tree = buildTree(bucket.root());
    QVERIFY(rename(bucket.folder(u"Mapp"_s), elsewhere.folder(u"Mapp"_s)));

    QVERIFY(updateMoved(tree, bucket.root(), bucket.folder(u"Mapp"_s), elsewhere.folder(u"Mapp"_s)));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::aFolderThatCameFromOutsideIsReadWhole()
{
    const Bucket bucket({{"B.md", ""}});
    const Bucket elsewhere({{"Mapp/Inre/A.md", ""}});
    auto tree = buildTree(bucket.root());
    QVERIFY(rename(elsewhere.folder(u"Mapp"_s), bucket.folder(u"Mapp"_s)));

    QVERIFY(updateMoved(tree, bucket.root(), elsewhere.folder(u"Mapp"_s), bucket.folder(u"Mapp"_s)));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::aMoveThatDidNotHappenChangesNothing()
{
    const Bucket bucket({{"Mapp/Inre/A.md", ""}, {"Annan/", ""}});
    auto tree = buildTree(bucket.root());

    (void)updateMoved(tree, bucket.root(), bucket.folder(u"Mapp"_s), bucket.folder(u"Annan/Mapp"_s));

    QVERIFY(tree == buildTree(bucket.root()));
}

void TreeUpdateTests::anyRowOfChangesGivesTheTreeThatIsOnDisk_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 10; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

namespace {

/// Adds the folders of the tree to `folders`, and everything in it to `all`.
void addPlaces(const std::vector<FileNode>& nodes, std::vector<FileURL>& folders, std::vector<FileURL>& all)
{
    for (const FileNode& node : nodes) {
        all.push_back(node.url);
        if (!node.children)
            continue;
        folders.push_back(node.url);
        addPlaces(*node.children, folders, all);
    }
}

/// Changes something by chance, where it can be changed, and tells the tree.
void change(QRandomGenerator& random, const FileURL& bucket, std::vector<FileNode>& tree)
{
    std::vector<FileURL> folders{bucket};
    std::vector<FileURL> all;
    addPlaces(tree, folders, all);
    const auto anyOf = [&random](const std::vector<FileURL>& places) {
        return places[random.bounded(quint32(places.size()))];
    };
    static const QStringList names{u"a"_s, u"B"_s, u"ö 2"_s, u"ö 10"_s, u"c.md"_s, u"d.pages"_s, u".dold"_s};
    const FileURL target = anyOf(folders).appending(names[random.bounded(7)], true);
    const quint32 kind = random.bounded(5U);
    if (kind == 0 || all.empty()) {
        (void)QDir().mkpath(target.path() + u"/inre"_s);
        updateFolder(tree, bucket, target);
        updateFolder(tree, bucket, target.deletingLastPathComponent());
    } else if (kind == 1) {
        (void)QFile(target.path()).open(QIODevice::WriteOnly);
        updateFolder(tree, bucket, target.deletingLastPathComponent());
    } else if (kind == 2) {
        const FileURL gone = anyOf(all);
        QVERIFY(QFile::remove(gone.path()) || QDir(gone.path()).removeRecursively());
        updateFolder(tree, bucket, gone.deletingLastPathComponent());
    } else if (const FileURL from = anyOf(all); !target.isBelow(from)) {
        const FileURL to = FileURL::fromBytes(target.bytes(), from.isDirectory());
        if (rename(from, to))
            updateMoved(tree, bucket, from, to);
    }
}

} // namespace

void TreeUpdateTests::anyRowOfChangesGivesTheTreeThatIsOnDisk()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const Bucket bucket({{"Mapp/Inre/A.md", ""}, {"Annan/B.md", ""}, {"C.md", ""}});
    auto tree = buildTree(bucket.root());

    for (int step = 0; step < 60; ++step) {
        change(random, bucket.root(), tree);
        QVERIFY2(tree == buildTree(bucket.root()), qPrintable(u"step %1"_s.arg(step)));
    }
}

QTEST_GUILESS_MAIN(TreeUpdateTests)
#include "TreeUpdateTests.moc"
