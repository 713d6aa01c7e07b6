#include "Look/StyleComboBox.h"

#include "Look/Metrics.h"
#include "Support/Window.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class StyleComboBoxTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aComboBoxIsAFieldWithASignAtItsEnd()
    {
        QWidget window;
        QComboBox box(&window);
        box.addItem(u"Plats"_s);
        box.setGeometry(50, 30, 160, comboBoxHeight);
        showAt(window, {300, 100});
        box.clearFocus();
        const Colors& colors = Colors::of(ColorScheme::light);

        const QImage picture = pictureOf(box);

        QCOMPARE(picture.pixelColor(80, 0), colors.strongLine);
        for (int y = 4; y < comboBoxHeight - 4; ++y) // no gradient
            QCOMPARE(picture.pixelColor(120, y), colors.paper);
        bool hasSign = false;
        for (int x = 132; x < 158; ++x)
            hasSign = hasSign || picture.pixelColor(x, comboBoxHeight / 2) != colors.paper;
        QVERIFY(hasSign);
        QCOMPARE(box.sizeHint().height(), comboBoxHeight);
    }

    void itsListHasRoomForTheWidestText()
    {
        QWidget window;
        QComboBox box(&window);
        box.addItems({u"Senast använda"_s, u"Google Drive · anna.bergstrand"_s});
        box.adjustSize();
        showAt(window, {400, 100});

        box.showPopup();

        const int text = box.fontMetrics().horizontalAdvance(box.itemText(1));
        QVERIFY(box.view()->viewport()->width() >= text + metrics::icon + metrics::inset + 20);
    }

    void theFocusShows()
    {
        QWidget window;
        QComboBox box(&window);
        box.setGeometry(50, 30, 160, comboBoxHeight);
        showAt(window, {300, 100});

        box.setFocus();

        QCOMPARE(pictureOf(box).pixelColor(80, 1), Colors::of(ColorScheme::light).accent);
    }
};

QTEST_MAIN(StyleComboBoxTests)
#include "StyleComboBoxTests.moc"
