#include "State/AppState.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"

#include "Vault/EntryURLs.h"

#include <QSignalSpy>
#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

SearchHit hit(const Bucket& bucket, std::string_view name, std::string_view snippet)
{
    EntryURLs urls(bucket.root(), name.size() + snippet.size());
    return {urls, name, false, snippet};
}

} // namespace

class AppStateSearchTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("LC_ALL", "sv_SE.UTF-8"); }
    void theQuerysOuterBlanksDoNotCount();
    void aBlankQueryFindsNothing();
    void withoutABucketNothingIsFound();
    void everySearchReadsTheDiskAnew();
    void aSearchInTheBackgroundShowsItsResultsWhenItEnds();
    void ofSearchesInTheBackgroundTheLastQueryWins();
    void aBlankQueryEndsASearchInTheBackground();
    void noteNamesAreSortedAndEachOnce();
    void onlyMarkdownNotesAreOfferedByName();
};

void AppStateSearchTests::theQuerysOuterBlanksDoNotCount()
{
    const Bucket bucket({{"Möte.md", ""}, {"B.md", "vårt MÖTE"}, {"C.md", "mote"}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    const QSignalSpy changes(&state, &AppState::searchResultsChanged);

    state.setSearchQuery(u" \tmöte "_s);
    state.performSearch();

    QCOMPARE(changes.count(), 1);
    QCOMPARE(state.searchResults(),
             (std::vector<SearchHit>{hit(bucket, "B.md", "vårt MÖTE"), hit(bucket, "Möte.md", "")}));
}

void AppStateSearchTests::aBlankQueryFindsNothing()
{
    const Bucket bucket({{"A.md", "a b"}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    state.setSearchQuery(u"a"_s);
    state.performSearch();
    QCOMPARE(state.searchResults().size(), 1U);

    state.setSearchQuery(u" \t "_s);
    state.performSearch();

    QVERIFY(state.searchResults().empty());
}

void AppStateSearchTests::withoutABucketNothingIsFound()
{
    FakeServices desktop;
    AppState state(desktop.services());

    state.setSearchQuery(u"a"_s);
    state.performSearch();

    QVERIFY(state.searchResults().empty());
    QVERIFY(state.noteNames().isEmpty());
}

void AppStateSearchTests::everySearchReadsTheDiskAnew()
{
    const Bucket bucket({{"A.md", "anna"}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    state.setSearchQuery(u"anna"_s);
    state.performSearch();

    bucket.write(u"A.md"_s, "björn");
    bucket.write(u"Ny.md"_s, "ring Anna");
    state.performSearch();

    QCOMPARE(state.searchResults(), (std::vector<SearchHit>{hit(bucket, "Ny.md", "ring Anna")}));
}

void AppStateSearchTests::aSearchInTheBackgroundShowsItsResultsWhenItEnds()
{
    const Bucket bucket({{"A.md", "ring Anna"}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    state.setSearchQuery(u"anna"_s);

    state.performSearchInBackground();
    QVERIFY(state.isSearching());
    QVERIFY(state.searchResults().empty());
    desktop.scheduler.finishBackgroundWork();

    QVERIFY(!state.isSearching());
    QCOMPARE(state.searchResults(), (std::vector<SearchHit>{hit(bucket, "A.md", "ring Anna")}));
}

void AppStateSearchTests::ofSearchesInTheBackgroundTheLastQueryWins()
{
    const Bucket bucket({{"A.md", "ett"}, {"B.md", "två"}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());

    state.setSearchQuery(u"ett"_s);
    state.performSearchInBackground();
    state.setSearchQuery(u"två"_s);
    state.performSearchInBackground();
    QCOMPARE(desktop.scheduler.pendingBackgroundWork(), 1);
    desktop.scheduler.finishNextBackgroundWork();
    QVERIFY(state.searchResults().empty());
    QVERIFY(state.isSearching());
    desktop.scheduler.finishNextBackgroundWork();

    QVERIFY(!state.isSearching());
    QCOMPARE(state.searchResults(), (std::vector<SearchHit>{hit(bucket, "B.md", "två")}));
}

void AppStateSearchTests::aBlankQueryEndsASearchInTheBackground()
{
    const Bucket bucket({{"A.md", "ett"}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());
    state.setSearchQuery(u"ett"_s);
    state.performSearchInBackground();

    state.setSearchQuery({});
    state.performSearchInBackground();
    desktop.scheduler.finishBackgroundWork();

    QVERIFY(!state.isSearching());
    QVERIFY(state.searchResults().empty());
}

void AppStateSearchTests::noteNamesAreSortedAndEachOnce()
{
    const Bucket bucket({{"Not 10.md", ""},
                         {"a/Plan.md", ""},
                         {"b/Plan.md", ""},
                         {"b/PLAN.md", ""},
                         {"Not 2.MD", ""},
                         {"Å.md", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());

    QCOMPARE(state.noteNames(), QStringList({u"Not 2"_s, u"Not 10"_s, u"PLAN"_s, u"Plan"_s, u"Å"_s}));
}

void AppStateSearchTests::onlyMarkdownNotesAreOfferedByName()
{
    const Bucket bucket({{"A.md", ""}, {"B.txt", ""}, {"C.markdown", ""}, {"D.pdf", ""}});
    FakeServices desktop;
    AppState state(desktop.services());
    state.addVault(bucket.root());

    QCOMPARE(state.noteNames(), QStringList({u"A"_s}));
}

QTEST_GUILESS_MAIN(AppStateSearchTests)
#include "AppStateSearchTests.moc"
