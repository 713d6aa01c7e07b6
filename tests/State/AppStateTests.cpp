#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class AppStateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmptyWithoutStoredState();
    void storedZoomIsRestored_data();
    void storedZoomIsRestored();
    void zoomingFromAnOddStoredZoomLandsOnATenth();
    void zoomStaysInItsRange();
    void zoomIsRoundedToTenths_data();
    void zoomIsRoundedToTenths();
    void zoomReachesTheReadyPage();
    void themeIsKept_data();
    void themeIsKept();
    void selectingWithoutABucketStoresNothing();
    void settersTellOnlyOfChanges();
    void observersSeeABucketWithItsOwnTreeAndSelection();
    void editorControllerIsGivenTheOpenBucket();
};

void AppStateTests::startsEmptyWithoutStoredState()
{
    FakeServices desktop;
    const AppState state(desktop.services());

    QVERIFY(state.vaults().empty());
    QVERIFY(!state.vaultURL());
    QVERIFY(state.fileTree().empty());
    QVERIFY(!state.selectedFile());
    QVERIFY(!state.selectedFolder());
    QVERIFY(!state.pendingFocusFile());
    QVERIFY(!state.activeDirectory());
    QCOMPARE(state.typographyTheme(), TypographyTheme::standard());
    QCOMPARE(state.editorZoom(), 1.0);
    QCOMPARE(state.history().index(), -1);
    QCOMPARE(state.theme(), AppTheme::automatic);
}

void AppStateTests::storedZoomIsRestored_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<double>("zoom");

    QTest::newRow("missing") << QVariant() << 1.0;
    QTest::newRow("zero") << QVariant(0.0) << 1.0;
    QTest::newRow("below the range") << QVariant(0.2) << 0.5;
    QTest::newRow("above the range") << QVariant(7.0) << 3.0;
    QTest::newRow("not rounded") << QVariant(1.23) << 1.23;
    QTest::newRow("negative") << QVariant(-4.0) << 0.5;
    QTest::newRow("huge") << QVariant(1e308) << 3.0;
    QTest::newRow("a text") << QVariant(u"1.5"_s) << 1.0;
}

void AppStateTests::storedZoomIsRestored()
{
    QFETCH(const QVariant, stored);
    FakeServices desktop;
    if (stored.typeId() == QMetaType::Double)
        desktop.defaults.setNumber(u"wendloreEditorZoom"_s, stored.toDouble());
    else if (stored.isValid())
        desktop.defaults.setString(u"wendloreEditorZoom"_s, stored.toString());

    const AppState state(desktop.services());

    QTEST(state.editorZoom(), "zoom");
}

void AppStateTests::zoomingFromAnOddStoredZoomLandsOnATenth()
{
    FakeServices desktop;
    desktop.defaults.setNumber(u"wendloreEditorZoom"_s, 1.23);
    AppState state(desktop.services());

    state.zoomIn();

    QCOMPARE(state.editorZoom(), 1.3);
    QCOMPARE(desktop.defaults.number(u"wendloreEditorZoom"_s), 1.3);
}

void AppStateTests::zoomStaysInItsRange()
{
    FakeServices desktop;
    AppState state(desktop.services());

    state.setEditorZoom(0.5);
    state.zoomOut();
    QCOMPARE(state.editorZoom(), 0.5);

    state.setEditorZoom(3.0);
    state.zoomIn();
    QCOMPARE(state.editorZoom(), 3.0);

    state.resetZoom();
    QCOMPARE(state.editorZoom(), 1.0);
    QCOMPARE(desktop.defaults.number(u"wendloreEditorZoom"_s), 1.0);
}

void AppStateTests::zoomIsRoundedToTenths_data()
{
    QTest::addColumn<double>("asked");
    QTest::addColumn<double>("zoom");

    QTest::newRow("down") << 1.04 << 1.0;
    QTest::newRow("half goes up") << 1.05 << 1.1;
    QTest::newRow("below the range") << -2.0 << 0.5;
    QTest::newRow("above the range") << 1e300 << 3.0;
    QTest::newRow("not a number") << qQNaN() << 0.5;
}

void AppStateTests::zoomIsRoundedToTenths()
{
    QFETCH(const double, asked);
    FakeServices desktop;
    AppState state(desktop.services());

    state.setEditorZoom(asked);

    QTEST(state.editorZoom(), "zoom");
}

void AppStateTests::zoomReachesTheReadyPage()
{
    FakeServices desktop;
    desktop.defaults.setNumber(u"wendloreEditorZoom"_s, 1.5);
    AppState state(desktop.services());
    desktop.page->post(u"ready"_s);
    QVERIFY(desktop.page->scripts.contains(
        u"document.documentElement.style.setProperty('--editor-zoom','1.5')"_s));

    state.zoomIn();

    QCOMPARE(desktop.page->scripts.last(),
             u"document.documentElement.style.setProperty('--editor-zoom','1.6')"_s);
}

void AppStateTests::themeIsKept_data()
{
    QTest::addColumn<AppTheme>("theme");
    QTest::addColumn<QString>("stored");

    QTest::newRow("automatic") << AppTheme::automatic << u"auto"_s;
    QTest::newRow("light") << AppTheme::light << u"light"_s;
    QTest::newRow("dark") << AppTheme::dark << u"dark"_s;
}

void AppStateTests::themeIsKept()
{
    QFETCH(const AppTheme, theme);
    FakeServices desktop;

    AppState(desktop.services()).setTheme(theme);

    QTEST(desktop.defaults.string(u"theme"_s).value(), "stored");
    QCOMPARE(AppState(desktop.services()).theme(), theme);
}

void AppStateTests::selectingWithoutABucketStoresNothing()
{
    const Bucket notes({{"A.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());

    state.setSelectedFile(notes.file(u"A.md"_s));

    QCOMPARE(state.selectedFile(), notes.file(u"A.md"_s));
    QVERIFY(desktop.defaults.values.isEmpty());
}

void AppStateTests::settersTellOnlyOfChanges()
{
    const Bucket notes({{"A.md", ""}, {"Mapp/", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    const QSignalSpy file(&state, &AppState::selectedFileChanged);
    const QSignalSpy folder(&state, &AppState::selectedFolderChanged);
    const QSignalSpy focus(&state, &AppState::pendingFocusFileChanged);
    const QSignalSpy zoom(&state, &AppState::editorZoomChanged);
    const QSignalSpy theme(&state, &AppState::themeChanged);

    for (int time = 0; time < 2; ++time) {
        state.setSelectedFile(notes.file(u"A.md"_s));
        state.setSelectedFolder(notes.folder(u"Mapp"_s));
        state.setPendingFocusFile(notes.file(u"A.md"_s));
        state.setEditorZoom(2.0);
        state.setTheme(AppTheme::dark);
    }

    QCOMPARE(file.count(), 1);
    QCOMPARE(folder.count(), 1);
    QCOMPARE(focus.count(), 1);
    QCOMPARE(zoom.count(), 1);
    QCOMPARE(theme.count(), 1);
}

void AppStateTests::observersSeeABucketWithItsOwnTreeAndSelection()
{
    const Bucket first({{"A.md", ""}});
    const Bucket second({{"B.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(second.root());
    state.setSelectedFile(second.file(u"B.md"_s));
    state.addVault(first.root());
    state.setSelectedFile(first.file(u"A.md"_s));
    int seen = 0;
    connect(&state, &AppState::vaultURLChanged, this, [&] {
        ++seen;
        QCOMPARE(state.fileTree().size(), 1);
        QCOMPARE(state.fileTree().front().url, second.file(u"B.md"_s));
        QCOMPARE(state.selectedFile(), second.file(u"B.md"_s));
    });

    state.switchVault(second.root());

    QCOMPARE(seen, 1);
}

void AppStateTests::editorControllerIsGivenTheOpenBucket()
{
    const Bucket notes;
    FakeServices desktop;
    AppState state(desktop.services());
    QVERIFY(!state.editorController().vaultRoot());

    state.addVault(notes.root());

    QCOMPARE(state.editorController().vaultRoot(), notes.root());
}

QTEST_GUILESS_MAIN(AppStateTests)
#include "AppStateTests.moc"
