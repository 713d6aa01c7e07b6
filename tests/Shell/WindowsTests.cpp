#include "Shell/Windows.h"

#include "Support/Window.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class WindowsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMinimisedWindowComesBackAsLargeAsItWas()
    {
        QWidget window;
        window.setWindowState(Qt::WindowMaximized);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.showMinimized();
        QVERIFY(window.isMinimized());

        bringForward(window);

        QVERIFY(!window.isMinimized());
        QVERIFY(window.isMaximized());
        QTRY_COMPARE(QApplication::activeWindow(), &window);
    }

    void aClosedWindowComesBack()
    {
        QWidget window;
        showAt(window, {100, 100});
        window.close();

        bringForward(window);

        QVERIFY(window.isVisible());
    }

    void aWindowWithoutATitleHasTheProgramsName()
    {
        QWidget window;
        QCOMPARE(windowName(window), u"Wendlores"_s);

        window.setWindowTitle(u"Möte"_s);

        QCOMPARE(windowName(window), u"Möte"_s);
    }
};

QTEST_MAIN(WindowsTests)
#include "WindowsTests.moc"
