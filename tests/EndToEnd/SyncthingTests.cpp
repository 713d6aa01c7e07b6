#include "Platform/SyncedFolderStore.h"
#include "State/AppState.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"

#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString listKey = u"wendlore_synced_vaults"_s;
/// A daemon that has just been started may take this long until its first file has arrived.
constexpr int patience = 30000;

/// Everything that would leave this machine is off. %1: devices, %2: folder, %3: address.
const QString configuration = uR"(<configuration version="35">
  <folder id="wendlores" path="%2" type="sendreceive" rescanIntervalS="3600" fsWatcherEnabled="true" fsWatcherDelayS="1">
%1  </folder>
%1  <gui enabled="false" tls="false"><address>127.0.0.1:0</address></gui>
  <options>
    <listenAddress>tcp://%3</listenAddress>
    <globalAnnounceEnabled>false</globalAnnounceEnabled>
    <localAnnounceEnabled>false</localAnnounceEnabled>
    <relaysEnabled>false</relaysEnabled>
    <natEnabled>false</natEnabled>
    <urAccepted>-1</urAccepted>
    <urSeen>99</urSeen>
    <crashReportingEnabled>false</crashReportingEnabled>
    <autoUpgradeIntervalH>0</autoUpgradeIntervalH>
    <upgradeToPreReleases>false</upgradeToPreReleases>
    <startBrowser>false</startBrowser>
    <reconnectionIntervalS>1</reconnectionIntervalS>
  </options>
</configuration>
)"_s;

QString freeAddress()
{
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost))
        qFatal("no free port");
    return u"127.0.0.1:%1"_s.arg(server.serverPort());
}

/// One Syncthing daemon with a home and a folder of its own.
class Daemon final
{
public:
    Daemon()
    {
        m_folder.write(u".stfolder/"_s, "");
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        run({u"generate"_s});
        m_identity = QString::fromLatin1(run({u"--device-id"_s}).trimmed());
    }
    ~Daemon() { stop(); }

    [[nodiscard]] FileURL folder() const { return m_folder.root(); }

    void knows(const Daemon& other)
    {
        QString devices;
        for (const Daemon* daemon : {static_cast<const Daemon*>(this), &other})
            devices += u"    <device id=\"%1\"><address>tcp://%2</address></device>\n"_s.arg(
                daemon->m_identity, daemon->m_address);
        m_home.write(u"config.xml"_s, configuration.arg(devices, folder().path(), m_address).toUtf8());
    }
    [[nodiscard]] bool start()
    {
        m_process.start(u"syncthing"_s, {u"serve"_s, u"--home="_s + m_home.root().path(), u"--no-browser"_s,
                                         u"--no-restart"_s, u"--no-upgrade"_s});
        return m_process.waitForStarted();
    }
    /// Ends this daemon, by its own id.
    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.terminate();
        if (!m_process.waitForFinished(10000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    [[nodiscard]] QByteArray said() { return m_process.readAll(); }

private:
    QByteArray run(QStringList arguments)
    {
        QProcess process;
        arguments.append(u"--home="_s + m_home.root().path());
        process.start(u"syncthing"_s, arguments);
        if (!process.waitForFinished() || process.exitCode() != 0)
            qFatal("syncthing does not work: %s", process.readAllStandardError().constData());
        return process.readAllStandardOutput();
    }

    const Bucket m_home;
    const Bucket m_folder;
    const QString m_address = freeAddress();
    QString m_identity;
    QProcess m_process;
};

/// A device of the user: the program with its own settings and buckets, its list in the daemon's folder.
class Device final
{
public:
    Device(const FileURL& folder, const QString& name)
        : m_store(folder, name, m_buckets.file(u"cloud.lock"_s))
        , m_state(services())
    {}

    void add(const QString& name)
    {
        m_buckets.write(name + u'/', "");
        m_state.addVault(m_buckets.folder(name));
    }
    void remove(const QString& name) { m_state.removeBucket(m_buckets.folder(name)); }

    [[nodiscard]] QStringList pending() const { return names(m_state.pendingVaults()); }
    [[nodiscard]] QStringList list()
    {
        return names(syncedVaultEntriesFromJson(m_store.data(listKey).value_or("[]")).value());
    }
    /// Waits until the program offers exactly the buckets `names`.
    [[nodiscard]] bool comesToOffer(const QStringList& names)
    {
        QSignalSpy changed(&m_state, &AppState::pendingVaultsChanged);
        while (pending() != names) {
            if (!changed.wait(patience))
                return false;
        }
        return true;
    }

private:
    static QStringList names(const std::vector<SyncedVaultEntry>& entries)
    {
        QStringList names;
        for (const SyncedVaultEntry& entry : entries)
            names.append(entry.name);
        return names;
    }
    Services services()
    {
        const Services fakes = m_desktop.services();
        return {fakes.defaults, m_store,         fakes.bookmarks, fakes.coordinator, fakes.workspace,
                fakes.panels,   fakes.scheduler, fakes.recovered, fakes.trash,       fakes.makeEditorWebView};
    }

    const Bucket m_buckets;
    FakeServices m_desktop;
    SyncedFolderStore m_store;
    AppState m_state;
};

} // namespace

/// The list of buckets, carried between two devices by a real sync program on this machine.
class SyncthingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void bucketListFollowsTheUser();
};

void SyncthingTests::initTestCase()
{
    if (QStandardPaths::findExecutable(u"syncthing"_s).isEmpty())
        QSKIP("syncthing is not installed");
}

void SyncthingTests::bucketListFollowsTheUser()
{
    Daemon here;
    Daemon there;
    here.knows(there);
    there.knows(here);
    Device first(here.folder(), u"a1"_s);
    Device second(there.folder(), u"b2"_s);
    QVERIFY(here.start());
    QVERIFY(there.start());

    // Added on one, offered on the other, and no longer once it is linked there.
    first.add(u"Anteckningar"_s);
    first.add(u"Dagbok å"_s);
    QVERIFY2(second.comesToOffer({u"Anteckningar"_s, u"Dagbok å"_s}), here.said() + there.said());
    second.add(u"Anteckningar"_s);
    QCOMPARE(second.pending(), QStringList{u"Dagbok å"_s});

    // Removed on one, no longer offered on the other.
    first.remove(u"Anteckningar"_s);
    first.remove(u"Dagbok å"_s);
    QVERIFY2(second.comesToOffer({}), here.said() + there.said());
    QVERIFY(first.pending().isEmpty());

    // Both add while they cannot reach each other.
    here.stop();
    there.stop();
    first.add(u"Hem"_s);
    second.add(u"Arbete"_s);
    QVERIFY(first.pending().isEmpty());
    QVERIFY(second.pending().isEmpty());
    QVERIFY(here.start());
    QVERIFY(there.start());
    QVERIFY2(first.comesToOffer({u"Arbete"_s}), here.said() + there.said());
    QVERIFY2(second.comesToOffer({u"Hem"_s}), here.said() + there.said());
    QCOMPARE(first.list(), second.list());
    QCOMPARE(first.list().size(), 2);
}

QTEST_GUILESS_MAIN(SyncthingTests)
#include "SyncthingTests.moc"
