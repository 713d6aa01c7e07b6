#include "Platform/FilePanels.h"

#include "Fakes/Bucket.h"
#include "Platform/VaultLocationAccessory.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QTreeView>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// Does `work` with the dialog that will be open next.
void inNextDialog(const std::function<void(QFileDialog&)>& work)
{
    QTimer::singleShot(0, qApp, [work] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            qFatal("no file dialog is open");
        work(*dialog);
    });
}

/// Lets a bucket be the user's home.
class Home final
{
public:
    explicit Home(const Bucket& home) { qputenv("HOME", home.root().bytes()); }
    ~Home() { qputenv("HOME", m_realHome); }
    Q_DISABLE_COPY_MOVE(Home)

private:
    const QByteArray m_realHome = qgetenv("HOME");
};

} // namespace

class FilePanelsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void folderPanelSaysWhatIsAsked();
    void cloudFoldersAreOfferedWhereThereAreAny_data();
    void cloudFoldersAreOfferedWhereThereAreAny();
    void theFirstLookIsAtHome();
    void namesHaveTheRoomThatDatesLeave();
    void chosenFolderIsGiven();
    void cancelledPanelGivesNothing();
    void filePanelOffersFilesOfItsKind();
    void picturesAreLookedForAmongTheUsersPictures();
    void chosenFileIsGiven();
};

void FilePanelsTests::folderPanelSaysWhatIsAsked()
{
    QStringList texts;
    bool isForFolders = false;
    inNextDialog([&](QFileDialog& dialog) {
        texts = {dialog.windowTitle(), dialog.labelText(QFileDialog::Accept),
                 dialog.labelText(QFileDialog::Reject)};
        isForFolders =
            dialog.fileMode() == QFileDialog::Directory && dialog.testOption(QFileDialog::ShowDirsOnly);
        dialog.reject();
    });

    QVERIFY(!FilePanels().chooseFolder(u"Välj bucket"_s, u"Välj en mapp."_s));

    QCOMPARE(texts, (QStringList{u"Välj en mapp."_s, u"Välj bucket"_s, u"Avbryt"_s}));
    QVERIFY(isForFolders);
}

void FilePanelsTests::cloudFoldersAreOfferedWhereThereAreAny_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("isOffered");

    QTest::newRow("a cloud folder") << u"Dropbox/"_s << true;
    QTest::newRow("another folder") << u"Anteckningar/"_s << false;
}

void FilePanelsTests::cloudFoldersAreOfferedWhereThereAreAny()
{
    QFETCH(const QString, folder);
    QFETCH(const bool, isOffered);
    const Bucket home;
    home.write(folder, "");
    const Home inHome(home);
    bool isShown = false;
    inNextDialog([&](QFileDialog& dialog) {
        const auto* accessory = dialog.findChild<VaultLocationAccessory*>();
        isShown = accessory && accessory->isVisible();
        dialog.reject();
    });

    QVERIFY(!FilePanels().chooseFolder(u"Välj bucket"_s, u"Välj en mapp."_s));

    QCOMPARE(isShown, isOffered);
}

void FilePanelsTests::chosenFolderIsGiven()
{
    const Bucket place({{"Mapp med å/", ""}});
    inNextDialog([&](QFileDialog& dialog) {
        dialog.setDirectory(place.root().path());
        dialog.selectFile(place.folder(u"Mapp med å"_s).path());
        static_cast<QDialog&>(dialog).accept();
    });

    QCOMPARE(FilePanels().chooseFolder(u"Välj"_s, u"Välj"_s), place.folder(u"Mapp med å"_s));
}

void FilePanelsTests::cancelledPanelGivesNothing()
{
    inNextDialog([&](QFileDialog& dialog) { dialog.reject(); });

    QVERIFY(!FilePanels().chooseFile(u"Välj"_s, u"Välj"_s, {u"*.json"_s}, Panels::Start::lastPlace));
}

void FilePanelsTests::filePanelOffersFilesOfItsKind()
{
    QStringList filters;
    bool isForFiles = false;
    inNextDialog([&](QFileDialog& dialog) {
        filters = dialog.nameFilters();
        isForFiles = dialog.fileMode() == QFileDialog::ExistingFile;
        dialog.reject();
    });

    QVERIFY(!FilePanels().chooseFile(u"Infoga"_s, u"Välj en bild"_s, {u"*.png"_s, u"*.jpg"_s},
                                     Panels::Start::pictures));

    QCOMPARE(filters, QStringList{u"Passande filer (*.png *.PNG *.jpg *.JPG)"_s});
    QVERIFY(isForFiles);
}

void FilePanelsTests::picturesAreLookedForAmongTheUsersPictures()
{
    const Bucket home({{"Pictures/", ""}});
    const Home inHome(home);
    QString place;
    inNextDialog([&place](QFileDialog& dialog) {
        place = dialog.directory().path();
        dialog.reject();
    });

    QVERIFY(!FilePanels().chooseFile(u"Infoga"_s, u"Välj en bild"_s, {u"*.png"_s}, Panels::Start::pictures));

    QCOMPARE(place, home.folder(u"Pictures"_s).path());
}

void FilePanelsTests::theFirstLookIsAtHome()
{
    const Bucket home;
    const Home inHome(home);
    QFileDialog().setDirectory(QDir::current());
    QString place;
    inNextDialog([&place](QFileDialog& dialog) {
        place = dialog.directory().path();
        dialog.reject();
    });

    QVERIFY(!FilePanels().chooseFolder(u"Välj bucket"_s, u"Välj en mapp."_s));

    QCOMPARE(place, home.root().path());
}

void FilePanelsTests::namesHaveTheRoomThatDatesLeave()
{
    const Bucket place({{"A.md", ""}});
    bool isFilled = false;
    inNextDialog([&](QFileDialog& dialog) {
        dialog.setDirectory(place.root().path());
        const auto* files = dialog.findChild<QTreeView*>(u"treeView"_s);
        const QHeaderView* columns = files->header();
        const int last = columns->count() - 1;
        isFilled = QTest::qWaitFor([&] {
            const QString date = files->model()->index(0, last, files->rootIndex()).data().toString();
            return !date.isEmpty() && columns->length() == files->viewport()->width() &&
                   columns->sectionSize(last) > files->fontMetrics().horizontalAdvance(date);
        });
        dialog.reject();
    });

    QVERIFY(!FilePanels().chooseFile(u"Infoga"_s, u"Välj en fil"_s, {u"*.md"_s}, Panels::Start::lastPlace));

    QVERIFY(isFilled);
}

void FilePanelsTests::chosenFileIsGiven()
{
    const Bucket place({{"tema.json", "{}"}});
    inNextDialog([&](QFileDialog& dialog) {
        dialog.setDirectory(place.root().path());
        dialog.selectFile(place.file(u"tema.json"_s).path());
        static_cast<QDialog&>(dialog).accept();
    });

    QCOMPARE(FilePanels().chooseFile(u"Importera"_s, u"Välj"_s, {u"*.json"_s}, Panels::Start::lastPlace),
             place.file(u"tema.json"_s));
}

int main(int argc, char* argv[])
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    FilePanelsTests tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "FilePanelsTests.moc"
