#include "Shell/BucketSheets.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QStringList textsOf(const QWidget& sheet)
{
    QStringList texts;
    for (const auto* label : sheet.findChildren<QLabel*>())
        texts.append(label->text());
    return texts;
}

void click(const QWidget& sheet, const QString& text)
{
    for (auto* button : sheet.findChildren<QPushButton*>()) {
        if (button->text() == text) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(qPrintable(u"no button "_s + text));
}

} // namespace

class BucketSheetsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theInstructionsLeadToTheChoiceOfAFolder()
    {
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        services.panels.answer = bucket.root();
        AppState state(services.services());
        QWidget window;
        const QPointer sheet = new BucketInstructionsSheet(state, &window);
        QVERIFY(textsOf(*sheet).contains(
            u"En bucket är en vanlig mapp på din enhet eller i molnet (iCloud, Dropbox). Välj den mapp du "
            "vill använda — tryck sedan på <b>Öppna</b> i filväljaren."_s));
        sheet->open();

        click(*sheet, u"Välj mapp…"_s);

        QCOMPARE(state.vaultURL(), bucket.root());
        QTRY_VERIFY(!sheet);
    }

    void cancellingTheInstructionsAddsNothing()
    {
        FakeServices services;
        AppState state(services.services());
        QWidget window;
        const QPointer sheet = new BucketInstructionsSheet(state, &window);
        sheet->open();

        click(*sheet, u"Avbryt"_s);

        QVERIFY(services.panels.shown.isEmpty());
        QTRY_VERIFY(!sheet);
    }

    void aPendingBucketIsLinkedToTheChosenFolder()
    {
        const Bucket folder({{"Noter/A.md", ""}});
        FakeServices services;
        AppState state(services.services());
        QWidget window;
        const QPointer sheet = new PendingVaultSheet(state, {u"ID"_s, u"Noter"_s}, &window);
        QVERIFY(textsOf(*sheet).contains(u"\"Noter\" är tillgänglig från en annan enhet."_s));
        QVERIFY(textsOf(*sheet).contains(u"Välj mappen för att ge appen åtkomst på den här enheten."_s));
        sheet->open();

        click(*sheet, u"Välj mapp…"_s);
        QVERIFY(state.vaults().empty()); // the panel was cancelled
        services.panels.answer = folder.folder(u"Noter"_s);
        click(*sheet, u"Välj mapp…"_s);

        QCOMPARE(state.vaults(), std::vector{folder.folder(u"Noter"_s)});
        QCOMPARE(state.vaultURL(), folder.folder(u"Noter"_s));
        QTRY_VERIFY(!sheet);
    }
};

QTEST_MAIN(BucketSheetsTests)
#include "BucketSheetsTests.moc"
