#include "Platform/DesktopWorkspace.h"

#include "Support/PrivateBus.h"

#include <QDesktopServices>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

/// Takes the addresses that the desktop would open.
class AddressReceiver final : public QObject
{
    Q_OBJECT

public:
    explicit AddressReceiver(const QString& scheme)
        : m_scheme(scheme)
    {
        QDesktopServices::setUrlHandler(m_scheme, this, "receive");
    }
    ~AddressReceiver() override { QDesktopServices::unsetUrlHandler(m_scheme); }

    QList<QUrl> addresses;

public Q_SLOTS:
    void receive(const QUrl& address) { addresses.append(address); }

private:
    QString m_scheme;
};

/// The service that knows the computer's name.
class HostnameService final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.hostname1")
    Q_PROPERTY(QString PrettyHostname MEMBER prettyName)

public:
    QString prettyName;
};

class DesktopWorkspaceTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addressesAreHandedToTheDesktop();
    void filesAreHandedToTheDesktop_data();
    void filesAreHandedToTheDesktop();
    void addressThatCannotBeOpenedIsLogged();
    void ownersNameOfTheComputerComesFirst();
    void networkNameIsUsedWithoutAnOwnersName();
    void networkNameIsUsedWithoutABus();
};

void DesktopWorkspaceTests::addressesAreHandedToTheDesktop()
{
    AddressReceiver desktop(u"https"_s);

    DesktopWorkspace().open(QUrl(u"https://example.org/å?q=1#a"_s));

    QCOMPARE(desktop.addresses, QList{QUrl(u"https://example.org/å?q=1#a"_s)});
}

void DesktopWorkspaceTests::filesAreHandedToTheDesktop_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("address");

    QTest::newRow("plain") << QByteArray("/notes/A.pdf") << QByteArray("file:///notes/A.pdf");
    QTest::newRow("odd characters") << QByteArray("/a b/50% #1?.pdf")
                                    << QByteArray("file:///a%20b/50%25%20%231%3F.pdf");
    QTest::newRow("Swedish") << QByteArray("/\xc3\xa5r.pdf") << QByteArray("file:///%C3%A5r.pdf");
    QTest::newRow("not UTF-8") << QByteArray("/\xe5r.pdf") << QByteArray("file:///%E5r.pdf");
}

void DesktopWorkspaceTests::filesAreHandedToTheDesktop()
{
    QFETCH(const QByteArray, path);
    AddressReceiver desktop(u"file"_s);

    DesktopWorkspace().open(FileURL::fromBytes(path, false));

    QCOMPARE(desktop.addresses.size(), 1);
    QTEST(desktop.addresses.constFirst().toEncoded(), "address");
}

void DesktopWorkspaceTests::addressThatCannotBeOpenedIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the desktop does not open"_s));

    DesktopWorkspace().open(QUrl());
}

void DesktopWorkspaceTests::ownersNameOfTheComputerComesFirst()
{
    PrivateBus bus;
    QDBusConnection service = bus.connection(u"service"_s);
    HostnameService hostname;
    hostname.prettyName = u"Annas bärbara"_s;
    QVERIFY(service.registerObject(u"/org/freedesktop/hostname1"_s, &hostname,
                                   QDBusConnection::ExportAllProperties));
    QVERIFY(service.registerService(u"org.freedesktop.hostname1"_s));

    QCOMPARE(DesktopWorkspace(service).computerName(), u"Annas bärbara"_s);
}

void DesktopWorkspaceTests::networkNameIsUsedWithoutAnOwnersName()
{
    PrivateBus bus;
    QDBusConnection service = bus.connection(u"service"_s);
    QVERIFY(service.isConnected());
    QCOMPARE(DesktopWorkspace(service).computerName(), QSysInfo::machineHostName());

    HostnameService hostname;
    QVERIFY(service.registerObject(u"/org/freedesktop/hostname1"_s, &hostname,
                                   QDBusConnection::ExportAllProperties));
    QVERIFY(service.registerService(u"org.freedesktop.hostname1"_s));

    QCOMPARE(DesktopWorkspace(service).computerName(), QSysInfo::machineHostName());
}

void DesktopWorkspaceTests::networkNameIsUsedWithoutABus()
{
    const QDBusConnection none(u"no such connection"_s);

    QCOMPARE(DesktopWorkspace(none).computerName(), QSysInfo::machineHostName());
    QVERIFY(!QSysInfo::machineHostName().isEmpty());
}

QTEST_MAIN(DesktopWorkspaceTests)
#include "DesktopWorkspaceTests.moc"
