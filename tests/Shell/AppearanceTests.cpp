#include "Shell/Appearance.h"

#include "Fakes/FakeServices.h"
#include "Look/Style.h"
#include "Look/SystemAppearance.h"
#include "State/AppState.h"

#include <QApplication>
#include <QTest>

using namespace wendlore;

namespace {

class FakeSystem final : public SystemAppearance
{
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return scheme; }
    [[nodiscard]] Motion motion() const override { return wishedMotion; }

    void become(ColorScheme newScheme, Motion newMotion)
    {
        scheme = newScheme;
        wishedMotion = newMotion;
        Q_EMIT changed();
    }

    ColorScheme scheme = ColorScheme::light;
    Motion wishedMotion = Motion::wanted;
};

ColorScheme shownScheme()
{
    return schemeOf(QApplication::palette());
}

} // namespace

class AppearanceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void automaticFollowsTheDesktop()
    {
        FakeServices services;
        AppState state(services.services());
        FakeSystem system;
        Style style;
        const Appearance appearance(state, system, style);
        QCOMPARE(shownScheme(), ColorScheme::light);

        system.become(ColorScheme::dark, Motion::wanted);

        QCOMPARE(shownScheme(), ColorScheme::dark);
        QCOMPARE(appearance.colorScheme(), ColorScheme::dark);
    }

    void aChoiceOfTheUserWins()
    {
        FakeServices services;
        AppState state(services.services());
        FakeSystem system;
        Style style;
        const Appearance appearance(state, system, style);

        state.setTheme(AppTheme::dark);
        QCOMPARE(shownScheme(), ColorScheme::dark);
        state.setTheme(AppTheme::light);
        system.become(ColorScheme::dark, Motion::wanted);

        QCOMPARE(shownScheme(), ColorScheme::light);
    }

    void motionIsTheDesktopsToDecide()
    {
        FakeServices services;
        AppState state(services.services());
        FakeSystem system;
        Style style;
        const Appearance appearance(state, system, style);
        QVERIFY(style.styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, nullptr, nullptr) > 0);

        system.become(ColorScheme::light, Motion::unwanted);

        QCOMPARE(style.styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, nullptr, nullptr), 0);
    }
};

QTEST_MAIN(AppearanceTests)
#include "AppearanceTests.moc"
