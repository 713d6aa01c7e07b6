#include "Wendlores/WendloreApp.h"

#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Style.h"
#include "Look/SystemAppearance.h"
#include "Platform/FileAddress.h"
#include "Shell/FileTreeView.h"
#include "Shell/WendloreFileWindowView.h"
#include "Shell/Windows.h"
#include "Shell/WindowTabBar.h"
#include "State/OpenFileWindows.h"
#include "Support/Window.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

class LightSystem final : public SystemAppearance
{
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return ColorScheme::light; }
    [[nodiscard]] Motion motion() const override { return Motion::unwanted; }
};

/// The application over a bucket of three notes.
struct Program final
{
    Program()
        : app(services.services(), system, style, {})
    {
        app.appState().addVault(bucket.root());
        app.start();
    }

    void openWindow(const QString& path)
    {
        OpenFileWindows::shared().requestWindow(bucket.file(path));
        services.page->post(u"ready"_s);
        services.scheduler.finishBackgroundWork();
    }
    [[nodiscard]] static QAction* entry(const QWidget& window, const QString& title)
    {
        for (auto* action : window.findChildren<QAction*>()) {
            if (action->text() == title)
                return action;
        }
        return nullptr;
    }

    Bucket bucket{{"A.md", "a"}, {"B.md", "b"}, {"C.md", "c"}};
    FakeServices services;
    LightSystem system;
    Style style;
    WendloreApp app;
};

} // namespace

class WendloreAppTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }
    void cleanup() { QVERIFY(OpenFileWindows::shared().open().empty()); }

    void itIsLightUntilTheUserChooses()
    {
        Program program;
        QCOMPARE(program.app.appState().theme(), AppTheme::light);
        program.app.appState().setTheme(AppTheme::automatic);

        const WendloreApp next(program.services.services(), program.system, program.style, {});

        QCOMPARE(program.app.appState().theme(), AppTheme::automatic);
        QCOMPARE(program.services.defaults.string(u"theme"_s), u"auto"_s);
    }

    void itStartsWhereAStrayKeyChangesNothing()
    {
        Program program;
        program.app.appState().setSelectedFile(program.bucket.file(u"A.md"_s));

        WendloreApp next(program.services.services(), program.system, program.style, {});
        next.start();
        bringForward(next.mainWindow());

        QTRY_VERIFY(next.mainWindow().findChild<FileTreeView*>()->hasFocus());
    }

    void withoutABucketEnterOpensOne()
    {
        FakeServices services;
        LightSystem system;
        Style style;
        WendloreApp app(services.services(), system, style, {});
        app.start();
        bringForward(app.mainWindow());
        QTRY_VERIFY(qobject_cast<QPushButton*>(QApplication::focusWidget()));

        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

        QCOMPARE(services.panels.shown.size(), 1);
    }

    void filesThatAreHandedOverAreShown()
    {
        Program program;

        program.app.open({fileAddress(program.bucket.file(u"B.md"_s))});

        QCOMPARE(program.app.appState().selectedFile(), program.bucket.file(u"B.md"_s));
        QCOMPARE(program.app.appState().vaultURL(), program.bucket.root());
    }

    void aFileThatHasAWindowIsShownThere()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        bringForward(program.app.mainWindow());
        QTRY_COMPARE(QApplication::activeWindow(), &program.app.mainWindow());

        program.app.open({fileAddress(program.bucket.file(u"A.md"_s))});

        QTRY_COMPARE(QApplication::activeWindow(), program.app.fileScene().windows().front());
    }

    void aThemeLinkAppliesTheTheme()
    {
        Program program;
        const QByteArray json = TypographyTheme::standard().toJson()->replace("false", "true");

        program.app.open(
            {QUrl(u"wendlore://apply-theme?data="_s + QString::fromLatin1(json.toPercentEncoding()))});

        QCOMPARE(program.app.appState().typographyTheme(), *TypographyTheme::fromJson(json));
        QVERIFY(program.services.defaults.data(u"wendloreTypographyTheme"_s).has_value());
    }

    void quittingLeavesNobodyWaitingForAPanel()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        const QPointer<QWidget> window = program.app.fileScene().windows().front();
        bool isWindowThere = false;
        QEventLoop events;
        QTimer::singleShot(0, &events, [&] {
            auto* panel = new QDialog(window);
            QTimer::singleShot(0, &program.app, &WendloreApp::quit);
            panel->exec();
            isWindowThere = !window.isNull();
            events.quit();
        });

        events.exec();

        QVERIFY(isWindowThere);
        QTRY_VERIFY(window.isNull() && program.app.mainWindow().isHidden());
    }

    void nonsenseThatIsHandedOverChangesNothing()
    {
        Program program;

        program.app.open({QUrl(u"file:///no/such/file.md"_s), QUrl(u"wendlore://apply-theme?data=x"_s),
                          QUrl(u"https://example.com"_s), QUrl()});

        QVERIFY(!program.app.appState().selectedFile());
        QCOMPARE(program.app.appState().vaultURL(), program.bucket.root());
        QCOMPARE(program.app.appState().typographyTheme(), TypographyTheme::standard());
    }

    void theRowOfTabsShowsEveryWindow()
    {
        Program program;
        auto* tabs = program.app.mainWindow().findChild<WindowTabBar*>();
        QVERIFY(!tabs->isVisible());

        Program::entry(program.app.mainWindow(), u"Visa/Dölj flikrad"_s)->trigger();
        program.openWindow(u"A.md"_s);
        program.openWindow(u"B.md"_s);
        QVERIFY(tabs->isVisible());
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(1), u"A"_s);
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
        QTRY_COMPARE(QApplication::activeWindow(), program.app.fileScene().windows().front());

        Program::entry(program.app.mainWindow(), u"Visa/Dölj flikrad"_s)->trigger();
        QVERIFY(!tabs->isVisible());
    }

    void fromTheWindowOfAFileNewItemsGoIntoTheWorkspace()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        const WendloreFileWindowView& window = *program.app.fileScene().windows().front();
        QTRY_COMPARE(QApplication::activeWindow(), &window);

        Program::entry(window, u"Ny not"_s)->trigger();
        Program::entry(window, u"Ny mapp"_s)->trigger();

        QCOMPARE(program.app.appState().selectedFile(), program.bucket.file(u"Ny not.md"_s));
        QCOMPARE(window.windowState()->selectedFile(), program.bucket.file(u"A.md"_s));
        QVERIFY(program.bucket.exists(u"Ny mapp"_s));
        QTRY_COMPARE(QApplication::activeWindow(), &program.app.mainWindow());
    }

    void fromTheWindowOfAFileAnotherBucketIsOpenedInTheMainWindow()
    {
        Program program;
        const Bucket other({{"D.md", ""}});
        program.openWindow(u"A.md"_s);
        const WendloreFileWindowView& window = *program.app.fileScene().windows().front();
        QTRY_COMPARE(QApplication::activeWindow(), &window);
        QAction* open = Program::entry(window, u"Öppna bucket…"_s);

        open->trigger(); // and it is cancelled
        QCOMPARE(program.app.appState().vaultURL(), program.bucket.root());
        QCOMPARE(QApplication::activeWindow(), &window);
        program.services.panels.answer = other.root();
        open->trigger();

        QCOMPARE(program.app.appState().vaultURL(), other.root());
        QCOMPARE(window.windowState()->vaultURL(), program.bucket.root());
        QTRY_COMPARE(QApplication::activeWindow(), &program.app.mainWindow());
    }

    void fromTheWindowOfAFileTheMainWindowsTabsAreShown()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        const auto* tabs = program.app.mainWindow().findChild<WindowTabBar*>();
        QVERIFY(!tabs->isVisible());

        Program::entry(*program.app.fileScene().windows().front(), u"Visa/Dölj flikrad"_s)->trigger();

        QVERIFY(tabs->isVisible());
    }

    void aWindowWithoutAFileIsClosedByItsKey()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        program.app.quit();
        QTRY_VERIFY(program.app.fileScene().windows().empty());
        program.bucket.remove(u"A.md"_s);
        WendloreApp next(program.services.services(), program.system, program.style, {});
        next.start();
        QCOMPARE(next.fileScene().windows().size(), std::size_t(1));
        WendloreFileWindowView& window = *next.fileScene().windows().front();
        QVERIFY(!window.fileURL());
        bringForward(window);
        QTRY_COMPARE(QApplication::activeWindow(), &window);

        QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);

        QTRY_VERIFY(next.fileScene().windows().empty());
    }

    void theWindowMenuRaisesTheOneThatIsChosen()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        WendloreFileWindowView& window = *program.app.fileScene().windows().front();

        bringForward(program.app.mainWindow());
        QTRY_COMPARE(QApplication::activeWindow(), &program.app.mainWindow());
        Program::entry(program.app.mainWindow(), u"A"_s)->trigger();

        QTRY_COMPARE(QApplication::activeWindow(), &window);
    }

    void quittingKeepsTheWindowsForTheNextStart()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        program.services.page->post(u"changed"_s, u"a och b"_s);

        Program::entry(*program.app.fileScene().windows().front(), u"Avsluta"_s)->trigger();

        QTRY_VERIFY(program.app.fileScene().windows().empty());
        QTRY_VERIFY(!program.app.mainWindow().isVisible());
        QCOMPARE(program.bucket.read(u"A.md"_s), QByteArray("a och b"));

        WendloreApp next(program.services.services(), program.system, program.style, {});
        next.start();
        QCOMPARE(next.fileScene().windows().size(), std::size_t(1));
        QCOMPARE(next.fileScene().windows().front()->fileURL(), program.bucket.file(u"A.md"_s));
    }

    void aMainWindowThatWasClosedComesBackWhenItIsAskedFor()
    {
        Program program;
        program.openWindow(u"A.md"_s);
        program.app.mainWindow().close();
        QTRY_VERIFY(!program.app.mainWindow().isVisible());

        program.app.open({});

        QVERIFY(program.app.mainWindow().isVisible());
    }
};

QTEST_MAIN(WendloreAppTests)
#include "WendloreAppTests.moc"
