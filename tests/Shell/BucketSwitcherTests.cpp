#include "Shell/BucketSwitcher.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/FlatButton.h"
#include "Shell/BucketSheets.h"
#include "Shell/ManageBucketsSheet.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QMenu>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The switcher's entries as they are when its menu opens.
QList<QAction*> openedMenu(const BucketSwitcher& switcher)
{
    auto* menu = switcher.findChild<QMenu*>();
    Q_EMIT menu->aboutToShow();
    return menu->actions();
}

} // namespace

class BucketSwitcherTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void withoutABucketItSaysSo()
    {
        FakeServices services;
        AppState state(services.services());
        BucketSwitcher switcher(state);

        const auto& label = *switcher.findChild<LabelButton*>();
        QCOMPARE(label.text(), u"Ingen bucket öppen"_s);
        QCOMPARE(label.leadingSymbol(), u"archivebox"_s);
        QCOMPARE(label.trailingSymbol(), u"chevron.up.chevron.down"_s);
        QStringList entries;
        for (const QAction* entry : openedMenu(switcher))
            entries.append(entry->isSeparator() ? u"|"_s : entry->icon().name() + u": "_s + entry->text());
        QCOMPARE(entries, QStringList({u"|"_s, u"plus: Lägg till bucket…"_s,
                                       u"slider.horizontal.3: Hantera buckets…"_s}));
    }

    void showsAndChangesTheOpenBucket()
    {
        Bucket folder({{"Ett/A.md", ""}, {"R&D/B.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.addVault(folder.folder(u"Ett"_s));
        state.addVault(folder.folder(u"R&D"_s));
        BucketSwitcher switcher(state);
        QCOMPARE(switcher.findChild<LabelButton*>()->text(), u"R&D"_s);

        const QList<QAction*> entries = openedMenu(switcher);
        QCOMPARE(entries.at(0)->text(), u"Ett"_s);
        QCOMPARE(entries.at(1)->text(), u"R&&D"_s);
        QVERIFY(entries.at(0)->icon().isNull());
        QCOMPARE(entries.at(0)->toolTip(), folder.folder(u"Ett"_s).path());
        QVERIFY(qobject_cast<QMenu*>(entries.at(0)->parent())->toolTipsVisible());
        QCOMPARE(entries.at(1)->icon().name(), u"checkmark"_s);
        QCOMPARE(switcher.findChild<LabelButton*>()->leadingSymbol(), u"archivebox.fill"_s);
        entries.at(0)->trigger();

        QCOMPARE(state.vaultURL(), folder.folder(u"Ett"_s));
        QCOMPARE(switcher.findChild<LabelButton*>()->text(), u"Ett"_s);
    }

    void bucketsOfOtherDevicesStandUnderAHeading()
    {
        FakeServices services;
        services.cloud.setData(u"wendlore_synced_vaults"_s,
                               toJson(std::vector<SyncedVaultEntry>{{u"3"_s, u"Tre"_s}}));
        AppState state(services.services());
        QWidget window;
        auto* switcher = new BucketSwitcher(state, &window);

        const QList<QAction*> entries = openedMenu(*switcher);
        const auto heading = std::ranges::find(entries, u"Tillgängliga på andra enheter"_s, &QAction::text);
        QVERIFY(heading != entries.end());
        QVERIFY(!(*heading)->isEnabled());
        QCOMPARE((*std::next(heading))->text(), u"Tre"_s);
        (*std::next(heading))->trigger();

        QVERIFY(window.findChild<PendingVaultSheet*>());
    }

    void withoutThemThereIsNoHeading()
    {
        FakeServices services;
        AppState state(services.services());
        const BucketSwitcher switcher(state);

        for (const QAction* entry : openedMenu(switcher))
            QVERIFY(entry->text() != u"Tillgängliga på andra enheter"_s);
    }

    void addingABucketIsExplainedFirst()
    {
        FakeServices services;
        AppState state(services.services());
        QWidget window;
        auto* switcher = new BucketSwitcher(state, &window);

        const QList<QAction*> entries = openedMenu(*switcher);
        QCOMPARE(entries.at(entries.size() - 2)->text(), u"Lägg till bucket…"_s);
        entries.at(entries.size() - 2)->trigger();

        QVERIFY(window.findChild<BucketInstructionsSheet*>());
    }

    void theLastEntryLeadsToTheListOfBuckets()
    {
        FakeServices services;
        AppState state(services.services());
        QWidget window;
        auto* switcher = new BucketSwitcher(state, &window);

        QAction* last = openedMenu(*switcher).last();
        QCOMPARE(last->text(), u"Hantera buckets…"_s);
        last->trigger();

        auto* sheet = window.findChild<ManageBucketsSheet*>();
        QVERIFY(sheet);
        Q_EMIT sheet->addRequested();
        QVERIFY(window.findChild<BucketInstructionsSheet*>());
    }
};

QTEST_MAIN(BucketSwitcherTests)
#include "BucketSwitcherTests.moc"
