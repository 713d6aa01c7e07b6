#include "Editor/LinkDialog.h"

#include "Editor/WebEditorController.h"

#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

class Fixture final
{
public:
    explicit Fixture(const QStringList& notes = {u"Dagbok"_s, u"Möte om budget"_s, u"Möten"_s})
        : dialog(new LinkDialog(state.editorController(), notes))
    {
        services.page->post(u"ready"_s);
        services.page->scripts.clear();
        showAt(*dialog, dialog->sizeHint());
    }
    ~Fixture() { delete dialog; }

    [[nodiscard]] QLineEdit& field(const QString& name) const
    {
        return *buttonNamed<QLineEdit>(*dialog, name);
    }
    [[nodiscard]] QLineEdit& query() const { return field(u"Sök bland noter…"_s); }
    [[nodiscard]] QListView& list() const { return *dialog->findChild<QListView*>(); }
    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            names.append(list().model()->index(row, 0).data().toString());
        return names;
    }
    template <typename Button>
    [[nodiscard]] Button* button(const QString& text) const
    {
        for (auto* button : dialog->findChildren<Button*>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    [[nodiscard]] QStringList sent() const { return services.page->scripts; }

    FakeServices services;
    AppState state{services.services()};
    QPointer<LinkDialog> dialog;
};

QString wikilink(const QString& name)
{
    return u"window.VaultEditor.exec(\"wikilink\", \"%1\")"_s.arg(name);
}

} // namespace

class LinkDialogTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void allNotesAreOfferedInTheirOrder();
    void searchingFindsNamesInAnyCase_data();
    void searchingFindsNamesInAnyCase();
    void withoutAMatchItSaysSo();
    void aClickedNoteIsLinked();
    void theKeyboardFindsAndLinksANote();
    void enterWithoutAMatchLeavesTheDialogOpen();
    void anAddressIsSentAsTyped();
    void anEmptyAddressLeavesTheDialogOpen();
    void cancellingSendsNothing();
    void enterOnCancelCancels();
    void theArrowKeysChangeWhatIsLinked();
    void aClickOnAKindLeadsToItsField();
    void insertBelongsToTheAddress();
};

void LinkDialogTests::allNotesAreOfferedInTheirOrder()
{
    Fixture f;

    QCOMPARE(f.names(), QStringList({u"Dagbok"_s, u"Möte om budget"_s, u"Möten"_s}));
    QCOMPARE(f.dialog->windowTitle(), u"Infoga länk"_s);
    QCOMPARE(f.dialog->mode(), LinkDialog::Mode::note);
    QCOMPARE(f.query().placeholderText(), u"Sök bland noter…"_s);
    QVERIFY(f.query().hasFocus());
}

void LinkDialogTests::searchingFindsNamesInAnyCase_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("found");
    const QStringList meetings{u"Möte om budget"_s, u"Möten"_s};

    QTest::newRow("upper case") << u"MÖTE"_s << meetings;
    QTest::newRow("inside the name") << u"BUDGET"_s << QStringList{u"Möte om budget"_s};
    QTest::newRow("blanks around") << u" \tmöte  "_s << meetings;
    QTest::newRow("blanks only") << u"   "_s << (QStringList{u"Dagbok"_s} + meetings);
    QTest::newRow("accents count") << u"mote"_s << QStringList();
    QTest::newRow("composed otherwise") << u"mo\u0308te"_s << meetings;
}

void LinkDialogTests::searchingFindsNamesInAnyCase()
{
    QFETCH(const QString, query);
    QFETCH(const QStringList, found);
    Fixture f;

    f.query().setText(query);

    QCOMPARE(f.names(), found);
}

void LinkDialogTests::withoutAMatchItSaysSo()
{
    Fixture f;
    const auto* nothing = f.button<QLabel>(u"Inga noter i bucketen"_s);
    QVERIFY(!nothing->isVisible());

    f.query().setText(u"zebra"_s);

    QVERIFY(nothing->isVisible());
    QVERIFY(!f.list().isVisible());
}

void LinkDialogTests::aClickedNoteIsLinked()
{
    Fixture f;

    QTest::mouseClick(f.list().viewport(), Qt::LeftButton, {},
                      f.list().visualRect(f.list().model()->index(1, 0)).center());

    QCOMPARE(f.sent(), QStringList{wikilink(u"Möte om budget"_s)});
    QVERIFY(!f.dialog->isVisible());
}

void LinkDialogTests::theKeyboardFindsAndLinksANote()
{
    Fixture f;
    QTest::keyClicks(&f.query(), u"m"_s); // not in "Dagbok"
    QCOMPARE(f.names().size(), 2);

    QTest::keyClick(&f.query(), Qt::Key_Down);
    QVERIFY(f.query().hasFocus());
    QTest::keyClick(&f.query(), Qt::Key_Return);

    QCOMPARE(f.sent(), QStringList{wikilink(u"Möten"_s)});
    QVERIFY(!f.dialog->isVisible());
}

void LinkDialogTests::enterWithoutAMatchLeavesTheDialogOpen()
{
    Fixture f{QStringList()};

    QTest::keyClick(&f.query(), Qt::Key_Return);

    QVERIFY(f.dialog->isVisible());
    QVERIFY(f.sent().isEmpty());
}

void LinkDialogTests::anAddressIsSentAsTyped()
{
    Fixture f;
    f.dialog->setMode(LinkDialog::Mode::url);
    QCOMPARE(f.field(u"URL"_s).placeholderText(), u"https://"_s);
    f.field(u"URL"_s).setText(u"  exempel.se/å b\t"_s);

    QTest::keyClick(&f.field(u"URL"_s), Qt::Key_Return);

    QCOMPARE(f.sent(), QStringList{u"window.VaultEditor.exec(\"link\", \"exempel.se\\/å b\")"_s});
    QVERIFY(!f.dialog->isVisible());
}

void LinkDialogTests::anEmptyAddressLeavesTheDialogOpen()
{
    Fixture f;
    f.dialog->setMode(LinkDialog::Mode::url);
    f.field(u"URL"_s).setText(u" \t "_s);

    f.button<QPushButton>(u"Infoga"_s)->click();

    QVERIFY(f.dialog->isVisible());
    QVERIFY(f.sent().isEmpty());
}

void LinkDialogTests::cancellingSendsNothing()
{
    Fixture f;
    f.dialog->setMode(LinkDialog::Mode::url);
    f.field(u"URL"_s).setText(u"exempel.se"_s);

    f.button<QPushButton>(u"Avbryt"_s)->click();

    QVERIFY(!f.dialog->isVisible());
    QVERIFY(f.sent().isEmpty());
}

void LinkDialogTests::enterOnCancelCancels()
{
    Fixture f;
    f.dialog->setMode(LinkDialog::Mode::url);
    f.field(u"URL"_s).setText(u"exempel.se"_s);
    auto* cancel = f.button<QPushButton>(u"Avbryt"_s);
    cancel->setFocus();

    QTest::keyClick(cancel, Qt::Key_Return);

    QVERIFY(!f.dialog->isVisible());
    QVERIFY(f.sent().isEmpty());
}

void LinkDialogTests::theArrowKeysChangeWhatIsLinked()
{
    Fixture f;
    auto* note = f.button<QRadioButton>(u"Not"_s);
    note->setFocus();

    QTest::keyClick(note, Qt::Key_Right);

    QCOMPARE(f.dialog->mode(), LinkDialog::Mode::url);
    QVERIFY(f.field(u"URL"_s).isVisible());
    QVERIFY(!f.query().isVisible());
}

void LinkDialogTests::aClickOnAKindLeadsToItsField()
{
    Fixture f;

    QTest::mouseClick(f.button<QRadioButton>(u"URL"_s), Qt::LeftButton);
    QVERIFY(f.field(u"URL"_s).hasFocus());

    QTest::mouseClick(f.button<QRadioButton>(u"Not"_s), Qt::LeftButton);
    QVERIFY(f.query().hasFocus());
}

void LinkDialogTests::insertBelongsToTheAddress()
{
    Fixture f;
    const auto* insert = f.button<QPushButton>(u"Infoga"_s);
    QVERIFY(!insert->isVisible());

    f.dialog->setMode(LinkDialog::Mode::url);
    QVERIFY(insert->isVisible());
}

QTEST_MAIN(LinkDialogTests)
#include "LinkDialogTests.moc"
