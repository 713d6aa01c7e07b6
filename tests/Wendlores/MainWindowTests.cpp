#include "Wendlores/MainWindow.h"

#include "Editor/EditorView.h"
#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/ContentView.h"
#include "Previews/DetailView.h"
#include "State/AppState.h"
#include "Support/Window.h"
#include "Wendlores/MenuCommands.h"

#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

void dragHandle(const QSplitter& splitter, int distance)
{
    QWidget* handle = splitter.handle(1);
    const QPoint start = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(distance, 0),
                     handle->mapToGlobal(start + QPoint(distance, 0)), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, start);
}

} // namespace

class MainWindowTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itsTitleIsWhatIsShown()
    {
        const Bucket bucket({{"Möte.md", ""}});
        FakeServices services;
        AppState state(services.services());
        MainWindow window(state);
        QCOMPARE(window.windowTitle(), QString());
        QCOMPARE(window.minimumSize(), QSize(700, 400));

        state.switchVault(bucket.root());
        QCOMPARE(window.windowTitle(), bucket.root().lastPathComponent());
        state.setSelectedFile(bucket.file(u"Möte.md"_s));
        QCOMPARE(window.windowTitle(), u"Möte"_s);
        QCOMPARE(window.windowFilePath(), bucket.file(u"Möte.md"_s).path());
    }

    void closingWritesWhatWasTypedLast()
    {
        const Bucket bucket({{"A.md", "Hej"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        MainWindow window(state);
        showAt(window, {900, 600});
        services.page->post(u"ready"_s);
        state.setSelectedFile(bucket.file(u"A.md"_s));
        services.scheduler.finishBackgroundWork();
        services.page->post(u"changed"_s, u"Hej då"_s);

        window.close();

        QTRY_VERIFY(!window.isVisible());
        QCOMPARE(bucket.read(u"A.md"_s), QByteArray("Hej då"));
    }

    void aWindowComesBackAsItWasLeft()
    {
        FakeServices services;
        AppState state(services.services());
        QList<int> split;
        {
            MainWindow window(state);
            showAt(window, {760, 700});
            window.content().setSizes({300, 460});
            split = window.content().sizes();
            window.close();
            QTRY_VERIFY(!window.isVisible());
        }

        MainWindow window(state);
        window.show();

        QCOMPARE(window.size(), QSize(760, 700));
        QCOMPARE(window.content().sizes(), split);
    }

    void itFitsOnASmallScreen()
    {
        FakeServices services;
        AppState state(services.services());
        const MainWindow window(state);

        QVERIFY(window.frameSize().height() < window.screen()->availableSize().height());
        QVERIFY(window.frameSize().width() < window.screen()->availableSize().width());
    }

    void theFirstBucketsTreeGetsTheKeyboard()
    {
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        AppState state(services.services());
        MainWindow window(state);
        showAt(window, {760, 700});
        window.takeFocus();

        state.addVault(bucket.root());

        QCOMPARE(window.focusWidget()->accessibleName(), u"Filer"_s);
    }

    void f6ShowsWhereTheKeyboardIs()
    {
        FakeServices services;
        AppState state(services.services());
        MainWindow window(state);
        showAt(window, {760, 700});
        window.setAttribute(Qt::WA_KeyboardFocusChange, false);

        Q_EMIT window.menus().otherPaneRequested();

        QVERIFY(window.testAttribute(Qt::WA_KeyboardFocusChange));
    }

    void theSidebarKeepsWithinItsLimits()
    {
        FakeServices services;
        AppState state(services.services());
        MainWindow window(state);
        showAt(window, {1200, 700});
        QCOMPARE(window.content().sizes().front(), 220);

        dragHandle(window.content(), -150);
        QCOMPARE(window.content().sizes().front(), 180);
        dragHandle(window.content(), 600);
        QCOMPARE(window.content().sizes().front(), 500);
    }
};

QTEST_MAIN(MainWindowTests)
#include "MainWindowTests.moc"
