#include "Shell/BucketSwitcher.h"

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

        QCOMPARE(switcher.findChild<LabelButton*>()->text(), u"Ingen bucket öppen"_s);
        QCOMPARE(openedMenu(switcher).last()->text(), u"Lägg till bucket…"_s);
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
        QVERIFY(!entries.at(1)->icon().isNull());
        entries.at(0)->trigger();

        QCOMPARE(state.vaultURL(), folder.folder(u"Ett"_s));
        QCOMPARE(switcher.findChild<LabelButton*>()->text(), u"Ett"_s);
    }

    void addingABucketAsksForItsFolder()
    {
        Bucket folder({{"A.md", ""}});
        FakeServices services;
        services.panels.answer = folder.root();
        AppState state(services.services());
        BucketSwitcher switcher(state);

        openedMenu(switcher).last()->trigger();

        QCOMPARE(state.vaultURL(), folder.root());
    }
};

QTEST_MAIN(BucketSwitcherTests)
#include "BucketSwitcherTests.moc"
