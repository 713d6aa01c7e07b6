#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Fakes/RecordingUndo.h"
#include "State/AppState.h"
#include "Vault/AtomicFile.h"
#include "Vault/FileTree.h"
#include "Vault/ReadFile.h"

#include <QSignalSpy>
#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

/// Renaming and moving.
class AppStateMovesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void renamingKeepsTheExtension_data();
    void renamingKeepsTheExtension();
    void renamesThatDoNothing_data();
    void renamesThatDoNothing();
    void renamingOntoAnExistingNameDoesNothing();
    void theSelectedNoteIsFollowedWhenRenamed();
    void aSelectedNoteInARenamedFolderIsNotFollowed();
    void theSelectedFolderIsFollowed_data();
    void theSelectedFolderIsFollowed();
    void theSelectedFolderStaysWhenARenameFails();
    void aRenameThatFailsIsFollowedAllTheSame();
    void aNameTakenDuringTheRenameStaysWithItsOwner();
    void sessionsHearOfARenameBeforeAndAfter();
    void aMovedNoteKeepsItsName();
    void theSelectedNoteIsFollowedWhenMoved();
    void aSelectedNoteInAMovedFolderIsNotFollowed();
    void aFolderDoesNotMoveIntoItself_data();
    void aFolderDoesNotMoveIntoItself();
    void aFolderMovesIntoASiblingWhoseNameBeginsLikeIts();
    void movingOntoAnExistingNameDoesNothing();
    void droppingAFileOnItsOwnFolderRegistersNothing();
    void aMoveThatFailsIsLoggedAndChangesNothing();
    void undoPutsTheItemBackAndOffersRedo();
    void undoOfAVanishedItemDoesNothing();
    void undoAfterTheStateIsGoneDoesNothing();
    void sessionsHearOfAMoveBeforeAndAfter();
    void namesThatAreNotUtf8KeepTheirBytes();

private:
    /// The state with a bucket of these notes open.
    void open(std::initializer_list<std::pair<const char*, const char*>> entries);
    [[nodiscard]] FileURL file(const QString& path) const { return m_bucket->file(path); }
    [[nodiscard]] FileURL folder(const QString& path) const { return m_bucket->folder(path); }

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<AppState> m_state;
};

void AppStateMovesTests::init()
{
    m_state.reset();
    m_services = std::make_unique<FakeServices>();
    m_state = std::make_unique<AppState>(m_services->services());
}

void AppStateMovesTests::open(std::initializer_list<std::pair<const char*, const char*>> entries)
{
    m_bucket = std::make_unique<Bucket>(entries);
    m_state->addVault(m_bucket->root());
}

void AppStateMovesTests::renamingKeepsTheExtension_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("to");
    QTest::newRow("note, blanks around") << u"Plan.md"_s << u" \tMål "_s << u"Mål.md"_s;
    QTest::newRow("typed extension") << u"Plan.md"_s << u"Mål.md"_s << u"Mål.md.md"_s;
    QTest::newRow("folder") << u"Arkiv/"_s << u"Gamla"_s << u"Gamla"_s;
    QTest::newRow("folder with full stop") << u"Version 1.2/"_s << u"Version 2"_s << u"Version 2.2"_s;
    QTest::newRow("no extension") << u"README"_s << u"LÄSMIG"_s << u"LÄSMIG"_s;
    QTest::newRow("in a folder") << u"A/Plan.md"_s << u"Mål"_s << u"A/Mål.md"_s;
    QTest::newRow("two extensions") << u"arkiv.tar.gz"_s << u"nytt"_s << u"nytt.gz"_s;
}

void AppStateMovesTests::renamingKeepsTheExtension()
{
    QFETCH(QString, from);
    QFETCH(QString, name);
    QFETCH(QString, to);
    open({});
    m_bucket->write(from, "text");

    m_state->renameFile(from.endsWith(u'/') ? folder(from) : file(from), name);

    QVERIFY(m_bucket->exists(to));
    QVERIFY(!m_bucket->exists(from));
    QCOMPARE(m_bucket->read(to), from.endsWith(u'/') ? "" : "text");
}

void AppStateMovesTests::renamesThatDoNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("blanks") << u" \t "_s;
    QTest::newRow("unchanged") << u"Plan"_s;
    QTest::newRow("existing file") << u"Mål"_s;
    QTest::newRow("place in a folder") << u"mapp/Plan"_s;
    QTest::newRow("place in a missing folder") << u"Budget 2024/25"_s;
}

void AppStateMovesTests::renamesThatDoNothing()
{
    QFETCH(QString, name);
    open({{"Plan.md", "plan"}, {"Mål.md", "mål"}, {"mapp/", ""}});
    m_state->setSelectedFile(file(u"Plan.md"_s));
    const QSignalSpy moving(m_state.get(), &AppState::aboutToMove);

    m_state->renameFile(file(u"Plan.md"_s), name);

    QCOMPARE(m_bucket->names(), QStringList({u"Mål.md"_s, u"Plan.md"_s, u"mapp"_s}));
    QCOMPARE(m_bucket->read(u"Mål.md"_s), "mål");
    QCOMPARE(m_state->selectedFile(), file(u"Plan.md"_s));
    QCOMPARE(moving.count(), 0);
}

void AppStateMovesTests::renamingOntoAnExistingNameDoesNothing()
{
    open({{"A/Plan.md", "a"}, {"B/Plan.md", "b"}});

    m_state->renameFile(folder(u"A"_s), u"B"_s);

    QCOMPARE(m_bucket->read(u"A/Plan.md"_s), "a");
    QCOMPARE(m_bucket->read(u"B/Plan.md"_s), "b");
}

void AppStateMovesTests::theSelectedNoteIsFollowedWhenRenamed()
{
    open({{"Plan.md", "text"}});
    m_state->setSelectedFile(file(u"Plan.md"_s));

    m_state->renameFile(file(u"Plan.md"_s), u"Mål"_s);

    QCOMPARE(m_state->selectedFile(), file(u"Mål.md"_s));
    QCOMPARE(m_state->fileTree().front().url, file(u"Mål.md"_s));
    QCOMPARE(m_state->history().entries(), (std::vector{file(u"Plan.md"_s), file(u"Mål.md"_s)}));
    QCOMPARE(m_state->loadUIStates()[m_bucket->root().path()].selectedFilePath, file(u"Mål.md"_s).path());
}

void AppStateMovesTests::aSelectedNoteInARenamedFolderIsNotFollowed()
{
    open({{"Arkiv/Plan.md", "text"}});
    m_state->setSelectedFile(file(u"Arkiv/Plan.md"_s));

    m_state->renameFile(folder(u"Arkiv"_s), u"Gamla"_s);

    QCOMPARE(m_state->selectedFile(), file(u"Arkiv/Plan.md"_s));
    QCOMPARE(m_state->fileTree().front().url, folder(u"Gamla"_s));
    QVERIFY(m_state->fileTree() == buildTree(m_bucket->root()));
}

void AppStateMovesTests::theSelectedFolderIsFollowed_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("renamed");
    QTest::addColumn<QString>("moved");
    QTest::newRow("itself") << u"Arkiv"_s << u"Gamla"_s << u"mapp/Gamla"_s;
    QTest::newRow("folder in it") << u"Arkiv/2024"_s << u"Gamla/2024"_s << u"mapp/Gamla/2024"_s;
    QTest::newRow("another") << u"mapp"_s << u"mapp"_s << u"mapp"_s;
}

void AppStateMovesTests::theSelectedFolderIsFollowed()
{
    QFETCH(QString, selected);
    QFETCH(QString, renamed);
    QFETCH(QString, moved);
    open({{"Arkiv/2024/Plan.md", ""}, {"mapp/", ""}});
    m_state->setSelectedFolder(folder(selected));

    m_state->renameFile(folder(u"Arkiv"_s), u"Gamla"_s);
    QCOMPARE(m_state->selectedFolder(), folder(renamed));
    m_state->moveFile(folder(u"Gamla"_s), folder(u"mapp"_s));
    QCOMPARE(m_state->selectedFolder(), folder(moved));

    QCOMPARE(m_state->loadUIStates()[m_bucket->root().path()].selectedFolderPath, folder(moved).path());
}

void AppStateMovesTests::theSelectedFolderStaysWhenARenameFails()
{
    open({{"Arkiv/", ""}});
    m_state->setSelectedFolder(folder(u"Arkiv"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^renameFile error: ."_s));

    m_state->renameFile(folder(u"Arkiv"_s), QString(256, u'x'));

    QCOMPARE(m_state->selectedFolder(), folder(u"Arkiv"_s));
}

void AppStateMovesTests::aRenameThatFailsIsFollowedAllTheSame()
{
    open({{"Plan.md", "text"}});
    m_state->setSelectedFile(file(u"Plan.md"_s));
    const QSignalSpy moved(m_state.get(), &AppState::didMove);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^renameFile error: ."_s));

    const QString tooLong(256, u'x');
    m_state->renameFile(file(u"Plan.md"_s), tooLong);

    QCOMPARE(m_state->selectedFile(), file(tooLong + u".md"_s));
    QCOMPARE(m_bucket->read(u"Plan.md"_s), "text");
    QCOMPARE(moved.count(), 0);
}

void AppStateMovesTests::aNameTakenDuringTheRenameStaysWithItsOwner()
{
    open({{"Plan.md", "plan"}});
    m_state->setSelectedFile(file(u"Plan.md"_s));
    connect(m_state.get(), &AppState::aboutToMove, this,
            [this] { m_bucket->write(u"Mål.md"_s, "någon annans"); });

    m_state->renameFile(file(u"Plan.md"_s), u"Mål"_s);

    QCOMPARE(m_bucket->read(u"Mål.md"_s), "någon annans");
    QCOMPARE(m_bucket->read(u"Plan.md"_s), "plan");
    QCOMPARE(m_state->selectedFile(), file(u"Plan.md"_s));
}

void AppStateMovesTests::sessionsHearOfARenameBeforeAndAfter()
{
    open({{"Plan.md", "text"}});
    m_state->setSelectedFile(file(u"Plan.md"_s));
    QStringList heard;
    connect(m_state.get(), &AppState::aboutToMove, this,
            [&](const FileURL& item) { heard.append(u"moving "_s + item.lastPathComponent()); });
    connect(m_state.get(), &AppState::didMove, this, [&](const FileURL& from, const FileURL& to) {
        const QString place = m_bucket->exists(u"Mål.md"_s) ? u"moved "_s : u"not moved "_s;
        heard.append(place + from.lastPathComponent() + u' ' + to.lastPathComponent());
    });
    connect(m_state.get(), &AppState::selectedFileChanged, this, [&] { heard.append(u"selected"_s); });

    m_state->renameFile(file(u"Plan.md"_s), u"Mål"_s);

    QCOMPARE(heard, QStringList({u"moving Plan.md"_s, u"moved Plan.md Mål.md"_s, u"selected"_s}));
}

void AppStateMovesTests::aMovedNoteKeepsItsName()
{
    open({{"Plan.md", "text"}, {"mapp/", ""}});

    m_state->moveFile(file(u"Plan.md"_s), folder(u"mapp"_s));

    QCOMPARE(m_bucket->names(), QStringList(u"mapp"_s));
    QCOMPARE(m_bucket->read(u"mapp/Plan.md"_s), "text");
    QCOMPARE(m_state->fileTree().size(), 1U);
}

void AppStateMovesTests::theSelectedNoteIsFollowedWhenMoved()
{
    open({{"Plan.md", "text"}, {"mapp/", ""}});
    m_state->setSelectedFile(file(u"Plan.md"_s));

    m_state->moveFile(file(u"Plan.md"_s), folder(u"mapp"_s));

    QCOMPARE(m_state->selectedFile(), file(u"mapp/Plan.md"_s));
    QCOMPARE(m_state->history().entries(), (std::vector{file(u"Plan.md"_s), file(u"mapp/Plan.md"_s)}));
}

void AppStateMovesTests::aSelectedNoteInAMovedFolderIsNotFollowed()
{
    open({{"Arkiv/Plan.md", "text"}, {"mapp/", ""}});
    m_state->setSelectedFile(file(u"Arkiv/Plan.md"_s));

    m_state->moveFile(folder(u"Arkiv"_s), folder(u"mapp"_s));

    QCOMPARE(m_bucket->read(u"mapp/Arkiv/Plan.md"_s), "text");
    QCOMPARE(m_state->selectedFile(), file(u"Arkiv/Plan.md"_s));
    QVERIFY(m_state->fileTree() == buildTree(m_bucket->root()));
}

void AppStateMovesTests::aFolderDoesNotMoveIntoItself_data()
{
    QTest::addColumn<QString>("destination");
    QTest::newRow("itself") << u"A"_s;
    QTest::newRow("child") << u"A/B"_s;
    QTest::newRow("deeper") << u"A/B/C"_s;
    QTest::newRow("roundabout") << u"A/../A/./B"_s;
}

void AppStateMovesTests::aFolderDoesNotMoveIntoItself()
{
    QFETCH(QString, destination);
    open({{"A/B/C/Plan.md", "text"}});
    const QSignalSpy moving(m_state.get(), &AppState::aboutToMove);
    RecordingUndo undo;

    m_state->moveFile(folder(u"A"_s), folder(destination), &undo);

    QCOMPARE(m_bucket->read(u"A/B/C/Plan.md"_s), "text");
    QCOMPARE(moving.count(), 0);
    QCOMPARE(undo.names, QStringList());
}

void AppStateMovesTests::aFolderMovesIntoASiblingWhoseNameBeginsLikeIts()
{
    open({{"A/Plan.md", "text"}, {"AB/", ""}});

    m_state->moveFile(folder(u"A"_s), folder(u"AB"_s));

    QCOMPARE(m_bucket->read(u"AB/A/Plan.md"_s), "text");
}

void AppStateMovesTests::movingOntoAnExistingNameDoesNothing()
{
    open({{"Plan.md", "a"}, {"mapp/Plan.md", "b"}});

    m_state->moveFile(file(u"Plan.md"_s), folder(u"mapp"_s));

    QCOMPARE(m_bucket->read(u"Plan.md"_s), "a");
    QCOMPARE(m_bucket->read(u"mapp/Plan.md"_s), "b");
}

void AppStateMovesTests::droppingAFileOnItsOwnFolderRegistersNothing()
{
    open({{"mapp/Plan.md", "text"}});
    RecordingUndo undo;

    m_state->moveFile(file(u"mapp/Plan.md"_s), folder(u"mapp"_s), &undo);

    QCOMPARE(m_bucket->read(u"mapp/Plan.md"_s), "text");
    QCOMPARE(undo.names, QStringList());
}

void AppStateMovesTests::aMoveThatFailsIsLoggedAndChangesNothing()
{
    open({{"Plan.md", "text"}});
    m_state->setSelectedFile(file(u"Plan.md"_s));
    m_bucket->write(u"Annan.md"_s, {});
    const QSignalSpy tree(m_state.get(), &AppState::fileTreeChanged);
    RecordingUndo undo;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^moveFile error: ."_s));

    m_state->moveFile(file(u"Plan.md"_s), folder(u"saknas"_s), &undo);

    QCOMPARE(m_bucket->read(u"Plan.md"_s), "text");
    QCOMPARE(m_state->selectedFile(), file(u"Plan.md"_s));
    QCOMPARE(tree.count(), 0);
    QCOMPARE(undo.names, QStringList());
}

void AppStateMovesTests::undoPutsTheItemBackAndOffersRedo()
{
    open({{"A/Plan.md", "text"}, {"B/", ""}});
    m_state->setSelectedFile(file(u"A/Plan.md"_s));
    RecordingUndo undo;
    m_state->moveFile(*m_state->selectedFile(), folder(u"B"_s), &undo);
    QCOMPARE(undo.names, QStringList(u"Flytta"_s));

    undo.runLast();
    QVERIFY(m_bucket->exists(u"A/Plan.md"_s));
    QCOMPARE(m_state->selectedFile(), file(u"A/Plan.md"_s));
    QVERIFY(m_state->fileTree() == buildTree(m_bucket->root()));
    QCOMPARE(undo.names, QStringList({u"Flytta"_s, u"Flytta"_s}));

    undo.runLast();
    QVERIFY(m_bucket->exists(u"B/Plan.md"_s));
    QCOMPARE(m_state->selectedFile(), file(u"B/Plan.md"_s));
}

void AppStateMovesTests::undoOfAVanishedItemDoesNothing()
{
    open({{"Plan.md", "text"}, {"B/", ""}});
    RecordingUndo undo;
    m_state->moveFile(file(u"Plan.md"_s), folder(u"B"_s), &undo);
    m_bucket->remove(u"B/Plan.md"_s);

    undo.runLast();

    QCOMPARE(undo.names.size(), 1);
    QVERIFY(!m_bucket->exists(u"Plan.md"_s));
}

void AppStateMovesTests::undoAfterTheStateIsGoneDoesNothing()
{
    open({{"Plan.md", "text"}, {"B/", ""}});
    RecordingUndo undo;
    m_state->moveFile(file(u"Plan.md"_s), folder(u"B"_s), &undo);
    m_state.reset();

    undo.runLast();

    QVERIFY(m_bucket->exists(u"B/Plan.md"_s));
}

void AppStateMovesTests::sessionsHearOfAMoveBeforeAndAfter()
{
    open({{"A/Plan.md", "text"}, {"B/", ""}});
    QStringList heard;
    connect(m_state.get(), &AppState::aboutToMove, this, [&](const FileURL& item) {
        m_bucket->write(u"A/Plan.md"_s, "sista ordet");
        heard.append(item.lastPathComponent());
    });
    connect(m_state.get(), &AppState::didMove, this, [&](const FileURL& from, const FileURL& to) {
        heard.append(from.lastPathComponent() + u' ' + QString::fromUtf8(m_bucket->read(u"B/A/Plan.md"_s)));
        QCOMPARE(to, folder(u"B/A"_s));
    });

    m_state->moveFile(folder(u"A"_s), folder(u"B"_s));

    QCOMPARE(heard, QStringList({u"A"_s, u"A sista ordet"_s}));
}

void AppStateMovesTests::namesThatAreNotUtf8KeepTheirBytes()
{
    open({{"A/", ""}});
    const FileURL note = m_bucket->root().appendingBytes("M\xf6te.m\xe5l", false);
    QVERIFY(AtomicFile::write(note, "text").succeeded());

    m_state->moveFile(note, folder(u"A"_s));
    const FileURL moved = folder(u"A"_s).appendingBytes("M\xf6te.m\xe5l", false);
    QCOMPARE(readFile(moved), std::optional("text"_ba));
    m_state->renameFile(moved, u"Plan"_s);

    QCOMPARE(readFile(folder(u"A"_s).appendingBytes("Plan.m\xe5l", false)), std::optional("text"_ba));
}

QTEST_GUILESS_MAIN(AppStateMovesTests)
#include "AppStateMovesTests.moc"
