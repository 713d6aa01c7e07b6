#include "Shell/DropDelegates.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Fakes/RecordingUndo.h"
#include "State/AppState.h"

#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

class DropDelegatesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void droppedItemsMoveInOrderOnceTheLoopRuns();
    void whatIsNoFileIsSkipped();
    void aDropWithoutFilesIsRefused();
    void aDroppedFolderDoesNotEndInItself();
    void aFolderShowsItselfAsTargetWhileEntered();
    void leavingAFolderKeepsTheTargetOfTheNextOne();
    void aDropOnAFolderEndsTheHighlightAndMoves();
    void theRootTakesFilesWhileABucketIsOpen();
    void aDropOnTheRootMovesThere();

private:
    [[nodiscard]] QUrl url(const QString& path) const
    {
        return QUrl::fromLocalFile(m_bucket->file(path).path());
    }
    [[nodiscard]] bool lies(const QString& path) const { return m_bucket->exists(path); }
    [[nodiscard]] FolderDropDelegate folderDelegate(const QString& path)
    {
        return {m_bucket->folder(path),
                m_droppingInto,
                *m_state,
                &m_undo,
                [this](const FileURL& folder) { m_calls.append(u"enter "_s + folder.lastPathComponent()); },
                [this] { m_calls.append(u"exit"_s); }};
    }

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<AppState> m_state;
    RecordingUndo m_undo;
    std::optional<FileURL> m_droppingInto;
    QStringList m_calls;
};

void DropDelegatesTests::init()
{
    m_state.reset();
    m_services = std::make_unique<FakeServices>();
    m_bucket = std::make_unique<Bucket>(std::initializer_list<std::pair<const char*, const char*>>{
        {"Plan.md", "plan"}, {"Idé.md", "idé"}, {"A/B/", ""}, {"C/Mål.md", "mål"}});
    m_state = std::make_unique<AppState>(m_services->services());
    m_state->addVault(m_bucket->root());
    m_undo = {};
    m_droppingInto.reset();
    m_calls.clear();
}

void DropDelegatesTests::droppedItemsMoveInOrderOnceTheLoopRuns()
{
    const QSignalSpy moved(m_state.get(), &AppState::didMove);

    QVERIFY(loadAndMove({url(u"Plan.md"_s), url(u"C"_s)}, m_bucket->folder(u"A"_s), *m_state, &m_undo));

    QVERIFY(lies(u"Plan.md"_s));
    QTRY_COMPARE(moved.count(), 2);
    QCOMPARE(moved[0][0].value<FileURL>(), m_bucket->file(u"Plan.md"_s));
    QCOMPARE(moved[1][0].value<FileURL>(), m_bucket->folder(u"C"_s));
    QVERIFY(lies(u"A/Plan.md"_s));
    QVERIFY(lies(u"A/C/Mål.md"_s));
    QCOMPARE(m_undo.names, QStringList({u"Flytta"_s, u"Flytta"_s}));
}

void DropDelegatesTests::whatIsNoFileIsSkipped()
{
    const QSignalSpy moved(m_state.get(), &AppState::didMove);

    QVERIFY(loadAndMove({QUrl(u"https://example.org/A.md"_s), QUrl(), url(u"Idé.md"_s)},
                        m_bucket->folder(u"A"_s), *m_state, nullptr));

    QTRY_COMPARE(moved.count(), 1);
    QVERIFY(lies(u"A/Idé.md"_s));
}

void DropDelegatesTests::aDropWithoutFilesIsRefused()
{
    QVERIFY(!loadAndMove({}, m_bucket->folder(u"A"_s), *m_state, nullptr));
    QVERIFY(!loadAndMove({QUrl(u"https://example.org/"_s)}, m_bucket->folder(u"A"_s), *m_state, nullptr));
}

void DropDelegatesTests::aDroppedFolderDoesNotEndInItself()
{
    const QSignalSpy moved(m_state.get(), &AppState::didMove);

    QVERIFY(loadAndMove({url(u"A"_s), url(u"Plan.md"_s)}, m_bucket->folder(u"A/B"_s), *m_state, nullptr));

    QTRY_COMPARE(moved.count(), 1);
    QVERIFY(lies(u"A/B/Plan.md"_s));
}

void DropDelegatesTests::aFolderShowsItselfAsTargetWhileEntered()
{
    FolderDropDelegate delegate = folderDelegate(u"A"_s);

    delegate.dropEntered();
    QCOMPARE(m_droppingInto, m_bucket->folder(u"A"_s));
    delegate.dropExited();

    QCOMPARE(m_droppingInto, std::nullopt);
    QCOMPARE(m_calls, QStringList({u"enter A"_s, u"exit"_s}));
}

void DropDelegatesTests::leavingAFolderKeepsTheTargetOfTheNextOne()
{
    FolderDropDelegate first = folderDelegate(u"A"_s);
    FolderDropDelegate second = folderDelegate(u"C"_s);

    first.dropEntered();
    second.dropEntered();
    first.dropExited();

    QCOMPARE(m_droppingInto, m_bucket->folder(u"C"_s));
}

void DropDelegatesTests::aDropOnAFolderEndsTheHighlightAndMoves()
{
    FolderDropDelegate delegate = folderDelegate(u"A"_s);
    QMimeData data;
    data.setUrls({url(u"Plan.md"_s)});

    delegate.dropEntered();
    QVERIFY(delegate.performDrop(data));

    QCOMPARE(m_droppingInto, std::nullopt);
    QCOMPARE(m_calls, QStringList({u"enter A"_s, u"exit"_s}));
    QTRY_VERIFY(lies(u"A/Plan.md"_s));
    QCOMPARE(m_undo.names, QStringList(u"Flytta"_s));
}

void DropDelegatesTests::theRootTakesFilesWhileABucketIsOpen()
{
    bool isHighlighted = false;
    QMimeData files;
    files.setUrls({url(u"C/Mål.md"_s)});
    QMimeData text;
    text.setText(u"text"_s);
    RootDropDelegate delegate{isHighlighted, *m_state};
    FakeServices services;
    AppState withoutBucket(services.services());

    QVERIFY(delegate.validateDrop(files));
    QVERIFY(!delegate.validateDrop(text));
    QVERIFY(!(RootDropDelegate{isHighlighted, withoutBucket}.validateDrop(files)));

    delegate.dropEntered();
    QVERIFY(isHighlighted);
    delegate.dropExited();
    QVERIFY(!isHighlighted);
}

void DropDelegatesTests::aDropOnTheRootMovesThere()
{
    bool isHighlighted = true;
    QMimeData data;
    data.setUrls({url(u"C/Mål.md"_s)});
    RootDropDelegate delegate{isHighlighted, *m_state, &m_undo};

    QVERIFY(delegate.performDrop(data));

    QVERIFY(!isHighlighted);
    QTRY_VERIFY(lies(u"Mål.md"_s));
}

QTEST_GUILESS_MAIN(DropDelegatesTests)
#include "DropDelegatesTests.moc"
