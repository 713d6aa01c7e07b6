#include "Look/Style.h"

#include "Support/Window.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
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

    void aFieldIsClearedByTheSymbolOfTheSearchField()
    {
        const QIcon clear = QApplication::style()->standardIcon(QStyle::SP_LineEditClearButton);

        QCOMPARE(clear.name(), u"xmark.circle.fill"_s);
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
