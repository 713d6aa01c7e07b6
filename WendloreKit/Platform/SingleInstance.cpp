#include "Platform/SingleInstance.h"

#include "Platform/FileLock.h"
#include "Platform/StandardPaths.h"

#include "Vault/PrivateDirectory.h"

#include <QCryptographicHash>
#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QLoggingCategory>

#include <sys/un.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(instanceLog, "wendlore.instance")

const QString service = SingleInstance::applicationId.toString();
const QString objectPath = u'/' + SingleInstance::applicationId.toString().replace(u'.', u'/');
const QString interface = u"org.freedesktop.Application"_s;
constexpr int answerTime = 10'000; ///< milliseconds; the other one may be starting
constexpr qint64 longestRequest = 1 << 20;
constexpr auto addressesField = "addresses"_L1;
constexpr auto tokenField = "activation-token"_L1;

/// What lets the other one's window come to the front on Wayland.
QString activationToken()
{
    return qEnvironmentVariable("XDG_ACTIVATION_TOKEN", qEnvironmentVariable("DESKTOP_STARTUP_ID"));
}

bool fitsIntoSocketAddress(const FileURL& socket)
{
    return socket.bytes().size() < qsizetype(sizeof(sockaddr_un::sun_path));
}

QString nameOf(const FileURL& socket)
{
    return QFile::decodeName(socket.bytes());
}

} // namespace

/// The methods that the desktop calls.
class SingleInstance::BusInterface final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit BusInterface(SingleInstance& instance)
        : QDBusAbstractAdaptor(&instance)
        , m_instance(instance)
    {}

public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers)
    void Activate(const QVariantMap& platformData)
    {
        m_instance.take({}, platformData.value(tokenField).toString());
    }
    void Open(const QStringList& addresses, const QVariantMap& platformData)
    {
        m_instance.take(addresses, platformData.value(tokenField).toString());
    }
    void ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData)
    {
        m_instance.take({}, platformData.value(tokenField).toString());
    }

private:
    SingleInstance& m_instance;
};

SingleInstance::SingleInstance(QDBusConnection bus, FileURL socket, QObject* parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_socket(std::move(socket))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::receive);
}

SingleInstance::~SingleInstance()
{
    if (!m_isOnBus)
        return;
    m_bus.unregisterService(service);
    m_bus.unregisterObject(objectPath);
}

FileURL SingleInstance::standardSocket()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    const FileURL config = StandardPaths::configDirectory();
    if (!runtime.startsWith('/') || !QFileInfo(QFile::decodeName(runtime)).isDir())
        return StandardPaths::stateDirectory().appending(u"instance.socket"_s);
    const QByteArray user = QCryptographicHash::hash(config.bytes(), QCryptographicHash::Sha256).toHex();
    return FileURL::fromBytes(runtime, true)
        .appending(u"wendlores"_s, true)
        .appendingBytes(user.left(16) + ".socket", false);
}

SingleInstance::Role SingleInstance::claim()
{
    return claimBus() && claimSocket() ? Role::first : Role::second;
}

bool SingleInstance::claimBus()
{
    if (!m_bus.isConnected())
        return true;
    new BusInterface(*this);
    m_bus.registerObject(objectPath, this, QDBusConnection::ExportAdaptors);
    m_isOnBus = m_bus.registerService(service);
    m_isOtherOnBus = !m_isOnBus && m_bus.interface()->isServiceRegistered(service);
    return !m_isOtherOnBus;
}

bool SingleInstance::claimSocket()
{
    if (!fitsIntoSocketAddress(m_socket) || !makePrivateDirectory(m_socket.deletingLastPathComponent())) {
        qCWarning(instanceLog) << "no socket can be made at" << m_socket.path();
        return true;
    }
    // Of two that start at the same time one waits here until the other can be reached.
    const FileLock lock(FileURL::fromBytes(m_socket.bytes() + ".lock", false));
    QLocalSocket other;
    other.connectToServer(nameOf(m_socket));
    if (other.waitForConnected(answerTime))
        return false;
    QLocalServer::removeServer(nameOf(m_socket)); // what one that was killed left
    if (!m_server.listen(nameOf(m_socket)))
        qCWarning(instanceLog) << m_server.errorString();
    return true;
}

void SingleInstance::receive()
{
    while (QLocalSocket* caller = m_server.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        const auto read = [this, caller] {
            if (!caller->canReadLine()) {
                if (caller->bytesAvailable() > longestRequest)
                    caller->abort();
                return;
            }
            const auto request = QJsonDocument::fromJson(caller->readLine()).object();
            caller->write("taken\n");
            caller->flush();
            take(request[addressesField].toVariant().toStringList(), request[tokenField].toString());
        };
        connect(caller, &QLocalSocket::readyRead, this, read);
        read();
    }
}

void SingleInstance::take(const QStringList& addresses, const QString& token)
{
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    QList<QUrl> links;
    for (const QString& address : addresses)
        links.append(QUrl(address));
    if (links.isEmpty())
        Q_EMIT activated();
    else
        Q_EMIT opened(links);
}

SingleInstance::HandOver SingleInstance::handOver(const QList<QUrl>& addresses)
{
    QStringList texts;
    for (const QUrl& address : addresses)
        texts.append(QString::fromLatin1(address.toEncoded()));
    const bool isTaken = m_isOtherOnBus ? handOverByBus(texts) : handOverBySocket(texts);
    return isTaken ? HandOver::taken : HandOver::refused;
}

bool SingleInstance::handOverByBus(const QStringList& addresses)
{
    QVariantMap platformData;
    if (const QString token = activationToken(); !token.isEmpty())
        platformData = {{tokenField, token}, {u"desktop-startup-id"_s, token}};
    const QString method = addresses.isEmpty() ? u"Activate"_s : u"Open"_s;
    QDBusMessage call = QDBusMessage::createMethodCall(service, objectPath, interface, method);
    if (!addresses.isEmpty())
        call << addresses;
    call << platformData;
    return m_bus.call(call, QDBus::Block, answerTime).type() == QDBusMessage::ReplyMessage;
}

bool SingleInstance::handOverBySocket(const QStringList& addresses)
{
    QLocalSocket other;
    other.connectToServer(nameOf(m_socket));
    if (!other.waitForConnected(answerTime))
        return false;
    const QJsonObject request{{addressesField, QJsonArray::fromStringList(addresses)},
                              {tokenField, activationToken()}};
    other.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    other.flush();
    while (!other.canReadLine()) {
        if (!other.waitForReadyRead(answerTime))
            return false;
    }
    return other.readLine() == "taken\n";
}

} // namespace wendlore

#include "SingleInstance.moc"
