#include "Shell/SearchResultDelegate.h"

#include "Shell/SearchResultsModel.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Colors.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QListView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// What a search in a bucket found, as the sidebar lists it.
struct Results final
{
    Results(const Bucket& bucket, const QString& query)
    {
        state.switchVault(bucket.root());
        state.setSearchQuery(query);
        state.performSearch();
        list.setModel(&model);
        list.setItemDelegate(new SearchResultDelegate(&list));
        showAt(list, {240, 200});
    }

    FakeServices services;
    AppState state{services.services()};
    SearchResultsModel model{state};
    QListView list;
};

} // namespace

class SearchResultDelegateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theNoteThatIsShownStandsOnTheSelectedGround()
    {
        const Bucket bucket({{"A.md", "x"}, {"B.md", "x"}});
        Results results(bucket, u"x"_s);
        results.state.setSelectedFile(bucket.file(u"B.md"_s));

        const QImage picture = pictureOf(*results.list.viewport());
        const auto groundOf = [&](int row) {
            const QRect area = results.list.visualRect(results.model.index(row));
            return picture.pixelColor(area.right() - 14, area.center().y());
        };

        QCOMPARE(groundOf(1), Colors::of(ColorScheme::light).selected);
        QVERIFY(groundOf(0) != groundOf(1));
    }

    void theLineStandsBelowTheNameInAQuieterColor()
    {
        const Bucket bucket({{"A.md", "MMMMMMMM"}});
        const Results results(bucket, u"mm"_s);

        const QRect row = results.list.visualRect(results.model.index(0));
        const QImage lower = pictureOf(*results.list.viewport())
                                 .copy(40, row.center().y() + 1, row.width() - 60, row.height() / 2 - 1);
        int darkest = 255;
        for (int y = 0; y < lower.height(); ++y) {
            for (int x = 0; x < lower.width(); ++x)
                darkest = std::min(darkest, qGray(lower.pixel(x, y)));
        }

        QVERIFY(darkest < 200);                                                   // there is text
        QVERIFY(darkest > qGray(Colors::of(ColorScheme::light).text.rgb()) + 20); // and it is muted
    }
};

QTEST_MAIN(SearchResultDelegateTests)
#include "SearchResultDelegateTests.moc"
