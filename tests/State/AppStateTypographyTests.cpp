#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString typographyKey = u"wendloreTypographyTheme"_s;

TypographyTheme ownTheme()
{
    TypographyTheme theme = TypographyTheme::standard();
    theme.body.fontFamilyKey = u"georgia"_s;
    theme.h1.fontSize = 31.5;
    return theme;
}

/// The own theme's file without the key "uppercase" in one level.
QByteArray incompleteFile()
{
    QByteArray file = *ownTheme().toJson();
    const qsizetype start = file.lastIndexOf(",\"uppercase\"");
    return file.remove(start, file.indexOf('}', start) - start);
}

} // namespace

class AppStateTypographyTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void importedThemeIsCurrentAtOnceAndAfterARestart();
    void importAsksForAThemeFile();
    void importOfWhatIsNoThemeChangesNothing_data();
    void importOfWhatIsNoThemeChangesNothing();
    void importOfAVanishedFileChangesNothing();
    void cancelledImportChangesNothing();
    void applyingTheSameThemeTellsNobody();
    void themeThatCannotBeStoredIsCurrentForThisRun();
    void unreadableStoredThemeGivesTheStandardOne_data();
    void unreadableStoredThemeGivesTheStandardOne();
};

void AppStateTypographyTests::importedThemeIsCurrentAtOnceAndAfterARestart()
{
    const Bucket files({{"tema.json", ""}});
    files.write(u"tema.json"_s, *ownTheme().toJson());
    FakeServices desktop;
    AppState state(desktop.services());
    const QSignalSpy changed(&state, &AppState::typographyThemeChanged);
    desktop.panels.answer = files.file(u"tema.json"_s);

    state.importTypographyTheme();

    QCOMPARE(state.typographyTheme(), ownTheme());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(AppState(desktop.services()).typographyTheme(), ownTheme());
}

void AppStateTypographyTests::importAsksForAThemeFile()
{
    FakeServices desktop;
    AppState state(desktop.services());

    state.importTypographyTheme();

    QCOMPARE(desktop.panels.shown, QStringList{u"Importera|Välj en wendlore-theme.json|*.json"_s});
}

void AppStateTypographyTests::importOfWhatIsNoThemeChangesNothing_data()
{
    QTest::addColumn<QByteArray>("file");

    QTest::newRow("without one key") << incompleteFile();
    QTest::newRow("a number as text") << ownTheme().toJson()->replace("31.5", "\"31.5\"");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("# Anteckning");
    QTest::newRow("huge") << QByteArray(20000000, ' ');
}

void AppStateTypographyTests::importOfWhatIsNoThemeChangesNothing()
{
    QFETCH(const QByteArray, file);
    const Bucket files;
    files.write(u"tema.json"_s, file);
    FakeServices desktop;
    AppState state(desktop.services());
    state.applyTypographyTheme(ownTheme());
    const QByteArray stored = *desktop.defaults.data(typographyKey);
    desktop.panels.answer = files.file(u"tema.json"_s);

    state.importTypographyTheme();

    QCOMPARE(state.typographyTheme(), ownTheme());
    QCOMPARE(desktop.defaults.data(typographyKey), stored);
}

void AppStateTypographyTests::importOfAVanishedFileChangesNothing()
{
    const Bucket files;
    FakeServices desktop;
    AppState state(desktop.services());
    desktop.panels.answer = files.file(u"tema.json"_s);

    state.importTypographyTheme();

    QCOMPARE(state.typographyTheme(), TypographyTheme::standard());
}

void AppStateTypographyTests::cancelledImportChangesNothing()
{
    FakeServices desktop;
    AppState state(desktop.services());
    const QSignalSpy changed(&state, &AppState::typographyThemeChanged);

    state.importTypographyTheme();

    QCOMPARE(changed.count(), 0);
    QVERIFY(desktop.defaults.values.isEmpty());
}

void AppStateTypographyTests::applyingTheSameThemeTellsNobody()
{
    FakeServices desktop;
    AppState state(desktop.services());
    state.applyTypographyTheme(ownTheme());
    const QSignalSpy changed(&state, &AppState::typographyThemeChanged);

    state.applyTypographyTheme(ownTheme());

    QCOMPARE(changed.count(), 0);
}

void AppStateTypographyTests::themeThatCannotBeStoredIsCurrentForThisRun()
{
    FakeServices desktop;
    AppState state(desktop.services());
    TypographyTheme endless = ownTheme();
    endless.h5.indent = qInf();
    state.applyTypographyTheme(ownTheme());

    state.applyTypographyTheme(endless);

    QCOMPARE(state.typographyTheme(), endless);
    QCOMPARE(AppState(desktop.services()).typographyTheme(), ownTheme());
}

void AppStateTypographyTests::unreadableStoredThemeGivesTheStandardOne_data()
{
    using Value = MemoryDefaults::Value;
    QTest::addColumn<Value>("stored");

    QTest::newRow("broken off") << Value(ownTheme().toJson()->chopped(3));
    QTest::newRow("without one key") << Value(incompleteFile());
    QTest::newRow("a text") << Value(QString::fromUtf8(*ownTheme().toJson()));
    QTest::newRow("a list") << Value(QByteArrayList{*ownTheme().toJson()});
    QTest::newRow("a number") << Value(7.0);
    QTest::newRow("huge") << Value(QByteArray(20000000, '['));
}

void AppStateTypographyTests::unreadableStoredThemeGivesTheStandardOne()
{
    QFETCH(const MemoryDefaults::Value, stored);
    FakeServices desktop;
    desktop.defaults.values[typographyKey] = stored;

    QCOMPARE(AppState(desktop.services()).typographyTheme(), TypographyTheme::standard());
}

QTEST_GUILESS_MAIN(AppStateTypographyTests)
#include "AppStateTypographyTests.moc"
