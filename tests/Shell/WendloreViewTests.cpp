#include "Shell/WendloreView.h"

#include "Shell/SidebarView.h"
#include "Shell/SidebarWidth.h"

#include "Editor/EditorBar.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class WendloreViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itShowsItsBucketAndTheRevealedFile()
    {
        const Bucket bucket({{"Arbete/Index.md", "Hej"}});
        FakeServices services;

        const WendloreView view(services.services(), bucket.root(),
                                {.reveal = RevealRequest{bucket.file(u"Arbete/Index.md"_s), 1}});

        QCOMPARE(view.store().vaultURL(), bucket.root());
        QCOMPARE(view.store().selectedFile(), bucket.file(u"Arbete/Index.md"_s));
    }

    void theHostIsToldOfTheSelectionAtFirstAndWhenItChanges()
    {
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        QList<std::optional<FileURL>> told;

        const WendloreView view(
            services.services(), bucket.root(),
            {.onSelectedFileChange = [&told](const std::optional<FileURL>& file) { told.append(file); }});
        view.store().setSelectedFile(bucket.file(u"A.md"_s));
        view.store().setSelectedFile(std::nullopt);

        QCOMPARE(told, (QList<std::optional<FileURL>>{std::nullopt, bucket.file(u"A.md"_s), std::nullopt}));
    }

    void theSameFileCanBeRevealedAgainByAnotherToken()
    {
        const Bucket bucket({{"A.md", ""}, {"B.md", ""}});
        FakeServices services;
        WendloreView view(services.services(), bucket.root(), {});
        view.setReveal(RevealRequest{bucket.file(u"A.md"_s), 1});
        QCOMPARE(view.store().selectedFile(), bucket.file(u"A.md"_s));

        view.store().setSelectedFile(bucket.file(u"B.md"_s));
        view.setReveal(RevealRequest{bucket.file(u"A.md"_s), 1});
        QCOMPARE(view.store().selectedFile(), bucket.file(u"B.md"_s));
        view.setReveal(RevealRequest{bucket.file(u"A.md"_s), 2});

        QCOMPARE(view.store().selectedFile(), bucket.file(u"A.md"_s));
    }

    void anotherBucketIsShownByTheSameState()
    {
        const Bucket first({{"A.md", ""}});
        const Bucket second({{"B.md", ""}});
        FakeServices services;
        WendloreView view(services.services(), first.root(), {});
        const AppState* store = &view.store();

        view.setBucketURL(second.root());

        QCOMPARE(&view.store(), store);
        QCOMPARE(view.store().vaultURL(), second.root());
    }

    void theSidebarStartsWithinItsLimits_data()
    {
        QTest::addColumn<std::optional<double>>("saved");
        QTest::addColumn<int>("width");
        QTest::newRow("none saved") << std::optional<double>() << 250;
        QTest::newRow("too narrow") << std::optional(150.0) << 200;
        QTest::newRow("too wide") << std::optional(500.0) << 380;
        QTest::newRow("as saved") << std::optional(311.0) << 311;
    }
    void theSidebarStartsWithinItsLimits()
    {
        QFETCH(std::optional<double>, saved);
        QFETCH(int, width);
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        if (saved)
            AppState(services.services()).saveSidebarWidth(*saved, bucket.root());

        WendloreView view(services.services(), bucket.root(), {});
        showAt(view, {1000, 500});

        QCOMPARE(view.sizes().front(), width);
    }

    void onlyRealChangesOfTheWidthAreSaved()
    {
        QVERIFY(!sidebarWidth::isWorthSaving(250.4, 250.0));
        QVERIFY(sidebarWidth::isWorthSaving(250.6, 250.0));
        QVERIFY(!sidebarWidth::isWorthSaving(0, 250.0));
        QVERIFY(sidebarWidth::isWorthSaving(250, std::nullopt));
    }

    void theUsersWidthIsKeptForTheBucket()
    {
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        WendloreView view(services.services(), bucket.root(), {});
        showAt(view, {1000, 500});

        view.setSizes({300, 700});

        QTRY_COMPARE(view.store().savedSidebarWidth(bucket.root()), 300.0);
    }

    void theEditorsCommandsStandInABarWhereTheHostWantsThem()
    {
        const Bucket bucket({{"A.md", ""}, {"B.zip", ""}});
        FakeServices services;
        WendloreView with(services.services(), bucket.root(), {.inlineFileToolbar = true});
        const WendloreView without(services.services(), bucket.root(), {});
        showAt(with, {1000, 500});
        auto* bar = with.findChild<EditorBar*>();

        QVERIFY(!without.findChild<EditorBar*>());
        QVERIFY(!bar->isVisible());
        with.store().setSelectedFile(bucket.file(u"A.md"_s));
        QVERIFY(bar->isVisible());
        with.store().setSelectedFile(bucket.file(u"B.zip"_s));
        QVERIFY(!bar->isVisible());
    }
};

QTEST_MAIN(WendloreViewTests)
#include "WendloreViewTests.moc"
