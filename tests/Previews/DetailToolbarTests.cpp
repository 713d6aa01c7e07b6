#include "Previews/DetailToolbar.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/FlatButton.h"
#include "Look/Metrics.h"
#include "Previews/TitleField.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class DetailToolbarTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aLongTitleLeavesRoomForTheCommands()
    {
        FakeServices services;
        AppState state(services.services());
        DetailToolbar toolbar(state);
        toolbar.setTitle(u"En mycket lång titel som aldrig kan rymmas i ett så smalt fönster"_s,
                         DetailToolbar::Title::editable);
        showAt(toolbar, {480, metrics::toolbarHeight});

        QCOMPARE(toolbar.width(), 480);
        const auto* table = childNamed(toolbar, u"Tabell"_s);
        QVERIFY(table->mapTo(&toolbar, table->rect().topRight()).x() < 480);
        QVERIFY(toolbar.findChild<TitleField*>()->width() >= 24);
    }

    void everyButtonHasANameAndAHelp()
    {
        FakeServices services;
        AppState state(services.services());
        DetailToolbar toolbar(state);

        for (const auto* button : toolbar.findChildren<IconButton*>()) {
            QVERIFY(!button->accessibleName().isEmpty());
            if (!button->isHidden())
                QVERIFY2(!button->toolTip().isEmpty(), qPrintable(button->accessibleName()));
        }
        QCOMPARE(childNamed(toolbar, u"Bakåt"_s)->toolTip(), u"Bakåt (⌘[)"_s);
    }

    void theFilesButtonsStandInTheirOrder_data()
    {
        const QString history = u"chevron.left: Bakåt (⌘[), chevron.right: Framåt (⌘])"_s;
        const QString window = history + u", macwindow.on.rectangle: Öppna filen i ett eget fönster (⌘⌥N)"_s;
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("buttons");
        QTest::newRow("nothing") << QString() << history;
        QTest::newRow("folder") << u"Mapp/"_s << history;
        QTest::newRow("note") << u"Not.md"_s << window;
        QTest::newRow("of no known kind") << u"arkiv.zip"_s << window;
        for (const QString& name : {u"A.pdf"_s, u"Bild.PNG"_s, u"Sida.Html"_s, u"Brev.docx"_s})
            QTest::newRow(qPrintable(name))
                << name << window + u", arrow.up.forward.app: Öppna i systemets standardapp"_s;
        QTest::newRow("Google") << u"Plan.gdoc"_s
                                << window + u", arrow.up.forward.app: Öppna dokumentet i webbläsaren"_s;
    }

    void theFilesButtonsStandInTheirOrder()
    {
        QFETCH(const QString, file);
        QFETCH(const QString, buttons);
        const Bucket bucket;
        FakeServices services;
        AppState state(services.services());
        state.addVault(bucket.root());
        DetailToolbar toolbar(state);
        toolbar.showEditorCommands(false);
        if (!file.isEmpty()) {
            bucket.write(file, "");
            state.setSelectedFile(file.endsWith(u'/') ? bucket.folder(file.chopped(1)) : bucket.file(file));
        }

        showAt(toolbar, {900, metrics::toolbarHeight});

        QMap<int, QString> shown;
        for (const auto* button : toolbar.findChildren<IconButton*>()) {
            if (button->isVisible())
                shown[button->x()] = button->symbol() + u": "_s + button->toolTip();
        }
        QCOMPARE(shown.values().join(u", "_s), buttons);
    }

    void aTitleThatCannotBeChangedTakesNoFocus()
    {
        FakeServices services;
        AppState state(services.services());
        DetailToolbar toolbar(state);

        toolbar.setTitle(u"Bild"_s, DetailToolbar::Title::fixed);

        QVERIFY(toolbar.findChild<TitleField*>()->isReadOnly());
        QCOMPARE(toolbar.findChild<TitleField*>()->focusPolicy(), Qt::NoFocus);
    }
};

QTEST_MAIN(DetailToolbarTests)
#include "DetailToolbarTests.moc"
