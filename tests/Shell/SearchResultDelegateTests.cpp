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

class SearchResultDelegateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theNoteThatIsShownStandsOnTheSelectedGround()
    {
        const Bucket bucket({{"A.md", "x"}, {"B.md", "x"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        state.setSearchQuery(u"x"_s);
        state.performSearch();
        SearchResultsModel model(state);
        QListView list;
        list.setModel(&model);
        list.setItemDelegate(new SearchResultDelegate(&list));
        showAt(list, {240, 200});
        state.setSelectedFile(bucket.file(u"B.md"_s));

        const QImage picture = pictureOf(*list.viewport());
        const auto groundOf = [&](int row) {
            const QRect area = list.visualRect(model.index(row));
            return picture.pixelColor(area.right() - 14, area.center().y());
        };

        QCOMPARE(groundOf(1), Colors::of(ColorScheme::light).selected);
        QVERIFY(groundOf(0) != groundOf(1));
    }

    void theLineStandsBelowTheNameInAQuieterColor()
    {
        const Bucket bucket({{"A.md", "MMMMMMMM"}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        state.setSearchQuery(u"mm"_s);
        state.performSearch();
        SearchResultsModel model(state);
        QListView list;
        list.setModel(&model);
        list.setItemDelegate(new SearchResultDelegate(&list));
        showAt(list, {240, 200});

        const QRect row = list.visualRect(model.index(0));
        const QImage lower = pictureOf(*list.viewport())
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
