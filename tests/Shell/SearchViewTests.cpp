#include "Shell/SearchView.h"

#include "Shell/SearchField.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The search on screen over a bucket.
class Search final
{
public:
    Search()
        : state(services.services())
        , view(state)
    {
        state.switchVault(bucket.root());
        showAt(view, {240, 400});
        QApplication::setActiveWindow(&view);
        view.start();
    }

    void type(const QString& text)
    {
        field().setText(text);
        services.scheduler.finishBackgroundWork();
    }
    [[nodiscard]] SearchField& field() const { return *view.findChild<SearchField*>(); }
    [[nodiscard]] QListView& results() const { return *view.findChild<QListView*>(); }
    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < results().model()->rowCount(); ++row)
            names.append(results().model()->index(row, 0).data().toString());
        return names;
    }
    [[nodiscard]] bool saysNothingFound() const
    {
        const auto* label = view.findChild<QLabel*>();
        return label->isVisible() && label->text() == u"Inga träffar"_s;
    }

    Bucket bucket{{"Möte.md", "ring Anna"}, {"Idé.md", "  - [ ] ring Anna\n"}, {"Recept.md", "smör"}};
    FakeServices services;
    AppState state;
    SearchView view;
};

} // namespace

class SearchViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theFieldHasTheCaretAndSaysWhatItIsFor()
    {
        const Search search;

        QVERIFY(search.field().hasFocus());
        QCOMPARE(search.field().placeholderText(), u"Sök i bucketen"_s);
        QVERIFY(!search.saysNothingFound());
    }

    void everyChangeOfTheTextSearches()
    {
        Search search;

        search.type(u"anna"_s);
        QCOMPARE(search.names(), (QStringList{u"Idé"_s, u"Möte"_s}));
        search.type(u"smö"_s);
        QCOMPARE(search.names(), QStringList{u"Recept"_s});
    }

    void aTextThatNothingHoldsSaysSo()
    {
        Search search;

        search.field().setText(u"finns inte"_s);
        QVERIFY(!search.saysNothingFound()); // as long as nobody knows
        search.services.scheduler.finishBackgroundWork();

        QVERIFY(search.saysNothingFound());
        search.type(u"  "_s);
        QVERIFY(!search.saysNothingFound());
    }

    void whatWasFoundStaysUntilTheNextSearchHasEnded()
    {
        Search search;
        search.type(u"anna"_s);

        search.field().setText(u"smör"_s);

        QCOMPARE(search.names(), (QStringList{u"Idé"_s, u"Möte"_s}));
    }

    void aClickOpensTheNote()
    {
        Search search;
        search.type(u"anna"_s);
        const QModelIndex second = search.results().model()->index(1, 0);

        QTest::mouseClick(search.results().viewport(), Qt::LeftButton, {},
                          search.results().visualRect(second).center());

        QCOMPARE(search.state.selectedFile(), search.bucket.file(u"Möte.md"_s));
        QCOMPARE(search.state.takeSoughtText(search.bucket.file(u"Möte.md"_s)), u"anna"_s);
    }

    void theKeyboardReachesAndOpensResults()
    {
        Search search;
        search.type(u"anna"_s);

        QTest::keyClick(&search.field(), Qt::Key_Return);
        QCOMPARE(search.state.selectedFile(), search.bucket.file(u"Idé.md"_s));
        QTest::keyClick(&search.field(), Qt::Key_Down);
        QVERIFY(search.results().hasFocus());
        QTest::keyClick(&search.results(), Qt::Key_Down);
        QTest::keyClick(&search.results(), Qt::Key_Return);

        QCOMPARE(search.state.selectedFile(), search.bucket.file(u"Möte.md"_s));
    }

    void enterWaitsForWhatIsLookedFor()
    {
        Search search;
        search.type(u"anna"_s);

        search.field().setText(u"smör"_s);
        QTest::keyClick(&search.field(), Qt::Key_Return);
        QVERIFY(!search.state.selectedFile());
        search.services.scheduler.finishBackgroundWork();

        QTRY_COMPARE(search.state.selectedFile(), search.bucket.file(u"Recept.md"_s));
    }

    void whoTypesOnAfterEnterOpensNothing()
    {
        Search search;

        search.field().setText(u"smör"_s);
        QTest::keyClick(&search.field(), Qt::Key_Return);
        search.type(u"smö"_s);

        QCoreApplication::processEvents();
        QVERIFY(!search.state.selectedFile());
    }

    void theKeyboardLeadsBackFromTheResults()
    {
        Search search;
        QSignalSpy ended(&search.view, &SearchView::endRequested);
        search.type(u"anna"_s);
        QTest::keyClick(&search.field(), Qt::Key_Down);
        QTest::keyClick(&search.results(), Qt::Key_Down);

        QTest::keyClick(&search.results(), Qt::Key_Up);
        QVERIFY(search.results().hasFocus());
        QTest::keyClick(&search.results(), Qt::Key_Up);
        QVERIFY(search.field().hasFocus());
        QCOMPARE(search.field().selectedText(), u"anna"_s);
        QTest::keyClick(&search.field(), Qt::Key_Down);
        QTest::keyClick(&search.results(), Qt::Key_Escape);

        QCOMPARE(ended.count(), 1);
    }

    void endingItEmptiesTheFieldAndTheResults()
    {
        Search search;
        search.type(u"anna"_s);

        search.view.end();

        QCOMPARE(search.state.searchQuery(), QString());
        QVERIFY(search.state.searchResults().empty());
        QVERIFY(search.field().text().isEmpty());
    }

    void anotherBucketIsSearchedForTheSameText()
    {
        Search search;
        const Bucket other({{"Annat.md", "Anna"}});
        search.type(u"anna"_s);

        search.state.switchVault(other.root());
        search.services.scheduler.finishBackgroundWork();

        QCOMPARE(search.names(), QStringList{u"Annat"_s});
    }
};

QTEST_MAIN(SearchViewTests)
#include "SearchViewTests.moc"
