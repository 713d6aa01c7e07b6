#include "Look/StyleScrollBars.h"

#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>

using namespace wendlore;

class StyleScrollBarsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aScrollBarIsAllHandleAndRoom()
    {
        QScrollBar bar(Qt::Vertical);
        bar.setRange(0, 900);
        bar.setPageStep(100);
        bar.resize(scrollBarExtent, 200);
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.rect = bar.rect();
        option.orientation = Qt::Vertical;
        option.maximum = 900;
        option.pageStep = 100;
        const auto part = [&option](QStyle::SubControl control) { return scrollBarPart(option, control); };

        QCOMPARE(part(QStyle::SC_ScrollBarSlider), QRect(0, 0, scrollBarExtent, 32));
        option.sliderPosition = 900;
        QCOMPARE(part(QStyle::SC_ScrollBarSlider).bottom(), 199);
        QCOMPARE(part(QStyle::SC_ScrollBarSubPage).height(), 168);
        QVERIFY(part(QStyle::SC_ScrollBarAddLine).isEmpty());
        QVERIFY(part(QStyle::SC_ScrollBarSubLine).isEmpty());
    }

    void aScrollBarForAHugeRangeStaysUsable()
    {
        QStyleOptionSlider option;
        option.rect = QRect(0, 0, scrollBarExtent, 300);
        option.orientation = Qt::Vertical;
        option.maximum = 2'000'000'000;
        option.pageStep = 1'000'000;
        option.sliderPosition = option.maximum;

        const QRect handle = scrollBarPart(option, QStyle::SC_ScrollBarSlider);

        QCOMPARE(handle.height(), 32);
        QCOMPARE(handle.bottom(), 299);
    }
};

QTEST_MAIN(StyleScrollBarsTests)
#include "StyleScrollBarsTests.moc"
