#pragma once

#include "Vault/FileURL.h"

#include <QDBusConnection>
#include <QLocalServer>
#include <QObject>
#include <QUrl>

namespace wendlore {

/// Makes the program run once per user. The first one to claim is called by later ones, and by the desktop,
/// over the session bus ("org.freedesktop.Application"); a local socket does where there is no bus.
class SingleInstance final : public QObject
{
    Q_OBJECT

public:
    /// The program's name on the bus.
    static constexpr QStringView applicationId = u"example.wendlores.Wendlores";

    enum class Role { first, second };
    enum class HandOver { taken, refused };

    /// Uses `bus` when it is connected, and the socket file `socket`, whose folder need not exist.
    SingleInstance(QDBusConnection bus, FileURL socket, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// The socket for who keeps the settings in `configDirectory`.
    [[nodiscard]] static FileURL standardSocket();

    /// Finds out whether another one runs; if not, this one is called from now on.
    [[nodiscard]] Role claim();
    /// Lets the one that runs open `addresses`, or just show itself. Refused when it does not answer.
    [[nodiscard]] HandOver handOver(const QList<QUrl>& addresses);

Q_SIGNALS:
    /// Somebody wants to see the program.
    void activated();
    /// Somebody wants to see these files, folders or links in it.
    void opened(const QList<QUrl>& addresses);

private:
    class BusInterface;

    [[nodiscard]] bool claimBus();
    [[nodiscard]] bool claimSocket();
    void receive();
    void take(const QStringList& addresses, const QString& activationToken);
    [[nodiscard]] bool handOverByBus(const QStringList& addresses);
    [[nodiscard]] bool handOverBySocket(const QStringList& addresses);

    QDBusConnection m_bus;
    FileURL m_socket;
    QLocalServer m_server;
    bool m_isOnBus = false;
    bool m_isOtherOnBus = false;
};

} // namespace wendlore
