#include "State/AppState.h"

#include "State/Panels.h"
#include "State/ResourceBundle.h"
#include "State/UserDefaults.h"

#include "Vault/FileCoordinator.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString typographyKey = u"wendloreTypographyTheme"_s;

std::optional<TypographyTheme> themeFrom(const std::optional<QByteArray>& json)
{
    return json ? TypographyTheme::fromJson(*json) : std::nullopt;
}

} // namespace

void AppState::restoreTypography()
{
    if (const auto stored = themeFrom(m_services.defaults.data(typographyKey))) {
        m_typographyTheme = *stored;
        return;
    }
    const FileURL shippedFile = resourceBundle().appending(u"wendlore-theme.json"_s);
    if (const auto shipped = themeFrom(m_services.coordinator.readWhole(shippedFile)))
        m_typographyTheme = *shipped;
}

void AppState::applyTypographyTheme(const TypographyTheme& theme)
{
    if (const auto json = theme.toJson())
        m_services.defaults.setData(typographyKey, *json);
    store(m_typographyTheme, theme, &AppState::typographyThemeChanged);
}

void AppState::importTypographyTheme()
{
    const auto file = m_services.panels.chooseFile(u"Importera"_s, u"Välj en wendlore-theme.json"_s,
                                                   {u"*.json"_s}, Panels::Start::lastPlace);
    if (!file)
        return;
    if (const auto theme = themeFrom(m_services.coordinator.readWhole(*file)))
        applyTypographyTheme(*theme);
}

} // namespace wendlore
