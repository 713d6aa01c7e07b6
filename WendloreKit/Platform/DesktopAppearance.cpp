#include "Platform/DesktopAppearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QStyleHints>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString schemeKey = u"color-scheme"_s;
const QString desktopGroup = u"org.gnome.desktop.interface"_s;
const QString animationsKey = u"enable-animations"_s;

/// The portal's answer to "Read" wraps the value twice.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(QDBusConnection bus, QObject* parent)
    : SystemAppearance(parent)
    , m_bus(std::move(bus))
    , m_startScheme(schemeOf(QGuiApplication::palette()))
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this,
            &DesktopAppearance::changed);
#endif
    if (!m_bus.isConnected())
        return;
    m_bus.connect(service, path, settings, u"SettingChanged"_s, this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearanceGroup, schemeKey);
    ask(desktopGroup, animationsKey);
}

ColorScheme DesktopAppearance::colorScheme() const
{
    if (m_portalScheme)
        return *m_portalScheme;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    const Qt::ColorScheme scheme = QGuiApplication::styleHints()->colorScheme();
    if (scheme != Qt::ColorScheme::Unknown)
        return scheme == Qt::ColorScheme::Dark ? ColorScheme::dark : ColorScheme::light;
#endif
    return m_startScheme;
}

void DesktopAppearance::ask(const QString& group, const QString& key)
{
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, settings, u"Read"_s);
    question << group << key;
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, group, key] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid())
            take(group, key, reply.value().variant());
        answer->deleteLater();
    });
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    take(group, key, value.variant());
}

void DesktopAppearance::take(const QString& group, const QString& key, const QVariant& value)
{
    const auto schemeBefore = colorScheme();
    const Motion motionBefore = m_motion;
    if (group == appearanceGroup && key == schemeKey) {
        // 0: no preference, 1: dark, 2: light
        const uint scheme = unwrapped(value).toUInt();
        m_portalScheme.reset();
        if (scheme == 1 || scheme == 2)
            m_portalScheme = scheme == 1 ? ColorScheme::dark : ColorScheme::light;
    } else if (group == desktopGroup && key == animationsKey) {
        m_motion = unwrapped(value).toBool() ? Motion::wanted : Motion::unwanted;
    }
    if (colorScheme() != schemeBefore || m_motion != motionBefore)
        Q_EMIT changed();
}

} // namespace wendlore
