#include "Wendlores/Updater.h"

#include "Fakes/FakeDesktop.h"
#include "Fakes/MemoryDefaults.h"
#include "Look/NoticeBar.h"
#include "Wendlores/CheckForUpdatesView.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include <sodium.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A publisher with a key of its own.
class Publisher final
{
public:
    Publisher()
    {
        if (::sodium_init() < 0 || ::crypto_sign_keypair(m_public, m_secret) != 0)
            qFatal("no key");
    }

    [[nodiscard]] QByteArray publicKey() const
    {
        return QByteArray(reinterpret_cast<const char*>(m_public), sizeof m_public).toBase64();
    }
    [[nodiscard]] QByteArray sign(const QByteArray& bytes) const
    {
        unsigned char signature[crypto_sign_BYTES];
        ::crypto_sign_detached(signature, nullptr, reinterpret_cast<const unsigned char*>(bytes.constData()),
                               static_cast<unsigned long long>(bytes.size()), m_secret);
        return QByteArray(reinterpret_cast<const char*>(signature), sizeof signature).toBase64();
    }
    [[nodiscard]] QByteArray signedFeed(const QByteArray& content) const
    {
        return content + "<!-- ed25519: " + sign(content) + " -->\n";
    }

private:
    unsigned char m_public[crypto_sign_PUBLICKEYBYTES];
    unsigned char m_secret[crypto_sign_SECRETKEYBYTES];
};

/// A web server on this computer, for whole answers by path.
class Server final : public QTcpServer
{
public:
    Server()
    {
        if (!listen(QHostAddress::LocalHost))
            qFatal("no server");
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* caller = nextPendingConnection();
            connect(caller, &QTcpSocket::readyRead, caller, [this, caller] {
                if (isHolding || !caller->peek(1 << 16).contains("\r\n\r\n"))
                    return;
                answer(*caller, caller->readAll().split(' ').value(1));
            });
        });
    }

    [[nodiscard]] QUrl address(const QString& path) const
    {
        return QUrl(u"http://127.0.0.1:%1%2"_s.arg(serverPort()).arg(path));
    }

    QHash<QByteArray, QByteArray> files;
    QByteArray redirect;
    bool isHolding = false;
    bool announcesTooMuch = false;

private:
    void answer(QTcpSocket& caller, const QByteArray& path)
    {
        if (!redirect.isEmpty()) {
            caller.write("HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + redirect + "\r\n\r\n");
        } else if (!files.contains(path)) {
            caller.write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        } else {
            const qint64 size = files[path].size() + (announcesTooMuch ? 10 : 0);
            caller.write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                         QByteArray::number(size) + "\r\n\r\n" + files[path]);
        }
        caller.disconnectFromHost();
    }
};

/// A published version 2.0.0, and a program of version 1.0.0 that looks for it.
class Feed final
{
public:
    explicit Feed(const QByteArray& version = "2.0.0")
    {
        server.files["/p.deb"] = package;
        publish(version);
    }

    void publish(const QByteArray& version, const QByteArray& date = "Sat, 21 Nov 2026 10:00:00 +0000")
    {
        content = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\"><channel>"
                  "<lastBuildDate>" +
                  date + "</lastBuildDate><item><enclosure url=\"" + server.address(u"/p.deb"_s).toEncoded() +
                  "\" length=\"" + QByteArray::number(package.size()) + "\" version=\"" + version +
                  "\" signature=\"" + publisher.sign(package) + "\"/></item></channel></rss>\n";
        server.files["/feed.xml"] = publisher.signedFeed(content);
    }
    [[nodiscard]] Updater::Configuration configuration() const
    {
        Updater::Configuration configuration;
        configuration.feed = server.address(u"/feed.xml"_s);
        configuration.publicKey = publisher.publicKey();
        configuration.version = QVersionNumber(1, 0, 0);
        configuration.downloads = FileURL::directory(folder.filePath(u"updates"_s));
        return configuration;
    }
    [[nodiscard]] QStringList downloads() const
    {
        return QDir(folder.filePath(u"updates"_s)).entryList(QDir::Files | QDir::Hidden);
    }

    QTemporaryDir folder;
    Publisher publisher;
    Server server;
    /// What the program remembers from one check, and one run, to the next.
    MemoryDefaults defaults;
    QByteArray package = QByteArray(200'000, 'p') + "end";
    QByteArray content;
};

enum class Answer { nothing, found, upToDate, failed };

Answer check(Updater& updater, std::optional<Release>* release = nullptr)
{
    Answer answer = Answer::nothing;
    QObject scope;
    QObject::connect(&updater, &Updater::found, &scope, [&](const Release& newer) {
        answer = Answer::found;
        if (release)
            *release = newer;
    });
    QObject::connect(&updater, &Updater::upToDate, &scope, [&] { answer = Answer::upToDate; });
    QObject::connect(&updater, &Updater::failed, &scope, [&] { answer = Answer::failed; });
    updater.checkForUpdates();
    static_cast<void>(QTest::qWaitFor([&] { return answer != Answer::nothing; }, 30'000));
    return answer;
}

/// A text that is being written, and above it what the updater has to tell.
struct Desk final
{
    explicit Desk(Updater& updater)
        : view(menu, updater, workspace, notice)
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&notice);
        layout->addWidget(&text);
        window.show();
        text.setFocus();
    }

    [[nodiscard]] QAction* command() const { return menu.actions().front(); }
    void press(const QString& answer)
    {
        QCoreApplication::sendPostedEvents(); // the layout shows a new button in a moment
        for (auto* button : notice.findChildren<QPushButton*>()) {
            if (button->text() == answer && !button->isHidden())
                return button->click();
        }
        QFAIL("no such button");
    }

    QWidget window;
    NoticeBar notice{u"arrow.down.circle"_s};
    QLineEdit text;
    QMenu menu;
    FakeWorkspace workspace;
    CheckForUpdatesView view;
};

} // namespace

class UpdaterTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewerVersionIsFoundAndDownloaded()
    {
        Feed feed;
        Updater updater(feed.configuration(), feed.defaults);
        std::optional<Release> release;
        QCOMPARE(check(updater, &release), Answer::found);
        QCOMPARE(release->version, QVersionNumber(2, 0, 0));

        QSignalSpy downloaded(&updater, &Updater::downloaded);
        updater.download(*release);

        QVERIFY(downloaded.wait(30'000));
        QFile file(downloaded[0][0].value<FileURL>().path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), feed.package);
        QCOMPARE(feed.downloads(), QStringList(u"p.deb"_s));
    }

    void olderAndEqualVersionsAreNotOffered_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::newRow("equal") << QByteArray("1.0.0");
        QTest::newRow("equal, written otherwise") << QByteArray("1.0");
        QTest::newRow("old") << QByteArray("0.9.9");
        QTest::newRow("older by digits only as text") << QByteArray("0.10.0");
    }

    void olderAndEqualVersionsAreNotOffered()
    {
        QFETCH(const QByteArray, version);
        Feed feed(version);
        Updater updater(feed.configuration(), feed.defaults);

        QCOMPARE(check(updater), Answer::upToDate);
    }

    void aFeedThatIsNotThePublishersIsRefused_data()
    {
        QTest::addColumn<std::function<QByteArray(const Feed&)>>("spoil");
        const auto add = [](const char* name, const std::function<QByteArray(const Feed&)>& spoil) {
            QTest::newRow(name) << spoil;
        };
        add("truncated",
            [](const Feed& feed) { return feed.server.files["/feed.xml"].left(feed.content.size() / 2); });
        add("last byte gone", [](const Feed& feed) { return feed.server.files["/feed.xml"].chopped(5); });
        add("without a signature", [](const Feed& feed) { return feed.content; });
        add("signed by another", [](const Feed& feed) { return Publisher().signedFeed(feed.content); });
        add("signature of another feed", [](const Feed& feed) {
            return feed.content + "<!-- ed25519: " + feed.publisher.sign("x") + " -->\n";
        });
        add("signed but no XML", [](const Feed& feed) { return feed.publisher.signedFeed("<rss"); });
        add("signed but incomplete", [](const Feed& feed) {
            return feed.publisher.signedFeed("<rss><enclosure version=\"3.0\"/></rss>\n");
        });
        add("signed but without a date", [](const Feed& feed) {
            const qsizetype start = feed.content.indexOf("<lastBuildDate>");
            const qsizetype end = feed.content.indexOf("<item>");
            return feed.publisher.signedFeed(QByteArray(feed.content).remove(start, end - start));
        });
        add("empty", [](const Feed&) { return QByteArray(""); });
        add("larger than allowed",
            [](const Feed& feed) { return feed.publisher.signedFeed(QByteArray(2 << 20, ' ')); });
    }

    void aFeedThatIsNotThePublishersIsRefused()
    {
        QFETCH(const std::function<QByteArray(const Feed&)>, spoil);
        Feed feed;
        feed.server.files["/feed.xml"] = spoil(feed);
        Updater updater(feed.configuration(), feed.defaults);

        QCOMPARE(check(updater), Answer::failed);
        QVERIFY(updater.canCheckForUpdates());
    }

    void anOlderFeedThanOneSeenIsRefused()
    {
        Feed feed;
        feed.publish("1.5.0", "Sat, 21 Nov 2026 10:00:00 +0000");
        const QByteArray old = feed.server.files["/feed.xml"];
        feed.publish("2.0.0", "Sun, 22 Nov 2026 09:00:00 +0100");
        {
            Updater updater(feed.configuration(), feed.defaults);
            QCOMPARE(check(updater), Answer::found);
        }

        feed.server.files["/feed.xml"] = old;
        Updater nextRun(feed.configuration(), feed.defaults);
        QCOMPARE(check(nextRun), Answer::failed);

        feed.publish("2.0.0", "Sun, 22 Nov 2026 08:00:00 +0000"); // the same moment
        QCOMPARE(check(nextRun), Answer::found);
    }

    void aPublisherCanTakeAReleaseBack()
    {
        Feed feed;
        feed.publish("2.0.0", "Sat, 21 Nov 2026 10:00:00 +0000");
        Updater updater(feed.configuration(), feed.defaults);
        QCOMPARE(check(updater), Answer::found);

        feed.publish("1.0.0", "Sun, 22 Nov 2026 10:00:00 +0000");

        QCOMPARE(check(updater), Answer::upToDate);
    }

    void noFlippedBitOfAFeedIsOverlooked()
    {
        Feed feed;
        const auto key = PublicKey::fromBase64(feed.publisher.publicKey());
        const QByteArray whole = feed.server.files["/feed.xml"];
        QVERIFY(readAppcast(whole, *key));

        for (qsizetype place = 0; place < feed.content.size() + 20; ++place) {
            QByteArray flipped = whole;
            flipped[place] = char(flipped[place] ^ 4);
            QVERIFY2(!readAppcast(flipped, *key), qPrintable(QString::number(place)));
        }
    }

    void aPackageThatIsNotThePublishersIsDropped_data()
    {
        QTest::addColumn<QByteArray>("package");
        QTest::newRow("truncated") << QByteArray(200'000, 'p');
        QTest::newRow("changed") << QByteArray(200'000, 'p') + "eNd";
        QTest::newRow("longer") << QByteArray(200'000, 'p') + "end of it";
        QTest::newRow("empty") << QByteArray("");
    }

    void aPackageThatIsNotThePublishersIsDropped()
    {
        QFETCH(const QByteArray, package);
        Feed feed;
        feed.server.files["/p.deb"] = package;
        Updater updater(feed.configuration(), feed.defaults);
        std::optional<Release> release;
        QCOMPARE(check(updater, &release), Answer::found);

        const QSignalSpy downloaded(&updater, &Updater::downloaded);
        QSignalSpy failed(&updater, &Updater::failed);
        updater.download(*release);

        QVERIFY(failed.wait(30'000));
        QVERIFY(downloaded.isEmpty());
        QCOMPARE(feed.downloads(), QStringList());
        QVERIFY(updater.canCheckForUpdates());
    }

    void theReleaseToolMakesFeedsThatAreRead()
    {
        const QTemporaryDir folder;
        const auto run = [&folder](const QString& program, const QStringList& arguments) {
            QProcess process;
            process.setWorkingDirectory(folder.path());
            process.start(program, arguments);
            return process.waitForFinished() && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                        : QByteArray();
        };
        const QString tool = qEnvironmentVariable("WENDLORE_SOURCE_DIR") + u"/tools/sign-release"_s;
        QFile package(folder.filePath(u"p.deb"_s));
        QVERIFY(package.open(QIODevice::WriteOnly));
        package.write("a package");
        package.close();
        run(u"openssl"_s, {u"genpkey"_s, u"-algorithm"_s, u"ed25519"_s, u"-out"_s, u"key.pem"_s});

        const auto key = PublicKey::fromBase64(run(tool, {u"--public"_s, u"key.pem"_s}).trimmed());
        QVERIFY(key);
        const auto appcast = readAppcast(
            run(tool, {u"key.pem"_s, u"2.0.0"_s, u"https://x.example/p.deb"_s, u"p.deb"_s}), *key);

        QVERIFY(appcast);
        QVERIFY(std::abs(appcast->published.secsTo(QDateTime::currentDateTime())) < 600);
        QCOMPARE(appcast->releases.size(), std::size_t(1));
        QCOMPARE(appcast->releases.front().version, QVersionNumber(2, 0, 0));
        QVERIFY(key->verifies("a package", appcast->releases.front().signature));
    }

    void aServerThatSaysNoIsToldOf()
    {
        Feed feed;
        feed.server.files.clear();
        Updater updater(feed.configuration(), feed.defaults);

        QCOMPARE(check(updater), Answer::failed);
    }

    void anAnswerThatBreaksOffIsToldOf()
    {
        Feed feed;
        feed.server.announcesTooMuch = true;
        Updater updater(feed.configuration(), feed.defaults);

        QCOMPARE(check(updater), Answer::failed);
    }

    void aServerThatDoesNotAnswerIsGivenUp()
    {
        Feed feed;
        feed.server.isHolding = true;
        Updater::Configuration configuration = feed.configuration();
        configuration.timeOut = 200;
        Updater updater(configuration, feed.defaults);

        QCOMPARE(check(updater), Answer::failed);
    }

    void withoutFeedOrKeyThereAreNoChecks_data()
    {
        QTest::addColumn<QString>("feed");
        QTest::addColumn<QByteArray>("key");
        const QByteArray key = Publisher().publicKey();
        QTest::newRow("no feed") << QString() << key;
        QTest::newRow("no key") << u"https://example.com/feed.xml"_s << QByteArray();
        QTest::newRow("no such key") << u"https://example.com/feed.xml"_s << QByteArray("short");
        QTest::newRow("unprotected") << u"http://example.com/feed.xml"_s << key;
    }

    void withoutFeedOrKeyThereAreNoChecks()
    {
        QFETCH(const QString, feed);
        QFETCH(const QByteArray, key);
        Updater::Configuration configuration;
        configuration.feed = QUrl(feed);
        configuration.publicKey = key;
        configuration.version = QVersionNumber(1, 0, 0);
        MemoryDefaults defaults;
        const Updater updater(configuration, defaults);

        QVERIFY(!updater.canCheckForUpdates());
    }

    void theCommandIsDisabledWhileACheckRuns()
    {
        Feed feed("1.0.0");
        Updater updater(feed.configuration(), feed.defaults);
        const Desk desk(updater);
        QAction* command = desk.command();
        QCOMPARE(command->text(), u"Sök efter uppdateringar…"_s);
        QVERIFY(command->isEnabled());

        command->trigger();
        QVERIFY(!command->isEnabled());

        QTRY_VERIFY_WITH_TIMEOUT(command->isEnabled(), 30'000);
    }

    void thePackageIsOnlyOpenedWhenTheUserSaysSo()
    {
        Feed feed;
        Updater updater(feed.configuration(), feed.defaults);
        Desk desk(updater);

        desk.command()->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(desk.notice.accessibleName(), u"Wendlores 2.0.0 finns"_s, 30'000);
        desk.press(u"Hämta"_s);
        QCOMPARE(desk.notice.accessibleName(), u"Hämtar Wendlores 2.0.0…"_s);
        QTRY_COMPARE_WITH_TIMEOUT(desk.notice.accessibleName(), u"Den nya versionen är hämtad"_s, 30'000);
        QVERIFY(desk.workspace.files.isEmpty());
        desk.press(u"Öppna"_s);

        QCOMPARE(desk.workspace.files.size(), 1);
        QCOMPARE(desk.workspace.files[0].lastPathComponent(), u"p.deb"_s);
        QVERIFY(desk.notice.isHidden());
    }

    void nothingThatIsToldTakesTheKeysThatAreTyped_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::addColumn<QString>("title");
        QTest::newRow("newer") << QByteArray("2.0.0") << u"Wendlores 2.0.0 finns"_s;
        QTest::newRow("none") << QByteArray("1.0.0") << u"Wendlores är uppdaterat"_s;
        QTest::newRow("no feed") << QByteArray() << u"Uppdateringen gick inte att hämta"_s;
    }

    void nothingThatIsToldTakesTheKeysThatAreTyped()
    {
        QFETCH(const QByteArray, version);
        QFETCH(const QString, title);
        Feed feed(version);
        if (version.isEmpty())
            feed.server.files.clear();
        Updater updater(feed.configuration(), feed.defaults);
        Desk desk(updater);
        QVERIFY(QTest::qWaitForWindowActive(&desk.window));

        desk.command()->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(desk.notice.accessibleName(), title, 30'000);
        QTest::keyClicks(QApplication::focusWidget(), u"ett två "_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

        QCOMPARE(desk.text.text(), u"ett två "_s);
        QCOMPARE(QApplication::activeWindow(), &desk.window);
        QVERIFY(desk.notice.isVisible());
        QVERIFY(updater.canCheckForUpdates());
    }
};

QTEST_MAIN(UpdaterTests)
#include "UpdaterTests.moc"
