#include "Look/RowDelegate.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"
#include "Support/Window.h"

#include <QListView>
#include <QStringListModel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class RowDelegateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCurrentRowStandsOnItsGround_data()
    {
        QTest::addColumn<ColorScheme>("scheme");
        QTest::newRow("light") << ColorScheme::light;
        QTest::newRow("dark") << ColorScheme::dark;
    }

    void theCurrentRowStandsOnItsGround()
    {
        QFETCH(const ColorScheme, scheme);
        useProductLook(scheme);
        QStringListModel model({u"A"_s, u"B"_s});
        QListView list;
        list.setFrameShape(QFrame::NoFrame);
        list.setModel(&model);
        list.setItemDelegate(new RowDelegate(u"doc.text"_s, &list));
        showAt(list, {200, 2 * metrics::rowHeight});

        list.setCurrentIndex(model.index(1));

        const QImage picture = pictureOf(list);
        const int right = 150;
        QCOMPARE(picture.pixelColor(right, metrics::rowHeight / 2), Colors::of(scheme).paper);
        QCOMPARE(picture.pixelColor(right, metrics::rowHeight * 3 / 2), Colors::of(scheme).selected);
    }
};

QTEST_MAIN(RowDelegateTests)
#include "RowDelegateTests.moc"
