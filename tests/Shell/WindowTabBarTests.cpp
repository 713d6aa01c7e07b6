#include "Shell/WindowTabBar.h"

#include "Support/Window.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class WindowTabBarTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void everyWindowHasATab()
    {
        QWidget main;
        QWidget note;
        main.setWindowTitle(u"Anteckningar"_s);
        note.setWindowTitle(u"Möte"_s);
        WindowTabBar tabs;

        tabs.setWindows({&main, &note});
        QCOMPARE(tabs.count(), 2);
        QCOMPARE(tabs.tabText(0), u"Anteckningar"_s);
        QCOMPARE(tabs.tabText(1), u"Möte"_s);

        note.setWindowTitle(u"Plan"_s);
        QCOMPARE(tabs.tabText(1), u"Plan"_s);
        tabs.setWindows({&main});
        QCOMPARE(tabs.count(), 1);
    }

    void aClickBringsTheWindowForward()
    {
        QWidget main;
        QWidget note;
        WindowTabBar tabs(&main);
        tabs.setWindows({&main, &note});
        tabs.resize(400, tabs.sizeHint().height());
        showAt(main, {400, 200});

        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(1).center());

        QTRY_COMPARE(QApplication::activeWindow(), &note);
        QVERIFY(note.isVisible());
        QCOMPARE(tabs.currentIndex(), 0);
    }
};

QTEST_MAIN(WindowTabBarTests)
#include "WindowTabBarTests.moc"
