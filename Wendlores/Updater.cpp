#include "Wendlores/Updater.h"

#include "State/UserDefaults.h"
#include "Vault/PrivateDirectory.h"

#include <QFile>
#include <QHostAddress>
#include <QLoggingCategory>
#include <QNetworkReply>

#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(updateLog, "wendlore.update")

const QString feedDateKey = u"wendloreUpdateFeedDate"_s;

/// Signed or not, nothing is fetched where everybody on the way could see and hold it back.
bool isPrivate(const QUrl& address)
{
    return address.scheme() == "https"_L1 ||
           (address.scheme() == "http"_L1 && QHostAddress(address.host()).isLoopback());
}

} // namespace

Updater::Updater(Configuration configuration, UserDefaults& defaults, QObject* parent)
    : QObject(parent)
    , m_configuration(std::move(configuration))
    , m_defaults(defaults)
{
    if (isPrivate(m_configuration.feed))
        m_key = PublicKey::fromBase64(m_configuration.publicKey);
}

Updater::~Updater() = default;

void Updater::setBusy(bool isBusy)
{
    if (std::exchange(m_isBusy, isBusy) != isBusy)
        Q_EMIT canCheckForUpdatesChanged();
}

void Updater::fail()
{
    m_package.reset();
    setBusy(false);
    Q_EMIT failed();
}

void Updater::checkForUpdates()
{
    if (!canCheckForUpdates())
        return;
    setBusy(true);
    m_feed.clear();
    fetch(
        m_configuration.feed, m_configuration.largestFeed,
        [this](QIODevice& bytes) { m_feed += bytes.readAll(); }, [this] { readFeed(); });
}

void Updater::readFeed()
{
    const auto appcast = readAppcast(m_feed, *m_key);
    if (!appcast || isReplayed(*appcast)) {
        qCWarning(updateLog) << "the feed is not the publisher's newest, or broken";
        fail();
        return;
    }
    const auto newest = newestAfter(m_configuration.version, appcast->releases);
    setBusy(false);
    if (newest)
        Q_EMIT found(*newest);
    else
        Q_EMIT upToDate();
}

bool Updater::isReplayed(const Appcast& appcast)
{
    const auto known = QDateTime::fromString(m_defaults.string(feedDateKey).value_or(QString()), Qt::ISODate);
    if (known.isValid() && appcast.published < known)
        return true;
    if (appcast.published != known)
        m_defaults.setString(feedDateKey, appcast.published.toUTC().toString(Qt::ISODate));
    return false;
}

void Updater::download(const Release& release)
{
    if (!canCheckForUpdates())
        return;
    setBusy(true);
    if (release.version <= m_configuration.version || release.size > m_configuration.largestPackage ||
        !makePrivateDirectory(m_configuration.downloads)) {
        fail();
        return;
    }
    const FileURL unfinished = m_configuration.downloads.appending(u".package-XXXXXX"_s);
    m_package = std::make_unique<QTemporaryFile>(QFile::decodeName(unfinished.bytes()));
    if (!m_package->open()) {
        fail();
        return;
    }
    fetch(
        release.package, release.size, [this](QIODevice& bytes) { m_package->write(bytes.readAll()); },
        [this, release] { keepPackage(release); });
}

void Updater::keepPackage(const Release& release)
{
    const FileURL package = m_configuration.downloads.appending(release.package.fileName());
    const QString name = QFile::decodeName(package.bytes());
    if (!isGenuine(release)) {
        qCWarning(updateLog) << "the package is not the publisher's";
        fail();
        return;
    }
    QFile::remove(name); // downloaded earlier, and not installed
    if (!m_package->rename(name)) {
        fail();
        return;
    }
    m_package->setAutoRemove(false);
    m_package.reset();
    setBusy(false);
    Q_EMIT downloaded(package);
}

bool Updater::isGenuine(const Release& release)
{
    if (!m_package->flush() || m_package->size() != release.size)
        return false;
    const uchar* bytes = m_package->map(0, release.size); // not all of it in memory
    return bytes && m_key->verifies({reinterpret_cast<const char*>(bytes), qsizetype(release.size)},
                                    release.signature);
}

void Updater::fetch(const QUrl& address, qint64 limit, std::function<void(QIODevice&)> take,
                    std::function<void()> done)
{
    if (!isPrivate(address)) {
        fail();
        return;
    }
    QNetworkRequest request(address);
    request.setTransferTimeout(m_configuration.timeOut);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    QNetworkReply* reply = m_network.get(request);
    connect(reply, &QNetworkReply::readyRead, this,
            [reply, limit, take, taken = std::make_shared<qint64>(0)] {
                *taken += reply->bytesAvailable();
                if (*taken > limit)
                    reply->abort();
                else
                    take(*reply);
            });
    connect(reply, &QNetworkReply::finished, this, [this, reply, done = std::move(done)] {
        reply->deleteLater();
        if (reply->error() == QNetworkReply::NoError && isPrivate(reply->url())) {
            done();
            return;
        }
        qCWarning(updateLog) << reply->url() << reply->errorString();
        fail();
    });
}

} // namespace wendlore
