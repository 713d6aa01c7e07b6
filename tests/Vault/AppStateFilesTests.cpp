#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Vault/FileTree.h"

#include <QSignalSpy>
#include <QTest>

#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

/// Making, importing and deleting.
class AppStateFilesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aNewNoteIsEmptySelectedAndTakesTheFocus();
    void newNotesTakeTheFirstFreeNumber_data();
    void newNotesTakeTheFirstFreeNumber();
    void aFolderBlocksTheNameOfANote();
    void aDanglingLinkBlocksTheNameOfANote();
    void newNotesGoIntoTheActiveDirectory();
    void withoutABucketThereIsNoNewNote();
    void aNewNoteThatCannotBeWrittenIsSelectedAllTheSame();
    void aNamedNoteHoldsItsNameAsHeading_data();
    void aNamedNoteHoldsItsNameAsHeading();
    void aNamedNoteIsSelectedWithoutFocus();
    void aNamedNoteReplacesAFileAndKeepsItsText();
    void aNamedNoteThatCouldNotKeepATextLeavesIt();
    void aNameWithAZeroByteMakesNothing();
    void newFoldersTakeTheFirstFreeNumber();
    void aNewFolderIsNotSelected();
    void aFolderThatCannotBeMadeIsLogged();
    void deletingTheSelectedNoteEmptiesTheSelection();
    void deletingTheFolderOfTheSelectedNoteDoesNot();
    void aDeletedFolderIsNoLongerSelected();
    void sessionsHearOfADeletionBeforeAndAfter();
    void withoutATrashTheItemIsRemovedAndKept();
    void whatCannotBeDeletedStaysInTheTree();
    void anAssetImportedTwiceIsNumbered();
    void assetsWithoutExtensionEndInAFullStop();
    void importingLeavesTheOriginalAndMakesTheFolder();
    void linksToAssetsAreEscaped_data();
    void linksToAssetsAreEscaped();
    void aLinkIsImportedAsTheFileItLeadsTo();
    void whatCannotBeImportedGivesNoLink();

private:
    /// The state with a bucket of these notes open.
    void open(std::initializer_list<std::pair<const char*, const char*>> entries);
    void select(const QString& path) { m_state->setSelectedFile(m_bucket->file(path)); }
    [[nodiscard]] QStringList treeNames() const;
    [[nodiscard]] QByteArrayList recoveredTexts() const;

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<AppState> m_state;
};

void AppStateFilesTests::init()
{
    m_state.reset();
    m_services = std::make_unique<FakeServices>();
    m_state = std::make_unique<AppState>(m_services->services());
}

void AppStateFilesTests::open(std::initializer_list<std::pair<const char*, const char*>> entries)
{
    m_bucket = std::make_unique<Bucket>(entries);
    m_state->addVault(m_bucket->root());
}

QStringList AppStateFilesTests::treeNames() const
{
    QStringList names;
    for (const FileNode& node : m_state->fileTree())
        names.append(node.url.lastPathComponent());
    return names;
}

QByteArrayList AppStateFilesTests::recoveredTexts() const
{
    QByteArrayList texts;
    const QDir folder(m_services->recovered.directory().path());
    for (const QString& name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            texts.append(file.readAll());
    }
    return texts;
}

void AppStateFilesTests::aNewNoteIsEmptySelectedAndTakesTheFocus()
{
    open({{"A.md", "text"}});
    select(u"A.md"_s);

    m_state->newNote();

    const FileURL note = m_bucket->file(u"Ny not.md"_s);
    QVERIFY(m_bucket->exists(u"Ny not.md"_s));
    QCOMPARE(m_bucket->read(u"Ny not.md"_s), "");
    QCOMPARE(m_state->selectedFile(), note);
    QCOMPARE(m_state->pendingFocusFile(), note);
    QCOMPARE(treeNames(), QStringList({u"A.md"_s, u"Ny not.md"_s}));
    QCOMPARE(m_state->history().entries(), (std::vector{m_bucket->file(u"A.md"_s), note}));
    QCOMPARE(m_state->loadUIStates()[m_bucket->root().path()].selectedFilePath, note.path());
}

void AppStateFilesTests::newNotesTakeTheFirstFreeNumber_data()
{
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QString>("made");
    QTest::newRow("none") << QStringList() << u"Ny not.md"_s;
    QTest::newRow("gap") << QStringList({u"Ny not.md"_s, u"Ny not 3.md"_s}) << u"Ny not 2.md"_s;
    QTest::newRow("row") << QStringList({u"Ny not.md"_s, u"Ny not 2.md"_s}) << u"Ny not 3.md"_s;
    QTest::newRow("bare name free") << QStringList({u"Ny not 2.md"_s}) << u"Ny not.md"_s;
}

void AppStateFilesTests::newNotesTakeTheFirstFreeNumber()
{
    QFETCH(QStringList, present);
    QFETCH(QString, made);
    open({});
    for (const QString& name : present)
        m_bucket->write(name, "kvar");

    m_state->newNote();

    QCOMPARE(m_state->selectedFile(), m_bucket->file(made));
    QCOMPARE(m_bucket->read(made), "");
    for (const QString& name : present)
        QCOMPARE(m_bucket->read(name), "kvar");
}

void AppStateFilesTests::aFolderBlocksTheNameOfANote()
{
    open({{"Ny not.md/", ""}});

    m_state->newNote();

    QCOMPARE(m_state->selectedFile(), m_bucket->file(u"Ny not 2.md"_s));
}

void AppStateFilesTests::aDanglingLinkBlocksTheNameOfANote()
{
    open({});
    QCOMPARE(::symlink("saknas.md", m_bucket->file(u"Ny not.md"_s).bytes().constData()), 0);

    m_state->newNote();

    QCOMPARE(m_state->selectedFile(), m_bucket->file(u"Ny not 2.md"_s));
    QVERIFY(!m_bucket->exists(u"saknas.md"_s));
}

void AppStateFilesTests::newNotesGoIntoTheActiveDirectory()
{
    open({{"A/Plan.md", ""}, {"B/", ""}, {"C/", ""}});

    select(u"A/Plan.md"_s);
    m_state->newNote();
    m_state->setSelectedFolder(m_bucket->folder(u"B"_s));
    m_state->newNote();
    m_state->newNote(m_bucket->folder(u"C"_s));

    for (const QString& folder : {u"A"_s, u"B"_s, u"C"_s})
        QVERIFY(m_bucket->exists(folder + u"/Ny not.md"_s));
}

void AppStateFilesTests::withoutABucketThereIsNoNewNote()
{
    m_state->newNote();

    QCOMPARE(m_state->selectedFile(), std::nullopt);
    QCOMPARE(m_state->pendingFocusFile(), std::nullopt);
}

void AppStateFilesTests::aNewNoteThatCannotBeWrittenIsSelectedAllTheSame()
{
    open({});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"newNote error: .*saknas"_s));

    m_state->newNote(m_bucket->folder(u"saknas"_s));

    QCOMPARE(m_state->selectedFile(), m_bucket->file(u"saknas/Ny not.md"_s));
    QVERIFY(!m_bucket->exists(u"saknas"_s));
}

void AppStateFilesTests::aNamedNoteHoldsItsNameAsHeading_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("name") << u"Idé"_s << u"mapp/Idé.md"_s << "# Idé\n"_ba;
    QTest::newRow("extension") << u"Idé.md"_s << u"mapp/Idé.md"_s << "# Idé\n"_ba;
    QTest::newRow("upper-case extension") << u"Idé.MD"_s << u"mapp/Idé.MD.md"_s << "# Idé.MD\n"_ba;
    QTest::newRow("other extension") << u"lista.txt"_s << u"mapp/lista.txt.md"_s << "# lista.txt\n"_ba;
    QTest::newRow("folder") << u"Möten/Plan"_s << u"mapp/Möten/Plan.md"_s << "# Plan\n"_ba;
    QTest::newRow("missing folders") << u"a/b/c/Plan"_s << u"mapp/a/b/c/Plan.md"_s << "# Plan\n"_ba;
    QTest::newRow("folder above") << u"../Plan"_s << u"Plan.md"_s << "# Plan\n"_ba;
}

void AppStateFilesTests::aNamedNoteHoldsItsNameAsHeading()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    QFETCH(QByteArray, text);
    open({{"mapp/", ""}});

    m_state->createNote(name, m_bucket->folder(u"mapp"_s));

    QCOMPARE(m_bucket->read(file), text);
    QCOMPARE(m_state->selectedFile(), m_bucket->file(file));
    QVERIFY(m_state->fileTree() == buildTree(m_bucket->root()));
}

void AppStateFilesTests::aNamedNoteIsSelectedWithoutFocus()
{
    open({{"A.md", ""}});
    select(u"A.md"_s);

    m_state->createNote(u"Idé"_s, m_bucket->root());

    QCOMPARE(treeNames(), QStringList({u"A.md"_s, u"Idé.md"_s}));
    QCOMPARE(m_state->history().index(), 1);
    QCOMPARE(m_state->pendingFocusFile(), std::nullopt);
}

void AppStateFilesTests::aNamedNoteReplacesAFileAndKeepsItsText()
{
    open({{"Idé.md", "lång text"}, {"Tom.md", ""}});

    m_state->createNote(u"Idé"_s, m_bucket->root());
    m_state->createNote(u"Tom"_s, m_bucket->root());
    m_state->createNote(u"Tom"_s, m_bucket->root());

    QCOMPARE(m_bucket->read(u"Idé.md"_s), "# Idé\n");
    QCOMPARE(m_bucket->read(u"Tom.md"_s), "# Tom\n");
    QCOMPARE(recoveredTexts(), QByteArrayList({"lång text"}));
}

void AppStateFilesTests::aNamedNoteThatCouldNotKeepATextLeavesIt()
{
    open({{"Idé.md", "lång text"}, {"Mapp.md/A.md", "a"}});
    QFile inTheWay(m_services->recovered.directory().path());
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));

    m_state->createNote(u"Idé"_s, m_bucket->root());
    m_state->createNote(u"Mapp"_s, m_bucket->root());

    QCOMPARE(m_bucket->read(u"Idé.md"_s), "lång text");
    QCOMPARE(m_bucket->read(u"Mapp.md/A.md"_s), "a");
}

void AppStateFilesTests::aNameWithAZeroByteMakesNothing()
{
    open({});

    m_state->createNote(u"a"_s + QChar(u'\0') + u"b/Plan"_s, m_bucket->root());

    QCOMPARE(m_bucket->names(), QStringList());
}

void AppStateFilesTests::newFoldersTakeTheFirstFreeNumber()
{
    open({{"Ny mapp/", ""}, {"Ny mapp 3/", ""}});

    m_state->newFolder(m_bucket->root());
    m_state->newFolder(m_bucket->root());
    m_state->newFolder(m_bucket->folder(u"saknad/inre"_s));

    QVERIFY(QFileInfo(m_bucket->file(u"Ny mapp 2"_s).path()).isDir());
    QVERIFY(QFileInfo(m_bucket->file(u"Ny mapp 4"_s).path()).isDir());
    QVERIFY(QFileInfo(m_bucket->file(u"saknad/inre/Ny mapp"_s).path()).isDir());
    QCOMPARE(treeNames(),
             QStringList({u"Ny mapp"_s, u"Ny mapp 2"_s, u"Ny mapp 3"_s, u"Ny mapp 4"_s, u"saknad"_s}));
    QVERIFY(m_state->fileTree() == buildTree(m_bucket->root()));
}

void AppStateFilesTests::aNewFolderIsNotSelected()
{
    open({{"A.md", ""}});
    select(u"A.md"_s);

    m_state->newFolder(m_bucket->root());

    QCOMPARE(m_state->selectedFile(), m_bucket->file(u"A.md"_s));
    QCOMPARE(m_state->selectedFolder(), std::nullopt);
}

void AppStateFilesTests::aFolderThatCannotBeMadeIsLogged()
{
    open({{"A.md", ""}});
    const QSignalSpy tree(m_state.get(), &AppState::fileTreeChanged);
    m_bucket->write(u"B.md"_s, {});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^newFolder error: ."_s));

    m_state->newFolder(m_bucket->folder(u"A.md"_s));

    QCOMPARE(tree.count(), 0);
}

void AppStateFilesTests::deletingTheSelectedNoteEmptiesTheSelection()
{
    open({{"A.md", "text"}, {"B.md", ""}});
    select(u"A.md"_s);

    m_state->deleteFile(*m_state->selectedFile());

    QCOMPARE(m_state->selectedFile(), std::nullopt);
    QCOMPARE(treeNames(), QStringList(u"B.md"_s));
    QVERIFY(QFile::exists(m_services->trash.folder.appending(u"A.md"_s).path()));
    QCOMPARE(m_state->loadUIStates()[m_bucket->root().path()].selectedFilePath, std::nullopt);
}

void AppStateFilesTests::deletingTheFolderOfTheSelectedNoteDoesNot()
{
    open({{"mapp/A.md", "text"}});
    select(u"mapp/A.md"_s);

    m_state->deleteFile(m_bucket->folder(u"mapp"_s));

    QCOMPARE(m_state->selectedFile(), m_bucket->file(u"mapp/A.md"_s));
    QCOMPARE(treeNames(), QStringList());
}

void AppStateFilesTests::aDeletedFolderIsNoLongerSelected()
{
    open({{"mapp/inre/", ""}, {"annan/", ""}});
    m_state->setSelectedFolder(m_bucket->folder(u"mapp/inre"_s));

    m_state->deleteFile(m_bucket->folder(u"annan"_s));
    QCOMPARE(m_state->selectedFolder(), m_bucket->folder(u"mapp/inre"_s));
    m_state->deleteFile(m_bucket->folder(u"mapp"_s));

    QCOMPARE(m_state->selectedFolder(), std::nullopt);
    m_state->newNote();
    QVERIFY(m_bucket->exists(u"Ny not.md"_s));
}

void AppStateFilesTests::sessionsHearOfADeletionBeforeAndAfter()
{
    open({{"A.md", "text"}});
    QStringList heard;
    connect(m_state.get(), &AppState::aboutToMove, this, [&](const FileURL& item) {
        m_bucket->write(u"A.md"_s, "sista ordet");
        heard.append(u"before "_s + item.lastPathComponent());
    });
    connect(m_state.get(), &AppState::didDelete, this, [&](const FileURL& item) {
        heard.append((m_bucket->exists(u"A.md"_s) ? u"there "_s : u"gone "_s) + item.lastPathComponent());
    });

    m_state->deleteFile(m_bucket->file(u"A.md"_s));

    QCOMPARE(heard, QStringList({u"before A.md"_s, u"gone A.md"_s}));
    QFile trashed(m_services->trash.folder.appending(u"A.md"_s).path());
    QVERIFY(trashed.open(QIODevice::ReadOnly));
    QCOMPARE(trashed.readAll(), "sista ordet");
}

void AppStateFilesTests::withoutATrashTheItemIsRemovedAndKept()
{
    open({{"A.md", "text"}});
    m_services->trash.isWorking = false;

    m_state->deleteFile(m_bucket->file(u"A.md"_s));

    QVERIFY(!m_bucket->exists(u"A.md"_s));
    QCOMPARE(treeNames(), QStringList());
    QCOMPARE(recoveredTexts(), QByteArrayList({"text"}));
}

void AppStateFilesTests::whatCannotBeDeletedStaysInTheTree()
{
    open({{"A.md", "text"}});
    select(u"A.md"_s);
    m_services->trash.isWorking = false;
    QFile inTheWay(m_services->recovered.directory().path());
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    const QSignalSpy deleted(m_state.get(), &AppState::didDelete);

    m_state->deleteFile(m_bucket->file(u"A.md"_s));

    QCOMPARE(m_bucket->read(u"A.md"_s), "text");
    QCOMPARE(treeNames(), QStringList(u"A.md"_s));
    QCOMPARE(m_state->selectedFile(), std::nullopt);
    QCOMPARE(deleted.count(), 0);
}

void AppStateFilesTests::anAssetImportedTwiceIsNumbered()
{
    open({});
    const Bucket outside({{"bild 1.png", "bytes"}});

    QCOMPARE(m_state->importAsset(outside.file(u"bild 1.png"_s)), u"assets/bild%201.png"_s);
    QCOMPARE(m_state->importAsset(outside.file(u"bild 1.png"_s)), u"assets/bild%201-2.png"_s);

    QCOMPARE(m_bucket->names(u"assets"_s), QStringList({u"bild 1-2.png"_s, u"bild 1.png"_s}));
}

void AppStateFilesTests::assetsWithoutExtensionEndInAFullStop()
{
    open({{"assets/scan", "annan"}});
    const Bucket outside({{"scan", "bytes"}});

    QCOMPARE(m_state->importAsset(outside.file(u"scan"_s)), u"assets/scan-2."_s);

    QCOMPARE(m_bucket->read(u"assets/scan"_s), "annan");
    QCOMPARE(m_bucket->read(u"assets/scan-2."_s), "bytes");
}

void AppStateFilesTests::importingLeavesTheOriginalAndMakesTheFolder()
{
    open({});
    const Bucket outside({{"bild.png", "bytes"}});

    QVERIFY(m_state->importAsset(outside.file(u"bild.png"_s)).has_value());

    QCOMPARE(outside.read(u"bild.png"_s), "bytes");
    QCOMPARE(m_bucket->read(u"assets/bild.png"_s), "bytes");
    QCOMPARE(treeNames(), QStringList(u"assets"_s));
    QCOMPARE(m_state->fileTree()[0].children->size(), 1);
}

void AppStateFilesTests::linksToAssetsAreEscaped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("link");
    QTest::newRow("blank") << u"a b.png"_s << u"assets/a%20b.png"_s;
    QTest::newRow("Swedish") << u"å.png"_s << u"assets/%C3%A5.png"_s;
    QTest::newRow("marks that stay") << u"a-b_c.d~e!f(1)'&,@=+$:;*.png"_s
                                     << u"assets/a-b_c.d~e!f(1)'&,@=+$:;*.png"_s;
    QTest::newRow("marks that mean something")
        << u"100% #1?[x].png"_s << u"assets/100%25%20%231%3F%5Bx%5D.png"_s;
}

void AppStateFilesTests::linksToAssetsAreEscaped()
{
    QFETCH(QString, name);
    QFETCH(QString, link);
    open({});
    const Bucket outside;
    outside.write(name, "bytes");

    QCOMPARE(m_state->importAsset(outside.file(name)), link);
}

void AppStateFilesTests::aLinkIsImportedAsTheFileItLeadsTo()
{
    open({});
    const Bucket outside({{"mapp/riktig.png", "bytes"}});
    QVERIFY(QFile::link(u"mapp/riktig.png"_s, outside.file(u"bild.png"_s).path()));

    QCOMPARE(m_state->importAsset(outside.file(u"bild.png"_s)), u"assets/bild.png"_s);

    QCOMPARE(m_bucket->read(u"assets/bild.png"_s), "bytes");
    QVERIFY(!QFileInfo(m_bucket->file(u"assets/bild.png"_s).path()).isSymLink());
}

void AppStateFilesTests::whatCannotBeImportedGivesNoLink()
{
    const Bucket outside({{"bild.png", "bytes"}});
    QCOMPARE(m_state->importAsset(outside.file(u"bild.png"_s)), std::nullopt);

    open({});
    QCOMPARE(m_state->importAsset(outside.file(u"saknas.png"_s)), std::nullopt);

    open({{"assets", "en fil"}});
    QCOMPARE(m_state->importAsset(outside.file(u"bild.png"_s)), std::nullopt);
    QCOMPARE(m_bucket->read(u"assets"_s), "en fil");
}

QTEST_GUILESS_MAIN(AppStateFilesTests)
#include "AppStateFilesTests.moc"
