#pragma once

#include "Look/SystemAppearance.h"

#include <QDBusConnection>
#include <QDBusVariant>

#include <optional>

namespace wendlore {

/// The desktop's colour scheme and wish for motion: asked of the settings portal, which also tells of
/// changes; where there is none, the palette that the program was started with decides.
class DesktopAppearance final : public SystemAppearance
{
    Q_OBJECT

public:
    /// Asks the settings portal on `bus`.
    explicit DesktopAppearance(QDBusConnection bus = QDBusConnection::sessionBus(),
                               QObject* parent = nullptr);

    [[nodiscard]] ColorScheme colorScheme() const override;
    [[nodiscard]] Motion motion() const override { return m_motion; }

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& group, const QString& key);
    void take(const QString& group, const QString& key, const QVariant& value);

    QDBusConnection m_bus;
    ColorScheme m_startScheme;
    std::optional<ColorScheme> m_portalScheme;
    Motion m_motion = Motion::wanted;
};

} // namespace wendlore
