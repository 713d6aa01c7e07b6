#include "Shell/SearchResultsModel.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SearchResultsModelTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHoldsTheResultsAndTheirLines()
    {
        const Bucket bucket({{"Möte.md", "ring Anna"}, {"Anna.md", "x"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SearchResultsModel model(state);
        const QAbstractItemModelTester tester(&model);

        state.setSearchQuery(u"anna"_s);
        state.performSearch();

        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.index(0).data().toString(), u"Anna"_s);
        QCOMPARE(model.index(0).data(SearchResultsModel::SnippetRole).toString(), QString());
        QCOMPARE(model.index(0).data(Qt::AccessibleTextRole).toString(), u"Anna"_s);
        QCOMPARE(model.index(1).data(SearchResultsModel::SnippetRole).toString(), u"ring Anna"_s);
        QCOMPARE(model.index(1).data(Qt::AccessibleTextRole).toString(), u"Möte: ring Anna"_s);
        QCOMPARE(model.noteAt(model.index(1)), bucket.file(u"Möte.md"_s));
    }

    void itKnowsTheNoteThatIsShown()
    {
        const Bucket bucket({{"A.md", "x"}, {"B.md", "x"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SearchResultsModel model(state);
        state.setSearchQuery(u"x"_s);
        state.performSearch();

        state.setSelectedFile(bucket.file(u"B.md"_s));

        QVERIFY(!model.index(0).data(SearchResultsModel::IsSelectedFileRole).toBool());
        QVERIFY(model.index(1).data(SearchResultsModel::IsSelectedFileRole).toBool());
    }

    void whenTheResultsGoSoDoTheRows()
    {
        const Bucket bucket({{"A.md", "x"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        SearchResultsModel model(state);
        state.setSearchQuery(u"x"_s);
        state.performSearch();
        QCOMPARE(model.rowCount(), 1);

        state.setSearchQuery({});
        state.performSearch();

        QCOMPARE(model.rowCount(), 0);
    }
};

QTEST_GUILESS_MAIN(SearchResultsModelTests)
#include "SearchResultsModelTests.moc"
