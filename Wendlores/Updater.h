#pragma once

#include "Wendlores/Appcast.h"
#include "Wendlores/Signature.h"

#include "Vault/FileURL.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QTemporaryFile>

#include <functional>
#include <memory>

class QNetworkReply;

namespace wendlore {

class UserDefaults;

/// Looks for a newer version in the publisher's signed feed and downloads its package when asked to. Nothing
/// is ever installed, older versions are never offered, and what is not signed by the publisher is dropped.
/// So is a feed older than one that was read before: somebody replays it, to hide what came since.
class Updater final : public QObject
{
    Q_OBJECT

public:
    struct Configuration final
    {
        QUrl feed;            ///< over HTTPS, or on this computer; empty switches the updater off
        QByteArray publicKey; ///< of the publisher, Ed25519 in Base64
        QVersionNumber version;
        FileURL downloads; ///< the folder for packages; need not exist
        qint64 largestFeed = 1 << 20;
        qint64 largestPackage = qint64(1) << 30;
        int timeOut = 30'000; ///< milliseconds without a byte
    };

    /// Remembers in `defaults`, which outlive the updater, how new the feed was.
    Updater(Configuration configuration, UserDefaults& defaults, QObject* parent = nullptr);
    ~Updater() override;

    /// Whether a check may be started: there is a feed, and nothing is under way.
    [[nodiscard]] bool canCheckForUpdates() const { return m_key && !m_isBusy; }
    void checkForUpdates();
    /// Downloads the package of the release that was found; answers with `downloaded` or `failed`.
    void download(const Release& release);

Q_SIGNALS:
    void canCheckForUpdatesChanged();
    /// The answers to a check: a newer release, none, or that nobody could tell.
    void found(const wendlore::Release& release);
    void upToDate();
    void failed();
    /// The package lies there, and it is the publisher's.
    void downloaded(const wendlore::FileURL& package);

private:
    void fetch(const QUrl& address, qint64 limit, std::function<void(QIODevice&)> take,
               std::function<void()> done);
    void readFeed();
    [[nodiscard]] bool isReplayed(const Appcast& appcast);
    void keepPackage(const Release& release);
    [[nodiscard]] bool isGenuine(const Release& release);
    void setBusy(bool isBusy);
    void fail();

    Configuration m_configuration;
    UserDefaults& m_defaults;
    std::optional<PublicKey> m_key;
    QNetworkAccessManager m_network;
    QByteArray m_feed;
    std::unique_ptr<QTemporaryFile> m_package;
    bool m_isBusy = false;
};

} // namespace wendlore
