#include "Wendlores/MainWindow.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/ContentView.h"
#include "Shell/SidebarView.h"
#include "State/AppState.h"
#include "Support/Accessibility.h"
#include "Support/Window.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class MainWindowAccessibilityTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aNamelessControlIsFound()
    {
        QWidget window;
        auto* nameless = new QPushButton(&window);
        QCOMPARE(namelessControls(window).size(), 1);

        nameless->setAccessibleName(u"Spara"_s);

        QVERIFY(namelessControls(window).isEmpty());
    }

    void everyControlOfTheWindowHasAName_data()
    {
        QTest::addColumn<QString>("selected");
        QTest::newRow("no bucket") << QString();
        QTest::newRow("a folder") << u"Arbete"_s;
        QTest::newRow("a note") << u"Arbete/Index.md"_s;
        QTest::newRow("another file") << u"arkiv.zip"_s;
    }
    void everyControlOfTheWindowHasAName()
    {
        QFETCH(QString, selected);
        const Bucket bucket({{"Arbete/Index.md", "anna"}, {"Arbete/Anna.md", ""}, {"arkiv.zip", ""}});
        FakeServices services;
        AppState state(services.services());
        MainWindow window(state);
        showAt(window, {1000, 700});
        if (!selected.isEmpty()) {
            state.addVault(bucket.root());
            state.setSelectedFile(bucket.file(selected));
        }

        QCOMPARE(namelessControls(window), QStringList());
    }

    void soHaveTheResultsOfASearch()
    {
        const Bucket bucket({{"Arbete/Index.md", "anna"}, {"Arbete/Anna.md", ""}});
        FakeServices services;
        AppState state(services.services());
        MainWindow window(state);
        showAt(window, {1000, 700});
        state.addVault(bucket.root());
        auto* sidebar = window.findChild<SidebarView*>();

        sidebar->toggleSearch();
        sidebar->findChild<QLineEdit*>()->setText(u"anna"_s);
        services.scheduler.finishBackgroundWork();

        QCOMPARE(namelessControls(window), QStringList());
        QVERIFY(controlNames(window).contains(u"Index: anna"_s));
    }
};

QTEST_MAIN(MainWindowAccessibilityTests)
#include "MainWindowAccessibilityTests.moc"
