#include "State/BucketTree.h"

#include "Fakes/Bucket.h"
#include "Fakes/ManualScheduler.h"
#include "Vault/FileTree.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

class BucketTreeTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void anOpenedBucketIsReadInTheBackground();
    void whoNeedsTheTreeBeforeGetsIt();
    void theReadingOfABucketThatWasLeftIsNotShown();
    void whatTheProgramChangedIsShownAtOnce();
    void whatElseChangedIsShownWhenItIsRead();
    void aMovedFolderIsShownAtOnce();
    void aChangeDuringAReadingIsNotTakenBack();
    void changesInARowAreReadOnce();
    void everybodyWhoWaitsIsTold();
    void whoAsksDuringAReadingWaitsForANewOne();
    void withoutABucketNothingIsRead();

private:
    /// The tree of a bucket with a note and a folder.
    void open();
    /// Lets the reading come that follows a change.
    void readTheRest()
    {
        m_scheduler->advance(1s);
        m_scheduler->finishBackgroundWork();
    }

    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<ManualScheduler> m_scheduler;
    std::unique_ptr<BucketTree> m_tree;
    int m_changes = 0;
};

void BucketTreeTests::init()
{
    m_bucket = std::make_unique<Bucket>();
    m_scheduler = std::make_unique<ManualScheduler>();
    m_tree = std::make_unique<BucketTree>(*m_scheduler, [this] { ++m_changes; });
}

void BucketTreeTests::open()
{
    m_bucket->write(u"A.md"_s, {});
    m_bucket->write(u"Mapp/B.md"_s, {});
    m_tree->open(m_bucket->root());
    readTheRest();
    m_changes = 0;
}

void BucketTreeTests::anOpenedBucketIsReadInTheBackground()
{
    m_bucket->write(u"A.md"_s, {});
    m_tree->open(m_bucket->root());
    QVERIFY(!m_tree->isRead());
    m_changes = 0;

    readTheRest();

    QVERIFY(m_tree->isRead());
    QCOMPARE(m_changes, 1);
    QCOMPARE(m_tree->nodes().size(), 1);
}

void BucketTreeTests::whoNeedsTheTreeBeforeGetsIt()
{
    m_bucket->write(u"A.md"_s, {});
    m_tree->open(m_bucket->root());
    m_changes = 0;

    QCOMPARE(m_tree->nodes().size(), 1);
    QVERIFY(m_tree->isRead());

    readTheRest();
    QCOMPARE(m_changes, 1); // for those who did not ask
    QCOMPARE(m_tree->nodes().size(), 1);
}

void BucketTreeTests::theReadingOfABucketThatWasLeftIsNotShown()
{
    m_bucket->write(u"A.md"_s, {});
    const Bucket other;
    m_tree->open(m_bucket->root());
    m_scheduler->advance(1s);
    QCOMPARE(m_scheduler->pendingBackgroundWork(), 1);

    m_tree->open(other.root());
    QVERIFY(m_scheduler->finishNextBackgroundWork());
    QVERIFY(!m_tree->isRead());
    readTheRest();

    QVERIFY(m_tree->isRead());
    QVERIFY(m_tree->nodes().empty());
}

void BucketTreeTests::whatTheProgramChangedIsShownAtOnce()
{
    open();
    m_bucket->write(u"Mapp/C.md"_s, {});

    m_tree->updateFolder(m_bucket->folder(u"Mapp"_s));

    QVERIFY(m_tree->nodes() == buildTree(m_bucket->root()));
    QCOMPARE(m_changes, 1);
    readTheRest();
    QCOMPARE(m_changes, 1);
}

void BucketTreeTests::whatElseChangedIsShownWhenItIsRead()
{
    open();
    m_bucket->write(u"Mapp/C.md"_s, {});

    m_tree->updateFolder(m_bucket->root());
    QCOMPARE(m_changes, 0);
    readTheRest();

    QVERIFY(m_tree->nodes() == buildTree(m_bucket->root()));
    QCOMPARE(m_changes, 1);
}

void BucketTreeTests::aMovedFolderIsShownAtOnce()
{
    open();
    QVERIFY(QFile::rename(m_bucket->file(u"Mapp"_s).path(), m_bucket->file(u"Ny"_s).path()));

    m_tree->updateMoved(m_bucket->folder(u"Mapp"_s), m_bucket->folder(u"Ny"_s));

    QVERIFY(m_tree->nodes() == buildTree(m_bucket->root()));
    QCOMPARE(m_changes, 1);
}

void BucketTreeTests::aChangeDuringAReadingIsNotTakenBack()
{
    open();
    m_tree->readInBackground([] {});
    m_bucket->write(u"D.md"_s, {});
    m_tree->updateFolder(m_bucket->root());
    const auto shown = m_tree->nodes();
    m_bucket->remove(u"D.md"_s); // as if the reading had looked before the note was there

    QVERIFY(m_scheduler->finishNextBackgroundWork());

    QVERIFY(m_tree->nodes() == shown);
    m_scheduler->finishBackgroundWork();
    QVERIFY(m_tree->nodes() == buildTree(m_bucket->root()));
}

void BucketTreeTests::changesInARowAreReadOnce()
{
    open();

    for (const QString& name : {u"C.md"_s, u"D.md"_s, u"E.md"_s}) {
        m_bucket->write(name, {});
        m_tree->updateFolder(m_bucket->root());
        QCOMPARE(m_scheduler->pendingBackgroundWork(), 0);
        QCOMPARE(m_scheduler->pendingTasks(), 1);
    }
    m_scheduler->advance(1s);
    QCOMPARE(m_scheduler->pendingBackgroundWork(), 1);
    m_scheduler->finishBackgroundWork();

    QCOMPARE(m_tree->nodes().size(), 5);
    QCOMPARE(m_changes, 3);
}

void BucketTreeTests::everybodyWhoWaitsIsTold()
{
    open();
    QString told;

    m_tree->readInBackground([&told] { told += u'1'; });
    m_tree->readInBackground([&told] { told += u'2'; });
    m_scheduler->finishBackgroundWork();

    QCOMPARE(told, u"12"_s);
}

void BucketTreeTests::whoAsksDuringAReadingWaitsForANewOne()
{
    open();
    int told = 0;
    m_tree->readInBackground([&told] { ++told; });
    m_bucket->write(u"C.md"_s, {});
    m_tree->readInBackground([&told] { ++told; });

    QVERIFY(m_scheduler->finishNextBackgroundWork());
    QCOMPARE(told, 0);
    m_scheduler->finishBackgroundWork();

    QCOMPARE(told, 2);
    QVERIFY(m_tree->nodes() == buildTree(m_bucket->root()));
}

void BucketTreeTests::withoutABucketNothingIsRead()
{
    open();
    m_tree->open(std::nullopt);

    m_tree->updateFolder(m_bucket->root());

    QVERIFY(m_tree->nodes().empty());
    QCOMPARE(m_scheduler->pendingTasks(), 0);
}

QTEST_GUILESS_MAIN(BucketTreeTests)
#include "BucketTreeTests.moc"
