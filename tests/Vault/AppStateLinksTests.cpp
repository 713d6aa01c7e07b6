#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

/// Following links, opening names and revealing files. The notes lie like this:
///
///   Arbete/Index.md  Arbete/Projekt X/Plan.md  Arbete/Möte.md
///   Bok/assets/bild.png  Bok/Kapitel/Ett.md
///   Projekt X/Plan.md  Projekt X/Mål.md  assets/bild.png  Idé.md
class AppStateLinksTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void linksSelectWhatTheyMean_data();
    void linksSelectWhatTheyMean();
    void ordinaryLinksToNothingChangeNothing_data() { addMissing(); }
    void ordinaryLinksToNothingChangeNothing();
    void wikiLinksToNothingMakeTheNote_data() { addMissing(); }
    void wikiLinksToNothingMakeTheNote();
    void emptyLinksDoNothing_data();
    void emptyLinksDoNothing();
    void aLinkWithoutANoteIsRelativeToTheBucket();
    void withoutABucketNothingHappens();
    void followedLinksAreRecordedAndKept();
    void aNameIsOpenedWhereverItLies();
    void aNameThatIsMissingIsMadeInTheRoot();
    void aNoteThatArrivedMeanwhileIsOpenedNotReplaced();
    void aHiddenFileOfTheNameIsKept();
    void aLinkedPdfIsSelected();
    void aLinkedSpreadsheetOpensInItsOwnProgram();
    void aLinkedFolderOpensInItsOwnProgram();
    void aLinkedFileMayLeaveOutTheExtension();
    void aLinkedFileThatIsMissingDoesNothing();
    void aRevealedFileIsSelectedAsTheTreeHoldsIt();
    void aRevealedFileThatIsNewIsReadIntoTheTree();
    void filesOutsideTheBucketAreNotRevealed();

private:
    static void addMissing();
    [[nodiscard]] FileURL file(const QString& path) const { return m_bucket->file(path); }
    [[nodiscard]] FileURL index() const { return file(u"Arbete/Index.md"_s); }

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<AppState> m_state;
};

void AppStateLinksTests::init()
{
    m_state.reset();
    m_services = std::make_unique<FakeServices>();
    m_bucket = std::make_unique<Bucket>(
        std::initializer_list<std::pair<const char*, const char*>>{{"Arbete/Index.md", ""},
                                                                   {"Arbete/Projekt X/Plan.md", ""},
                                                                   {"Arbete/Möte.md", ""},
                                                                   {"Bok/assets/bild.png", ""},
                                                                   {"Bok/Kapitel/Ett.md", ""},
                                                                   {"Projekt X/Plan.md", ""},
                                                                   {"Projekt X/Mål.md", ""},
                                                                   {"assets/bild.png", ""},
                                                                   {"Idé.md", ""}});
    m_state = std::make_unique<AppState>(m_services->services());
    m_state->addVault(m_bucket->root());
    m_state->setSelectedFile(index());
}

void AppStateLinksTests::linksSelectWhatTheyMean_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("selected");
    const auto row = [](const char* name, const QString& text, const QString& note, const QString& selected) {
        QTest::newRow(name) << text << note << selected;
    };
    const QString work = u"Arbete/Index.md"_s;
    const QString chapter = u"Bok/Kapitel/Ett.md"_s;
    row("beside the note first", u"Projekt%20X/Plan"_s, work, u"Arbete/Projekt X/Plan.md"_s);
    row("then from the root", u"Projekt%20X/Mål"_s, work, u"Projekt X/Mål.md"_s);
    row("from a note elsewhere", u"Projekt X/Plan"_s, chapter, u"Projekt X/Plan.md"_s);
    row("with extension", u"Projekt X/Plan.md"_s, work, u"Arbete/Projekt X/Plan.md"_s);
    row("this folder", u"./Möte.md"_s, work, u"Arbete/Möte.md"_s);
    row("folder above", u"../Idé.md"_s, work, u"Idé.md"_s);
    row("relative with heading", u"../Idé.md#Början"_s, work, u"Idé.md"_s);
    row("picture", u"../assets/bild.png"_s, work, u"assets/bild.png"_s);
    row("name with heading", u"Plan#Mål"_s, chapter, u"Arbete/Projekt X/Plan.md"_s);
    row("only a heading is a name", u"#Möte"_s, chapter, u"Arbete/Möte.md"_s);
    row("name in tree order", u"Plan.md"_s, u"Projekt X/Mål.md"_s, u"Arbete/Projekt X/Plan.md"_s);
    row("name with upper-case extension", u"Plan.MD"_s, chapter, u"Arbete/Projekt X/Plan.md"_s);
    row("name in other case", u"idé"_s, work, u"Idé.md"_s);
    row("name of a picture", u"bild"_s, work, u"assets/bild.png"_s);
    row("nearest bundle", u"/assets/bild.png"_s, chapter, u"Bok/assets/bild.png"_s);
    row("bundle is the bucket", u"/assets/bild.png"_s, work, u"assets/bild.png"_s);
    row("absolute without extension", u"/Idé"_s, chapter, u"Idé.md"_s);
    row("all leading slashes go", u"//Idé"_s, chapter, u"Idé.md"_s);
    row("absolute path into a folder", u"///Projekt%20X/Mål"_s, chapter, u"Projekt X/Mål.md"_s);
}

void AppStateLinksTests::linksSelectWhatTheyMean()
{
    QFETCH(QString, text);
    QFETCH(QString, note);
    QFETCH(QString, selected);

    for (const bool allowCreate : {false, true}) {
        m_state->setSelectedFile(std::nullopt);
        m_state->openLink(text, file(note), allowCreate);
        QCOMPARE(m_state->selectedFile(), file(selected));
    }

    QCOMPARE(m_bucket->names(),
             QStringList({u"Arbete"_s, u"Bok"_s, u"Idé.md"_s, u"Projekt X"_s, u"assets"_s}));
}

void AppStateLinksTests::addMissing()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("made");
    QTest::addColumn<QByteArray>("holding");
    QTest::newRow("name") << u"Saknas"_s << u"Saknas.md"_s << "# Saknas\n"_ba;
    QTest::newRow("name with extension") << u"Saknas.md"_s << u"Saknas.md"_s << "# Saknas\n"_ba;
    QTest::newRow("name with heading") << u"Saknas#Del"_s << u"Saknas.md"_s << "# Saknas\n"_ba;
    QTest::newRow("relative path") << u"Projekt%20Y/Plan"_s << u"Projekt Y/Plan.md"_s << "# Plan\n"_ba;
    QTest::newRow("absolute path") << u"/Nytt/Plan"_s << u"Nytt/Plan.md"_s << "# Plan\n"_ba;
    QTest::newRow("absolute name") << u"//Saknas"_s << u"Saknas.md"_s << "# Saknas\n"_ba;
}

void AppStateLinksTests::ordinaryLinksToNothingChangeNothing()
{
    QFETCH(QString, text);
    const QSignalSpy selected(m_state.get(), &AppState::selectedFileChanged);

    m_state->openLink(text, index(), false);

    QCOMPARE(selected.count(), 0);
    QCOMPARE(m_bucket->names().size(), 5);
}

void AppStateLinksTests::wikiLinksToNothingMakeTheNote()
{
    QFETCH(QString, text);
    QFETCH(QString, made);
    QFETCH(QByteArray, holding);

    m_state->openLink(text, index(), true);

    QCOMPARE(m_bucket->read(made), holding);
    QCOMPARE(m_state->selectedFile(), file(made));
    QCOMPARE(m_bucket->names(u"Arbete"_s), QStringList({u"Index.md"_s, u"Möte.md"_s, u"Projekt X"_s}));
}

void AppStateLinksTests::emptyLinksDoNothing_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "  ", "#", "/", "///", ".md", "%20"})
        QTest::newRow(qPrintable(u"\"%1\""_s.arg(QString::fromLatin1(text)))) << QString::fromLatin1(text);
}

void AppStateLinksTests::emptyLinksDoNothing()
{
    QFETCH(QString, text);
    const QSignalSpy selected(m_state.get(), &AppState::selectedFileChanged);

    m_state->openLink(text, index(), true);

    QCOMPARE(selected.count(), 0);
    QCOMPARE(m_bucket->names().size(), 5);
}

void AppStateLinksTests::aLinkWithoutANoteIsRelativeToTheBucket()
{
    m_state->openLink(u"Projekt X/Plan"_s, std::nullopt, false);
    QCOMPARE(m_state->selectedFile(), file(u"Projekt X/Plan.md"_s));

    m_state->openLink(u"/assets/bild.png"_s, std::nullopt, false);
    QCOMPARE(m_state->selectedFile(), file(u"assets/bild.png"_s));
}

void AppStateLinksTests::withoutABucketNothingHappens()
{
    FakeServices services;
    AppState state(services.services());

    state.openLink(u"Plan"_s, index(), true);
    state.openNote(u"Plan"_s);
    state.revealFile(index());

    QCOMPARE(state.selectedFile(), std::nullopt);
}

void AppStateLinksTests::followedLinksAreRecordedAndKept()
{
    m_state->openLink(u"Möte"_s, index(), false);

    QCOMPARE(m_state->history().entries(), (std::vector{index(), file(u"Arbete/Möte.md"_s)}));
    QCOMPARE(m_state->loadUIStates()[m_bucket->root().path()].selectedFilePath,
             file(u"Arbete/Möte.md"_s).path());
}

void AppStateLinksTests::aNameIsOpenedWhereverItLies()
{
    m_state->openNote(u" möte\t"_s);

    QCOMPARE(m_state->selectedFile(), file(u"Arbete/Möte.md"_s));
}

void AppStateLinksTests::aNameThatIsMissingIsMadeInTheRoot()
{
    m_state->openNote(u" Ny tanke "_s);

    QCOMPARE(m_bucket->read(u"Ny tanke.md"_s), "# Ny tanke\n");
    QCOMPARE(m_state->selectedFile(), file(u"Ny tanke.md"_s));
    QCOMPARE(m_state->fileTree().back().url, file(u"Ny tanke.md"_s));
    QCOMPARE(m_state->pendingFocusFile(), std::nullopt);
}

void AppStateLinksTests::aNoteThatArrivedMeanwhileIsOpenedNotReplaced()
{
    m_bucket->write(u"Resa.md"_s, "lång text från en annan dator");

    m_state->openLink(u"Resa"_s, index(), true);

    QCOMPARE(m_bucket->read(u"Resa.md"_s), "lång text från en annan dator");
    QCOMPARE(m_state->selectedFile(), file(u"Resa.md"_s));
}

void AppStateLinksTests::aHiddenFileOfTheNameIsKept()
{
    m_bucket->write(u".dold.md"_s, "dold text");

    m_state->openNote(u".dold"_s);

    QCOMPARE(m_bucket->read(u".dold.md"_s), "# .dold\n");
    const QDir recovered(m_services->recovered.directory().path());
    QCOMPARE(recovered.entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void AppStateLinksTests::aLinkedPdfIsSelected()
{
    m_bucket->write(u"Rapport.pdf"_s, "pdf");

    m_state->openLinkedFile(file(u"Arbete/../Rapport.pdf"_s));

    QCOMPARE(m_state->selectedFile(), file(u"Rapport.pdf"_s));
    QVERIFY(m_services->workspace.files.isEmpty());
}

void AppStateLinksTests::aLinkedSpreadsheetOpensInItsOwnProgram()
{
    for (const QString& name : {u"Budget.xlsx"_s, u"Budget.XLS"_s, u"Budget.ods"_s}) {
        m_bucket->write(name, "blad");
        m_state->openLinkedFile(file(name));
        QCOMPARE(m_services->workspace.files.last(), file(name));
    }

    QCOMPARE(m_state->selectedFile(), index());
}

void AppStateLinksTests::aLinkedFolderOpensInItsOwnProgram()
{
    m_state->openLinkedFile(file(u"Bok"_s));

    QCOMPARE(m_services->workspace.files, QList{file(u"Bok"_s)});
    QCOMPARE(m_state->selectedFile(), index());
}

void AppStateLinksTests::aLinkedFileMayLeaveOutTheExtension()
{
    m_state->openLinkedFile(file(u"Idé"_s));
    QCOMPARE(m_state->selectedFile(), file(u"Idé.md"_s));

    m_bucket->write(u"Lista.txt.md"_s, {});
    m_state->openLinkedFile(file(u"Lista.txt"_s));
    QCOMPARE(m_state->selectedFile(), file(u"Idé.md"_s));
}

void AppStateLinksTests::aLinkedFileThatIsMissingDoesNothing()
{
    m_state->openLinkedFile(file(u"Saknas"_s));
    m_state->openLinkedFile(file(u"Saknas.pdf"_s));

    QCOMPARE(m_state->selectedFile(), index());
    QVERIFY(m_services->workspace.files.isEmpty());
    QCOMPARE(m_bucket->names().size(), 5);
}

void AppStateLinksTests::aRevealedFileIsSelectedAsTheTreeHoldsIt()
{
    m_state->revealFile(FileURL::directory(file(u"Bok/../Idé.md"_s).path()));

    QCOMPARE(m_state->selectedFile(), file(u"Idé.md"_s));
}

void AppStateLinksTests::aRevealedFileThatIsNewIsReadIntoTheTree()
{
    m_bucket->write(u"Ny.md"_s, {});

    m_state->revealFile(file(u"Ny.md"_s));

    QCOMPARE(m_state->selectedFile(), file(u"Ny.md"_s));
    QCOMPARE(m_state->fileTree().back().url, file(u"Ny.md"_s));
}

void AppStateLinksTests::filesOutsideTheBucketAreNotRevealed()
{
    const QString sibling = m_bucket->root().path() + u"2"_s;
    QVERIFY(QDir().mkdir(sibling));
    const FileURL note = FileURL::file(sibling + u"/A.md"_s);
    QFile file(note.path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    const Bucket other({{"B.md", ""}});

    m_state->revealFile(note);
    m_state->revealFile(other.file(u"B.md"_s));
    m_state->revealFile(m_bucket->root());
    m_state->revealFile(m_bucket->file(u"Saknas.md"_s));

    QCOMPARE(m_state->selectedFile(), index());
    QVERIFY(QDir(sibling).removeRecursively());
}

QTEST_GUILESS_MAIN(AppStateLinksTests)
#include "AppStateLinksTests.moc"
