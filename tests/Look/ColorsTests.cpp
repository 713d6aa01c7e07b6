#include "Look/Colors.h"

#include <QTest>

#include <cmath>

using namespace wendlore;

namespace {

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

class ColorsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingCanBeReadOnItsGround_data()
    {
        using Color = QColor Colors::*;
        struct Use
        {
            const char* name;
            Color ink;
            Color ground;
            double least;
        };
        const Use uses[] = {
            {"text on paper", &Colors::text, &Colors::paper, 4.5},
            {"text in the sidebar", &Colors::text, &Colors::side, 4.5},
            {"text on hover", &Colors::text, &Colors::hover, 4.5},
            {"secondary text on paper", &Colors::muted, &Colors::paper, 4.5},
            {"secondary text in the sidebar", &Colors::muted, &Colors::side, 4.5},
            {"icons on hover", &Colors::muted, &Colors::hover, 3},
            {"small print in the sidebar", &Colors::faintText, &Colors::side, 4.5},
            {"placeholder on paper", &Colors::faintText, &Colors::paper, 4.5},
            {"disclosure in the sidebar", &Colors::faint, &Colors::side, 3},
            {"selected row", &Colors::selectedText, &Colors::selected, 4.5},
            {"links", &Colors::accent, &Colors::paper, 4.5},
            {"bucket symbol", &Colors::accent, &Colors::side, 3},
            {"primary button", &Colors::onAccent, &Colors::accent, 4.5},
            {"destructive entry", &Colors::destructive, &Colors::paper, 4.5},
            {"text on highlight", &Colors::text, &Colors::highlight, 4.5},
        };
        QTest::addColumn<QColor>("ink");
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<double>("least");
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            const Colors& colors = Colors::of(scheme);
            for (const Use& use : uses)
                QTest::addRow("%s, %s", use.name, scheme == ColorScheme::dark ? "dark" : "light")
                    << colors.*use.ink << colors.*use.ground << use.least;
        }
    }

    void everythingCanBeReadOnItsGround()
    {
        QFETCH(const QColor, ink);
        QFETCH(const QColor, ground);
        QFETCH(const double, least);

        const double reached = contrast(ink, ground);

        QVERIFY2(reached >= least, qPrintable(QString::number(reached)));
    }

    void aPaletteTellsWhichColorsItWasMadeOf()
    {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            QPalette palette = Colors::of(scheme).palette();
            QCOMPARE(schemeOf(palette), scheme);

            palette.setColor(QPalette::Window, Colors::of(scheme).side);
            QCOMPARE(&Colors::of(palette), &Colors::of(scheme));
        }
    }
};

QTEST_GUILESS_MAIN(ColorsTests)
#include "ColorsTests.moc"
