#include "Platform/DesktopAppearance.h"

#include "Support/PrivateBus.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

/// The service that knows what the user has set in the desktop.
class SettingsPortal final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit SettingsPortal(QDBusConnection bus)
    {
        bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(u"org.freedesktop.portal.Desktop"_s);
    }

    void setScheme(uint newScheme)
    {
        scheme = newScheme;
        Q_EMIT SettingChanged(u"org.freedesktop.appearance"_s, u"color-scheme"_s, QDBusVariant(scheme));
    }
    void setAnimations(bool newAnimations)
    {
        animations = newAnimations;
        Q_EMIT SettingChanged(u"org.gnome.desktop.interface"_s, u"enable-animations"_s,
                              QDBusVariant(animations));
    }

    uint scheme = 0;
    bool animations = true;

public Q_SLOTS:
    QDBusVariant Read(const QString&, const QString& key)
    {
        const QVariant value = key == u"color-scheme"_s ? QVariant(scheme) : QVariant(animations);
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
};

class DesktopAppearanceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QGuiApplication::setPalette(Colors::of(ColorScheme::light).palette()); }

    void theDesktopsWishesAreAskedFor()
    {
        PrivateBus bus;
        SettingsPortal portal(bus.connection(u"portal"_s));
        portal.scheme = 1;
        portal.animations = false;

        const DesktopAppearance appearance(bus.connection(u"program"_s));

        QTRY_COMPARE(appearance.colorScheme(), ColorScheme::dark);
        QTRY_COMPARE(appearance.motion(), Motion::unwanted);
    }

    void changesAreFollowed()
    {
        PrivateBus bus;
        SettingsPortal portal(bus.connection(u"portal"_s));
        portal.scheme = 2;
        const DesktopAppearance appearance(bus.connection(u"program"_s));
        const QSignalSpy changed(&appearance, &DesktopAppearance::changed);

        portal.setScheme(1);
        QTRY_COMPARE(appearance.colorScheme(), ColorScheme::dark);
        QCOMPARE(changed.count(), 1);

        portal.setAnimations(false);
        QTRY_COMPARE(appearance.motion(), Motion::unwanted);
        QCOMPARE(changed.count(), 2);

        portal.setScheme(0);
        QTRY_COMPARE(appearance.colorScheme(), ColorScheme::light);
    }

    void withoutAPortalThePaletteDecides()
    {
        PrivateBus bus;
        QGuiApplication::setPalette(Colors::of(ColorScheme::dark).palette());

        const DesktopAppearance appearance(bus.connection(u"program"_s));

        QCOMPARE(appearance.colorScheme(), ColorScheme::dark);
        QCOMPARE(appearance.motion(), Motion::wanted);
    }

    void withoutABusThePaletteDecides()
    {
        const DesktopAppearance appearance(QDBusConnection(u"no such bus"_s));

        QCOMPARE(appearance.colorScheme(), ColorScheme::light);
    }
};

QTEST_MAIN(DesktopAppearanceTests)
#include "DesktopAppearanceTests.moc"
