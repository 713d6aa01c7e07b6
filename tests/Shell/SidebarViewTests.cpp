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

namespace {

/// A sidebar on screen over a real bucket, or over none.
class Sidebar final
{
public:
    Sidebar()
    {
        showAt(view, {240, 400});
        QApplication::setActiveWindow(&view);
    }
    explicit Sidebar(const Bucket& bucket)
        : Sidebar()
    {
        state.switchVault(bucket.root());
    }

    void click(const QString& name) const { QTest::mouseClick(childNamed(view, name), Qt::LeftButton); }

    FakeServices services;
    AppState state{services.services()};
    SidebarView view{state};
};

} // namespace

class SidebarViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void withoutABucketNothingCanBeMade()
    {
        Sidebar sidebar;

        for (const QString& name : {u"Ny not"_s, u"Ny mapp"_s, u"Sök"_s, u"Uppdatera"_s})
            QVERIFY2(!childNamed(sidebar.view, name)->isEnabled(), qPrintable(name));
    }

    void theButtonsMakeNotesAndFoldersWhereTheUserIs()
    {
        Bucket bucket({{"Arbete/Index.md", ""}});
        Sidebar sidebar(bucket);
        sidebar.state.setSelectedFolder(bucket.folder(u"Arbete"_s));

        sidebar.click(u"Ny not"_s);
        sidebar.click(u"Ny mapp"_s);

        QVERIFY(bucket.exists(u"Arbete/Ny not.md"_s));
        QVERIFY(bucket.exists(u"Arbete/Ny mapp"_s));
        QCOMPARE(sidebar.state.selectedFile(), bucket.file(u"Arbete/Ny not.md"_s));
    }

    void refreshingReadsTheTreeAtOnceAndAgainAfterTheWalk()
    {
        Bucket bucket({{"A.md", ""}});
        Sidebar sidebar(bucket);
        QWidget* button = childNamed(sidebar.view, u"Uppdatera"_s);
        const auto rows = [&sidebar] { return sidebar.view.tree().model()->rowCount(); };

        bucket.write(u"B.md"_s, "");
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(!button->isEnabled());
        QVERIFY(sidebar.services.scheduler.finishNextBackgroundWork());
        QCOMPARE(rows(), 2);
        QVERIFY(!button->isEnabled());
        QVERIFY(sidebar.services.coordinator.visited.isEmpty());

        QVERIFY(sidebar.services.scheduler.finishNextBackgroundWork());
        QCOMPARE(sidebar.services.coordinator.visited, QList<FileURL>{bucket.root()});
        QVERIFY(!button->isEnabled());

        bucket.write(u"C.md"_s, "");
        QVERIFY(sidebar.services.scheduler.finishNextBackgroundWork());
        QCOMPARE(rows(), 3);
        QVERIFY(button->isEnabled());
    }

    void aBucketThatIsOpenedMeanwhileCanBeRefreshedAtOnce()
    {
        Bucket slow({{"A.md", ""}});
        Bucket other({{"B.md", ""}});
        Sidebar sidebar(slow);
        sidebar.click(u"Uppdatera"_s);
        QVERIFY(sidebar.services.scheduler.finishNextBackgroundWork());

        sidebar.state.switchVault(other.root());
        QVERIFY(childNamed(sidebar.view, u"Uppdatera"_s)->isEnabled());
        sidebar.services.scheduler.finishBackgroundWork();
        sidebar.click(u"Uppdatera"_s);
        sidebar.services.scheduler.finishBackgroundWork();

        QCOMPARE(sidebar.services.coordinator.visited.last(), other.root());
        QVERIFY(childNamed(sidebar.view, u"Uppdatera"_s)->isEnabled());
    }

    void aSearchCanBeClosedWhenItsBucketWasRemoved()
    {
        Bucket bucket({{"A.md", ""}});
        Sidebar sidebar(bucket);
        sidebar.state.addVault(bucket.root());
        sidebar.click(u"Sök"_s);

        sidebar.state.removeBucket(bucket.root());
        sidebar.click(u"Sök"_s);

        QVERIFY(!sidebar.view.isSearchShown());
        QVERIFY(!childNamed(sidebar.view, u"Sök"_s)->isEnabled());
    }

    void theFeedbackLineOpensTheForm()
    {
        Sidebar sidebar;

        sidebar.click(u"Rapportera fel & önskemål"_s);

        QCOMPARE(sidebar.services.workspace.addresses.size(), 1);
        QCOMPARE(sidebar.services.workspace.addresses.front().scheme(), u"https"_s);
    }

    void itsGroundIsTintedInBothColorSchemes()
    {
        Sidebar sidebar;
        QCOMPARE(pictureOf(sidebar.view).pixelColor(120, 300), Colors::of(ColorScheme::light).side);

        useProductLook(ColorScheme::dark);

        QTRY_COMPARE(pictureOf(sidebar.view).pixelColor(120, 300), Colors::of(ColorScheme::dark).side);
        useProductLook();
    }

    void everyControlIsReachedByTab()
    {
        Bucket bucket({{"A.md", ""}});
        Sidebar sidebar(bucket);

        QStringList reached;
        for (int i = 0; i < 7; ++i) {
            QTest::keyClick(&sidebar.view, Qt::Key_Tab);
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
        Sidebar sidebar;
        const auto* first = static_cast<IconButton*>(childNamed(sidebar.view, u"Ny not"_s));

        QStringList actions;
        for (const auto* button :
             first->parentWidget()->findChildren<IconButton*>(Qt::FindDirectChildrenOnly))
            actions.append(button->symbol() + u": "_s + button->toolTip());

        QCOMPARE(actions, QStringList({u"square.and.pencil: Ny not"_s, u"folder.badge.plus: Ny mapp"_s,
                                       u"magnifyingglass: Sök i bucketen"_s,
                                       u"arrow.clockwise: Uppdatera (puffar iCloud/Dropbox att synka)"_s}));
        int last = -1;
        for (const QString& name : {u"Ny not"_s, u"Ny mapp"_s, u"Sök"_s, u"Uppdatera"_s}) {
            QVERIFY2(childNamed(sidebar.view, name)->x() > last, qPrintable(name));
            last = childNamed(sidebar.view, name)->x();
        }
    }

    void searchingTakesThePlaceOfTheTreeUntilItIsClosed()
    {
        Bucket bucket({{"A.md", "Anna"}});
        Sidebar sidebar(bucket);

        sidebar.click(u"Sök"_s);
        QVERIFY(sidebar.view.isSearchShown());
        QVERIFY(!sidebar.view.tree().isVisible());
        QTest::keyClicks(QApplication::focusWidget(), u"anna"_s);
        sidebar.services.scheduler.finishBackgroundWork();
        QCOMPARE(sidebar.state.searchResults().size(), 1U);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);

        QVERIFY(!sidebar.view.isSearchShown());
        QVERIFY(sidebar.view.tree().isVisible());
        QVERIFY(sidebar.state.searchResults().empty());
        QCOMPARE(sidebar.state.searchQuery(), QString());
        QVERIFY(!buttonNamed<IconButton>(sidebar.view, u"Sök"_s)->isChecked());
    }

    void theMenuOfAnItemOffersToRenameIt()
    {
        Bucket bucket({{"Plan.md", ""}});
        Sidebar sidebar(bucket);

        const QPoint place =
            sidebar.view.tree().visualRect(sidebar.view.tree().model()->index(0, 0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                sidebar.view.tree().viewport()->mapToGlobal(place));
        QApplication::sendEvent(sidebar.view.tree().viewport(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction* entry : menu->actions()) {
            if (entry->text() == u"Byt namn"_s)
                entry->trigger();
        }
        menu->close();

        QVERIFY(sidebar.view.findChild<RenamePrompt*>());
    }
};

QTEST_MAIN(SidebarViewTests)
#include "SidebarViewTests.moc"
