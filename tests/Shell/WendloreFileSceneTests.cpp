#include "Shell/WendloreFileScene.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/DetailView.h"
#include "Previews/FileOpenElsewhereView.h"
#include "Shell/WendloreFileWindowView.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Support/Window.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The main window's detail area, and beside it the windows of single files.
class Windows final
{
public:
    Windows()
        : state(services.services())
    {
        state.addVault(bucket.root());
        detail = std::make_unique<DetailView>(state);
        mainPage = services.page;
        mainPage->post(u"ready"_s);
        showAt(*detail, {900, 600});
        makeScene();
    }

    void makeScene()
    {
        scene.reset();
        scene = std::make_unique<WendloreFileScene>(
            state, [this](const FileURL&, const std::function<void()>& then) {
                detail->editor().session().settle(then);
            });
    }
    void select(const QString& path)
    {
        state.setSelectedFile(bucket.file(path));
        services.scheduler.finishBackgroundWork();
    }
    /// Opens the file's window and gives its page, as far as it has one.
    FakeEditorWebView& open(const QString& path)
    {
        OpenFileWindows::shared().requestWindow(bucket.file(path));
        services.page->post(u"ready"_s);
        services.scheduler.finishBackgroundWork();
        return *services.page;
    }
    [[nodiscard]] WendloreFileWindowView& window(std::size_t index = 0) const
    {
        return *scene->windows().at(index);
    }
    [[nodiscard]] bool isPlaceholderShown() const
    {
        const auto* view = detail->findChild<FileOpenElsewhereView*>();
        return view && view->isVisible();
    }
    void fetch() const
    {
        QTest::mouseClick(detail->findChild<FileOpenElsewhereView*>()->findChild<QPushButton*>(),
                          Qt::LeftButton);
    }
    [[nodiscard]] bool hasNoWindows() const
    {
        return QTest::qWaitFor([this] { return scene->windows().empty(); });
    }

    Bucket bucket{{"A.md", "Hej"}, {"B.md", "Två"}, {"Mapp/C.md", "Tre"}, {"Bild.png", "1234"}};
    FakeServices services;
    AppState state;
    std::unique_ptr<DetailView> detail;
    FakeEditorWebView* mainPage = nullptr;
    std::unique_ptr<WendloreFileScene> scene;
};

} // namespace

class WendloreFileSceneTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }
    void cleanup() { QVERIFY(OpenFileWindows::shared().open().empty()); }

    void aNoteWithItsOwnWindowIsEditedOnlyThere()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        QVERIFY(windows.detail->editor().isVisible());

        windows.open(u"A.md"_s);
        QVERIFY(windows.isPlaceholderShown());
        QVERIFY(!windows.detail->editor().isVisible());
        QCOMPARE(windows.window().windowState()->editorController().desiredContent(), u"Hej"_s);

        windows.fetch();
        QVERIFY(windows.hasNoWindows());
        QVERIFY(!windows.isPlaceholderShown());
        QVERIFY(windows.detail->editor().isVisible());
    }

    void theToolbarOpensTheWindowOfTheSelectedFile()
    {
        Windows windows;
        QWidget* button = childNamed(*windows.detail, u"Eget fönster"_s);
        QVERIFY(!button->isVisible());
        windows.select(u"A.md"_s);
        QVERIFY(button->isVisible());
        QCOMPARE(button->toolTip(), u"Öppna filen i ett eget fönster (⌘⌥N)"_s);

        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(windows.scene->windows().size(), std::size_t(1));
        windows.select(u"B.md"_s);
        QApplication::setActiveWindow(windows.detail.get());
        QTest::keyClick(windows.detail.get(), Qt::Key_N, Qt::ControlModifier | Qt::AltModifier);

        QCOMPARE(windows.scene->windows().size(), std::size_t(2));
        QCOMPARE(windows.window(1).fileURL(), windows.bucket.file(u"B.md"_s));
    }

    void aFileOfAnotherBucketKeepsItsBucket()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        const Bucket other({{"D.md", "Fyra"}});
        windows.state.addVault(other.root());
        windows.state.setSelectedFile(other.file(u"D.md"_s));

        windows.open(u"A.md"_s);

        QCOMPARE(windows.window().windowState()->vaultURL(), windows.bucket.root());
        QCOMPARE(windows.services.defaults.string(u"currentVaultPath"_s), other.root().path());
        QCOMPARE(windows.state.loadUIStates().value(other.root().path()).selectedFilePath,
                 other.file(u"D.md"_s).path());
    }

    void theNextStartShowsWhatTheMainWindowShowed()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        windows.state.setSelectedFolder(windows.bucket.folder(u"Mapp"_s));

        windows.open(u"B.md"_s);
        windows.window().windowState()->renameFile(windows.bucket.file(u"B.md"_s), u"Ny"_s);
        QTRY_VERIFY(!OpenFileWindows::shared().isOpen(windows.bucket.file(u"B.md"_s)));

        const VaultUIState stored = windows.state.loadUIStates().value(windows.bucket.root().path());
        QCOMPARE(stored.selectedFilePath, windows.bucket.file(u"A.md"_s).path());
        QCOMPARE(stored.selectedFolderPath, windows.bucket.folder(u"Mapp"_s).path());
    }

    void importedTypographyIsShownInEveryWindow()
    {
        Windows windows;
        windows.open(u"A.md"_s);
        windows.open(u"B.md"_s);
        const QByteArray json = TypographyTheme::standard().toJson()->replace("false", "true");
        const auto theme = TypographyTheme::fromJson(json);
        QVERIFY(theme && *theme != TypographyTheme::standard());

        windows.state.applyTypographyTheme(*theme);

        for (const std::size_t index : {0U, 1U})
            QCOMPARE(windows.window(index).windowState()->typographyTheme(), *theme);
    }

    void thePlaceholderSaysWhichFileIsElsewhere()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        windows.open(u"A.md"_s);

        QStringList texts;
        for (const auto* label : windows.detail->findChild<FileOpenElsewhereView*>()->findChildren<QLabel*>())
            texts.append(label->text());

        QVERIFY(texts.contains(u"Öppen i eget fönster"_s));
        QVERIFY(texts.contains(u"A.md redigeras i ett eget fönster. En fil kan bara ändras på ett ställe i "
                               "taget."_s));
    }

    void aPictureIsShownInOnePlaceToo()
    {
        Windows windows;
        windows.select(u"Bild.png"_s);

        windows.open(u"Bild.png"_s);

        QVERIFY(windows.isPlaceholderShown());
        QCOMPARE(windows.window().editor(), nullptr);
        windows.window().close();
        QVERIFY(windows.hasNoWindows());
        QVERIFY(!windows.isPlaceholderShown());
    }

    void aFileHasOneWindow()
    {
        Windows windows;
        windows.open(u"A.md"_s);
        windows.open(u"B.md"_s);
        QVERIFY(QTest::qWaitForWindowActive(&windows.window(1)));

        OpenFileWindows::shared().requestWindow(windows.bucket.root().appending(u"Mapp/../A.md"_s));

        QCOMPARE(windows.scene->windows().size(), std::size_t(2));
        QCOMPARE(OpenFileWindows::shared().open().size(), std::size_t(2));
        QVERIFY(QTest::qWaitForWindowActive(&windows.window(0)));
    }

    void closingAWindowOfAnotherFileChangesNothingVisible()
    {
        Windows windows;
        windows.select(u"B.md"_s);
        windows.open(u"A.md"_s);
        QVERIFY(windows.detail->editor().isVisible());

        windows.window().close();

        QVERIFY(windows.hasNoWindows());
        QVERIFY(windows.detail->editor().isVisible());
        QCOMPARE(windows.detail->editor().session().fileURL(), windows.bucket.file(u"B.md"_s));
    }

    void whatWasTypedInTheMainWindowIsThereInTheOwnOne()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        windows.mainPage->post(u"changed"_s, u"Hej du"_s);

        windows.open(u"A.md"_s);

        QCOMPARE(windows.bucket.read(u"A.md"_s), QByteArray("Hej du"));
        QCOMPARE(windows.window().windowState()->editorController().desiredContent(), u"Hej du"_s);
    }

    void whatWasTypedInTheWindowIsThereAfterFetchingIt()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        FakeEditorWebView& page = windows.open(u"A.md"_s);
        page.post(u"changed"_s, u"Hej igen"_s);

        windows.fetch();

        QVERIFY(windows.hasNoWindows());
        windows.services.scheduler.finishBackgroundWork();
        QCOMPARE(windows.bucket.read(u"A.md"_s), QByteArray("Hej igen"));
        QCOMPARE(windows.state.editorController().desiredContent(), u"Hej igen"_s);
        QCOMPARE(windows.bucket.names(u"."_s).filter(u"konflikt"_s), QStringList());
    }

    void theLastKeysAreWaitedForBeforeAWindowCloses()
    {
        Windows windows;
        FakeEditorWebView& page = windows.open(u"A.md"_s);
        page.answersDrains = false;

        windows.window().close();
        QCOMPARE(windows.scene->windows().size(), std::size_t(1));
        page.post(u"changed"_s, u"Hej sent"_s);
        page.drains.front()();

        QVERIFY(windows.hasNoWindows());
        QCOMPARE(windows.bucket.read(u"A.md"_s), QByteArray("Hej sent"));
    }

    void aWindowFollowsItsFile()
    {
        Windows windows;
        windows.select(u"Mapp/C.md"_s);
        FakeEditorWebView& page = windows.open(u"Mapp/C.md"_s);
        page.post(u"changed"_s, u"Tre och"_s);

        windows.state.renameFile(windows.bucket.folder(u"Mapp"_s), u"Arkiv"_s);

        QCOMPARE(windows.window().fileURL(), windows.bucket.file(u"Arkiv/C.md"_s));
        QTRY_COMPARE(OpenFileWindows::shared().open(), std::set{windows.bucket.file(u"Arkiv/C.md"_s)});
        page.post(u"changed"_s, u"Tre och mer"_s);
        windows.services.scheduler.advance(std::chrono::seconds(2));
        QCOMPARE(windows.bucket.read(u"Arkiv/C.md"_s), QByteArray("Tre och mer"));
        QVERIFY(!windows.bucket.exists(u"Mapp"_s));
    }

    void aNoteRenamedInItsWindowIsSelectedUnderItsNewName()
    {
        Windows windows;
        windows.select(u"A.md"_s);
        windows.open(u"A.md"_s);

        windows.window().editor()->session().setTitle(u"Ny"_s);

        QCOMPARE(windows.window().windowTitle(), u"Ny"_s);
        QCOMPARE(windows.state.selectedFile(), windows.bucket.file(u"Ny.md"_s));
        QVERIFY(windows.isPlaceholderShown());
        QTRY_VERIFY(!OpenFileWindows::shared().isOpen(windows.bucket.file(u"A.md"_s)));
    }

    void aDeletedFileTakesItsWindowAlongAndDoesNotComeBack()
    {
        Windows windows;
        FakeEditorWebView& page = windows.open(u"A.md"_s);
        page.answersDrains = false;

        windows.state.deleteFile(windows.bucket.file(u"A.md"_s));
        page.post(u"changed"_s, u"Hej för sent"_s);
        for (const auto& answer : std::exchange(page.drains, {}))
            answer();

        QVERIFY(windows.hasNoWindows());
        QVERIFY(!windows.bucket.exists(u"A.md"_s));
    }

    void aLinkToAnotherNoteIsHandedOn()
    {
        Windows windows;
        windows.open(u"A.md"_s);
        QSignalSpy requests(windows.scene.get(), &WendloreFileScene::fileRequested);

        windows.window().windowState()->openNote(u"B"_s);

        QCOMPARE(requests.size(), 1);
        QCOMPARE(requests[0][0].value<FileURL>(), windows.bucket.file(u"B.md"_s));
        QCOMPARE(windows.window().windowState()->selectedFile(), windows.bucket.file(u"A.md"_s));
    }

    void theNextStartBringsTheWindowsBack()
    {
        Windows windows;
        windows.open(u"A.md"_s);
        windows.open(u"B.md"_s);
        windows.open(u"Mapp/C.md"_s);
        windows.window(0).resize(640, 480);
        windows.window(2).close();
        QTRY_COMPARE(windows.scene->windows().size(), std::size_t(2));
        windows.scene->closeForQuitting();
        QVERIFY(windows.hasNoWindows());
        windows.bucket.remove(u"B.md"_s);

        windows.makeScene();
        QVERIFY(OpenFileWindows::shared().open().empty());
        windows.scene->restore();

        QCOMPARE(windows.scene->windows().size(), std::size_t(2));
        QCOMPARE(windows.window(0).fileURL(), windows.bucket.file(u"A.md"_s));
        QCOMPARE(windows.window(0).size(), QSize(640, 480));
        QVERIFY(!windows.window(1).fileURL());
        QCOMPARE(OpenFileWindows::shared().open(), std::set{windows.bucket.file(u"A.md"_s)});
    }

    void aWindowThatIsClosedAfterQuittingWasCalledOffStaysClosed()
    {
        Windows windows;
        windows.open(u"A.md"_s);
        windows.scene->closeForQuitting();
        QVERIFY(windows.hasNoWindows());

        windows.open(u"B.md"_s);
        windows.window().close();
        QVERIFY(windows.hasNoWindows());
        windows.makeScene();
        windows.scene->restore();

        QVERIFY(windows.scene->windows().empty());
    }

    void brokenSettingsRestoreNothing()
    {
        Windows windows;
        windows.services.defaults.setData(u"wendloreOpenFileWindows"_s, "{no json");

        windows.scene->restore();

        QVERIFY(windows.scene->windows().empty());
    }

    void foldersHaveNoWindows()
    {
        Windows windows;

        OpenFileWindows::shared().requestWindow(windows.bucket.folder(u"Mapp"_s));

        QVERIFY(windows.scene->windows().empty());
    }
};

QTEST_MAIN(WendloreFileSceneTests)
#include "WendloreFileSceneTests.moc"
