#include "Shell/SidebarView.h"

#include "Shell/FileTreeView.h"
#include "Shell/RenamePrompt.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/FlatButton.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SidebarViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void withoutABucketNothingCanBeMade()
    {
        FakeServices services;
        AppState state(services.services());
        SidebarView sidebar(state);

        for (const QString& name : {u"Ny not"_s, u"Ny mapp"_s, u"Sök"_s, u"Uppdatera"_s})
            QVERIFY2(!childNamed(sidebar, name)->isEnabled(), qPrintable(name));
    }

    void theButtonsMakeNotesAndFoldersWhereTheUserIs()
    {
        Bucket bucket({{"Arbete/Index.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});
        state.setSelectedFolder(bucket.folder(u"Arbete"_s));

        QTest::mouseClick(childNamed(sidebar, u"Ny not"_s), Qt::LeftButton);
        QTest::mouseClick(childNamed(sidebar, u"Ny mapp"_s), Qt::LeftButton);

        QVERIFY(bucket.exists(u"Arbete/Ny not.md"_s));
        QVERIFY(bucket.exists(u"Arbete/Ny mapp"_s));
        QCOMPARE(state.selectedFile(), bucket.file(u"Arbete/Ny not.md"_s));
    }

    void refreshingReadsTheTreeAtOnceAndAgainAfterTheWalk()
    {
        Bucket bucket({{"A.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});
        QWidget* button = childNamed(sidebar, u"Uppdatera"_s);
        const auto rows = [&sidebar] { return sidebar.tree().model()->rowCount(); };

        bucket.write(u"B.md"_s, "");
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(rows(), 2);
        QVERIFY(!button->isEnabled());

        bucket.write(u"C.md"_s, "");
        services.scheduler.finishBackgroundWork();
        QCOMPARE(rows(), 3);
        QVERIFY(button->isEnabled());
    }

    void theFeedbackLineOpensTheForm()
    {
        FakeServices services;
        AppState state(services.services());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});

        QTest::mouseClick(childNamed(sidebar, u"Rapportera fel & önskemål"_s), Qt::LeftButton);

        QCOMPARE(services.workspace.addresses.size(), 1);
        QCOMPARE(services.workspace.addresses.front().scheme(), u"https"_s);
    }

    void itsGroundIsTintedInBothColorSchemes()
    {
        FakeServices services;
        AppState state(services.services());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});
        QCOMPARE(pictureOf(sidebar).pixelColor(120, 300), Colors::of(ColorScheme::light).side);

        useProductLook(ColorScheme::dark);

        QTRY_COMPARE(pictureOf(sidebar).pixelColor(120, 300), Colors::of(ColorScheme::dark).side);
        useProductLook();
    }

    void everyControlIsReachedByTab()
    {
        Bucket bucket({{"A.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});
        QApplication::setActiveWindow(&sidebar);

        QStringList reached;
        for (int i = 0; i < 7; ++i) {
            QTest::keyClick(&sidebar, Qt::Key_Tab);
            reached.append(QApplication::focusWidget()->accessibleName());
        }

        reached.sort();
        QStringList expected{u"Bucket: %1"_s.arg(bucket.root().lastPathComponent()),
                             u"Filer"_s,
                             u"Ny mapp"_s,
                             u"Ny not"_s,
                             u"Rapportera fel & önskemål"_s,
                             u"Sök"_s,
                             u"Uppdatera"_s};
        expected.sort();
        QCOMPARE(reached, expected);
    }

    void theActionsStandInTheirOrder()
    {
        FakeServices services;
        AppState state(services.services());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});

        int last = -1;
        for (const QString& name : {u"Ny not"_s, u"Ny mapp"_s, u"Sök"_s, u"Uppdatera"_s}) {
            QVERIFY2(childNamed(sidebar, name)->x() > last, qPrintable(name));
            last = childNamed(sidebar, name)->x();
        }
    }

    void searchingTakesThePlaceOfTheTreeUntilItIsClosed()
    {
        Bucket bucket({{"A.md", "Anna"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});
        QApplication::setActiveWindow(&sidebar);

        QTest::mouseClick(childNamed(sidebar, u"Sök"_s), Qt::LeftButton);
        QVERIFY(sidebar.isSearchShown());
        QVERIFY(!sidebar.tree().isVisible());
        QTest::keyClicks(QApplication::focusWidget(), u"anna"_s);
        services.scheduler.finishBackgroundWork();
        QCOMPARE(state.searchResults().size(), 1U);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);

        QVERIFY(!sidebar.isSearchShown());
        QVERIFY(sidebar.tree().isVisible());
        QVERIFY(state.searchResults().empty());
        QCOMPARE(state.searchQuery(), QString());
        QVERIFY(!buttonNamed<IconButton>(sidebar, u"Sök"_s)->isChecked());
    }

    void theMenuOfAnItemOffersToRenameIt()
    {
        Bucket bucket({{"Plan.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SidebarView sidebar(state);
        showAt(sidebar, {240, 400});

        const QPoint place = sidebar.tree().visualRect(sidebar.tree().model()->index(0, 0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                sidebar.tree().viewport()->mapToGlobal(place));
        QApplication::sendEvent(sidebar.tree().viewport(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction* entry : menu->actions()) {
            if (entry->text() == u"Byt namn"_s)
                entry->trigger();
        }
        menu->close();

        QVERIFY(sidebar.findChild<RenamePrompt*>());
    }
};

QTEST_MAIN(SidebarViewTests)
#include "SidebarViewTests.moc"
