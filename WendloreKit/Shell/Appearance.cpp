#include "Shell/Appearance.h"

#include "Look/Fonts.h"
#include "Look/Style.h"

#include "Look/SystemAppearance.h"
#include "State/AppState.h"

#include <QApplication>
#include <QToolTip>

namespace wendlore {

Appearance::Appearance(AppState& state, SystemAppearance& system, Style& style, QObject* parent)
    : QObject(parent)
    , m_state(state)
    , m_system(system)
    , m_style(style)
{
    QApplication::setFont(interfaceFont());
    connect(&state, &AppState::themeChanged, this, &Appearance::apply);
    connect(&system, &SystemAppearance::changed, this, &Appearance::apply);
    apply();
}

ColorScheme Appearance::colorScheme() const
{
    switch (m_state.theme()) {
    case AppTheme::light:
        return ColorScheme::light;
    case AppTheme::dark:
        return ColorScheme::dark;
    case AppTheme::automatic:
        break;
    }
    return m_system.colorScheme();
}

void Appearance::apply()
{
    m_style.setMotion(m_system.motion());
    const QPalette palette = Colors::of(colorScheme()).palette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

} // namespace wendlore
