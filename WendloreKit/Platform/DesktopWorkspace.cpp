#include "Platform/DesktopWorkspace.h"

#include "Platform/FileAddress.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDesktopServices>
#include <QLoggingCategory>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(desktopLog, "wendlore.desktop")

/// The service answers within milliseconds, or it is not there.
constexpr int answerTime = 500;

} // namespace

DesktopWorkspace::DesktopWorkspace(QDBusConnection bus)
    : m_bus(std::move(bus))
{}

void DesktopWorkspace::open(const QUrl& address)
{
    if (!QDesktopServices::openUrl(address))
        qCWarning(desktopLog) << "the desktop does not open" << address;
}

void DesktopWorkspace::open(const FileURL& file)
{
    open(fileAddress(file));
}

QString DesktopWorkspace::computerName() const
{
    const QString service = u"org.freedesktop.hostname1"_s;
    QDBusMessage question = QDBusMessage::createMethodCall(service, u"/org/freedesktop/hostname1"_s,
                                                           u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({service, u"PrettyHostname"_s});
    const QDBusMessage answer = m_bus.call(question, QDBus::Block, answerTime);
    const QString name = answer.arguments().value(0).value<QDBusVariant>().variant().toString();
    return name.isEmpty() ? QSysInfo::machineHostName() : name;
}

} // namespace wendlore
