#include "Editor/EditorToolbar.h"

#include "Editor/WebEditorController.h"
#include "Fakes/FakeServices.h"
#include "Look/FlatButton.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QDialog>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A toolbar on screen over a page that is ready.
class Toolbar final
{
public:
    Toolbar()
        : state(services.services())
        , bar(state, state.editorController())
    {
        services.page->post(u"ready"_s);
        services.page->scripts.clear();
        showAt(bar, bar.sizeHint());
    }

    [[nodiscard]] QMenu& menuOf(const QString& button)
    {
        QMenu* menu = buttonNamed<FlatButton>(bar, button)->menu();
        Q_EMIT menu->aboutToShow();
        return *menu;
    }
    void choose(const QString& button, const QString& entry)
    {
        for (QAction* action : menuOf(button).actions()) {
            if (action->text() == entry)
                action->trigger();
        }
    }
    [[nodiscard]] bool sent(const QString& script) const { return services.page->scripts.contains(script); }

    FakeServices services;
    AppState state;
    EditorToolbar bar;
};

} // namespace

class EditorToolbarTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itsControlsStandInOrder()
    {
        Toolbar toolbar;

        QMap<int, QString> byPlace;
        for (const FlatButton* button : toolbar.bar.findChildren<FlatButton*>()) {
            if (button->isVisible())
                byPlace.insert(button->x(), button->accessibleName());
        }

        QCOMPARE(byPlace.values(), QStringList({u"Förminska text"_s, u"Förstora text"_s,
                                                u"Textstil: Brödtext"_s, u"Fet"_s, u"Kursiv"_s, u"Markera"_s,
                                                u"Format"_s, u"Lista"_s, u"Infoga media"_s, u"Tabell"_s}));
    }

    void zoomGoesByTenths()
    {
        Toolbar toolbar;

        QTest::mouseClick(childNamed(toolbar.bar, u"Förstora text"_s), Qt::LeftButton);
        QCOMPARE(toolbar.state.editorZoom(), 1.1);
        QTest::mouseClick(childNamed(toolbar.bar, u"Förminska text"_s), Qt::LeftButton);
        QCOMPARE(toolbar.state.editorZoom(), 1.0);
    }

    void aToggleSendsItsCommandAndWaitsForThePageToAnswer()
    {
        Toolbar toolbar;
        auto* bold = buttonNamed<IconButton>(toolbar.bar, u"Fet"_s);

        QTest::mouseClick(bold, Qt::LeftButton);
        QVERIFY(toolbar.sent(u"window.VaultEditor.exec(\"bold\")"_s));
        QVERIFY(!bold->isChecked());

        toolbar.services.page->post(u"selection"_s, QJsonObject{{u"bold"_s, true}});
        QVERIFY(bold->isChecked());
        QVERIFY(!buttonNamed<IconButton>(toolbar.bar, u"Kursiv"_s)->isChecked());
    }

    void menusSendTheirCommands()
    {
        Toolbar toolbar;

        toolbar.choose(u"Textstil: Brödtext"_s, u"Rubrik 3"_s);
        toolbar.choose(u"Lista"_s, u"Checklista"_s);
        toolbar.choose(u"Format"_s, u"Citat"_s);

        QVERIFY(toolbar.sent(u"window.VaultEditor.exec(\"heading\", 3)"_s));
        QVERIFY(toolbar.sent(u"window.VaultEditor.exec(\"taskList\")"_s));
        QVERIFY(toolbar.sent(u"window.VaultEditor.exec(\"blockquote\")"_s));
    }

    void theTableMenuFollowsTheCaret()
    {
        Toolbar toolbar;
        QCOMPARE(toolbar.menuOf(u"Tabell"_s).actions().size(), 1);

        toolbar.services.page->post(u"selection"_s, QJsonObject{{u"inTable"_s, true}});
        const QList<QAction*> entries = toolbar.menuOf(u"Tabell"_s).actions();

        QCOMPARE(std::ranges::count_if(entries, &QAction::isSeparator), 2);
        QCOMPARE(entries.size(), 10);
    }

    void theBlockMenuShowsTheBlockAtTheCaret()
    {
        Toolbar toolbar;

        toolbar.services.page->post(u"selection"_s, QJsonObject{{u"heading"_s, 2}});

        QCOMPARE(buttonNamed<LabelButton>(toolbar.bar, u"Textstil: Rubrik 2"_s)->text(), u"Rubrik 2"_s);
    }

    void theTableMenuOfATableIsItsOwn()
    {
        Toolbar toolbar;
        toolbar.services.page->post(u"selection"_s, QJsonObject{{u"inTable"_s, true}});

        toolbar.choose(u"Tabell"_s, u"Växla rubrikrad"_s);

        QVERIFY(toolbar.sent(u"window.VaultEditor.exec(\"toggleHeaderRow\")"_s));
    }

    void everyCommandGivesTheKeysBackToThePage()
    {
        Toolbar toolbar;
        const QSignalSpy focused(&toolbar.state.editorController(), &WebEditorController::focused);

        toolbar.choose(u"Lista"_s, u"Punktlista •"_s);

        QCOMPARE(focused.count(), 1);
        QCOMPARE(toolbar.services.page->scripts.last(), u"window.VaultEditor.focus()"_s);
    }

    void entriesThatAskOpenTheirDialogs_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("title");
        QTest::newRow("link") << u"Format"_s << u"Länk…"_s << u"Infoga länk"_s;
        QTest::newRow("video") << u"Infoga media"_s << u"Video / embed"_s << u"Infoga video"_s;
    }

    void entriesThatAskOpenTheirDialogs()
    {
        QFETCH(const QString, button);
        QFETCH(const QString, entry);
        QFETCH(const QString, title);
        Toolbar toolbar;

        toolbar.choose(button, entry);

        const auto* dialog = toolbar.bar.findChild<QDialog*>();
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(dialog->windowTitle(), title);
        QVERIFY(toolbar.services.page->scripts.isEmpty());
    }

    void whatFindsNoRoomStaysInReach()
    {
        Toolbar toolbar;
        toolbar.bar.resize(200, toolbar.bar.height());

        QVERIFY(!childNamed(toolbar.bar, u"Tabell"_s)->isVisible());
        const auto* more = buttonNamed<IconButton>(toolbar.bar, u"Fler kommandon"_s);
        QVERIFY(more->isVisible());
        for (QAction* action : more->menu()->actions()) {
            if (action->text() == u"Kursiv"_s)
                action->trigger();
        }

        QVERIFY(toolbar.sent(u"window.VaultEditor.exec(\"italic\")"_s));
    }
};

QTEST_MAIN(EditorToolbarTests)
#include "EditorToolbarTests.moc"
