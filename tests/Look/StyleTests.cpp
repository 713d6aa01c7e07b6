#include "Look/Style.h"

#include "Look/Metrics.h"
#include "Look/StyleMenus.h"
#include "Look/StyleScrollBars.h"
#include "Support/Window.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class StyleTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { useProductLook(); }

    void theDefaultButtonStandsInTheAccentColor()
    {
        QWidget window;
        QPushButton button(u"Öppna bucket…"_s, &window);
        button.setDefault(true);
        button.move(50, 30);
        showAt(window, {300, 100});

        QCOMPARE(pictureOf(button).pixelColor(8, 5), Colors::of(ColorScheme::light).accent);

        button.setDefault(false);
        QCOMPARE(pictureOf(button).pixelColor(8, 5), Colors::of(ColorScheme::light).paper);
    }

    void aFieldWithTheFocusHasARing()
    {
        QWidget window;
        QLineEdit field(&window);
        showAt(window, {300, 100});
        field.setFocus();

        QCOMPARE(pictureOf(field).pixelColor(20, 1), Colors::of(ColorScheme::light).accent);
    }

    void controlsFollowTheDarkColors()
    {
        useProductLook(ColorScheme::dark);
        QWidget window;
        QPushButton button(u"Öppna"_s, &window);
        button.move(50, 30);
        showAt(window, {300, 100});

        QCOMPARE(pictureOf(button).pixelColor(8, 5), Colors::of(ColorScheme::dark).paper);
    }

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

    void menuEntriesAreRowsAndDividersAreThin()
    {
        QMenu menu;
        QAction* entry = menu.addAction(u"Ny not"_s);
        QAction* divider = menu.addSeparator();
        QAction* shortcut = menu.addAction(u"Avsluta"_s);
        shortcut->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
        menu.ensurePolished();

        QCOMPARE(menu.actionGeometry(entry).height(), metrics::rowHeight);
        QVERIFY(menu.actionGeometry(divider).height() < metrics::rowHeight / 2);
        QVERIFY(menu.sizeHint().width() > menu.fontMetrics().horizontalAdvance(u"Avsluta Ctrl+Q"_s));
    }

    void theChosenMenuEntryIsMarked()
    {
        QMenu menu;
        menu.addAction(u"Ny not"_s);
        QAction* second = menu.addAction(u"Avsluta"_s);
        menu.popup({0, 0});
        menu.setActiveAction(second);
        QVERIFY(QTest::qWaitForWindowExposed(&menu));

        const QRect row = menu.actionGeometry(second);
        QCOMPARE(pictureOf(menu).pixelColor(row.right() - 6, row.center().y()),
                 Colors::of(ColorScheme::light).selected);
    }

    void thingsMoveOnlyWhereMotionIsWanted()
    {
        const auto duration = [] {
            return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration);
        };

        QCOMPARE(duration(), 0);
        useProductLook(ColorScheme::light, Motion::wanted);
        QCOMPARE(duration(), 120);
    }
};

QTEST_MAIN(StyleTests)
#include "StyleTests.moc"
