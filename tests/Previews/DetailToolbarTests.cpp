#include "Previews/DetailToolbar.h"

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
