#include "Shell/ManageBucketsSheet.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/FlatButton.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The sheet over two buckets, while another device has a third.
class Manage final
{
public:
    Manage()
        : state(services.services())
    {
        state.addVault(folder.folder(u"Ett"_s));
        state.addVault(folder.folder(u"Två"_s));
        const std::vector<SyncedVaultEntry> entries{
            {u"1"_s, u"Ett"_s}, {u"2"_s, u"Två"_s}, {u"3"_s, u"Tre"_s}};
        services.cloud.setData(u"wendlore_synced_vaults"_s, toJson(entries));
        state.refreshPendingVaults();
        sheet = new ManageBucketsSheet(state, &window);
        sheet->open();
    }

    [[nodiscard]] bool says(const QString& text) const
    {
        for (const auto* label : sheet->findChildren<QLabel*>()) {
            if (label->text().contains(text))
                return true;
        }
        return false;
    }
    [[nodiscard]] QPushButton* button(const QString& text) const
    {
        for (auto* button : sheet->findChildren<QPushButton*>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }

    Bucket folder{{"Ett/A.md", ""}, {"Två/B.md", ""}};
    FakeServices services;
    AppState state;
    QWidget window;
    QPointer<ManageBucketsSheet> sheet;
};

} // namespace

class ManageBucketsSheetTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itSaysWhatRemovingDoes()
    {
        const Manage manage;

        QVERIFY(manage.says(u"Att ta bort en bucket tar bara bort den från menyn — mappen och filerna ligger "
                            "kvar på disken."_s));
    }

    void theKeyboardGoesThroughTheListFirst()
    {
        const Manage manage;
        manage.sheet->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(manage.sheet));
        QStringList passed;

        for (int step = 0; step < 5; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const auto* button = qobject_cast<QPushButton*>(QApplication::focusWidget());
            passed.append(button ? button->text() : QApplication::focusWidget()->accessibleName());
        }

        QCOMPARE(passed, QStringList({u"Ta bort Ett från menyn"_s, u"Ta bort Två från menyn"_s,
                                      u"Länka Tre"_s, u"Välj synkad mapp…"_s, u"Lägg till bucket"_s}));
    }

    void aKeyThatRemovedABucketRemovesNoSecondOne()
    {
        const Manage manage;
        manage.sheet->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(manage.sheet));
        childNamed(*manage.sheet, u"Ta bort Ett från menyn"_s)->setFocus();

        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);

        QCOMPARE(manage.state.vaults(), std::vector{manage.folder.folder(u"Två"_s)});
        QCOMPARE(QApplication::focusWidget()->accessibleName(), u"Buckets"_s);
    }

    void removingTakesTheBucketOffTheListOnly()
    {
        const Manage manage;

        auto* remove = buttonNamed<IconButton>(*manage.sheet, u"Ta bort Ett från menyn"_s);
        QCOMPARE(remove->symbol(), u"minus.circle.fill"_s);
        QTest::mouseClick(remove, Qt::LeftButton);

        QCOMPARE(manage.state.vaults(), std::vector{manage.folder.folder(u"Två"_s)});
        QVERIFY(manage.folder.exists(u"Ett/A.md"_s));
        QTRY_VERIFY(!childNamed(*manage.sheet, u"Ta bort Ett från menyn"_s));
        QVERIFY(childNamed(*manage.sheet, u"Ta bort Två från menyn"_s));
    }

    void bucketsOfOtherDevicesCanBeLinked()
    {
        const Manage manage;
        QVERIFY(manage.says(u"Tillgängliga på andra enheter"_s));
        const QSignalSpy links(manage.sheet, &ManageBucketsSheet::linkRequested);

        QTest::mouseClick(childNamed(*manage.sheet, u"Länka Tre"_s), Qt::LeftButton);

        QCOMPARE(links.count(), 1);
        QTRY_VERIFY(!manage.sheet);
    }

    void aBucketCanBeAdded()
    {
        const Manage manage;
        const QSignalSpy adds(manage.sheet, &ManageBucketsSheet::addRequested);

        QTest::mouseClick(manage.button(u"Lägg till bucket"_s), Qt::LeftButton);

        QCOMPARE(adds.count(), 1);
        QTRY_VERIFY(!manage.sheet);
    }

    void theFolderThatSharesTheListIsChosenHere()
    {
        Manage manage;
        manage.services.panels.answer = manage.folder.folder(u"Synk"_s);

        QTest::mouseClick(manage.button(u"Välj synkad mapp…"_s), Qt::LeftButton);

        QCOMPARE(manage.services.defaults.string(u"wendloreCloudFolder"_s),
                 manage.folder.folder(u"Synk"_s).path());
        QVERIFY(manage.says(manage.folder.folder(u"Synk"_s).path()));
        QCOMPARE(manage.services.cloud.folder, manage.folder.folder(u"Synk"_s));
    }
};

QTEST_MAIN(ManageBucketsSheetTests)
#include "ManageBucketsSheetTests.moc"
