#include "Wendlores/CommandLine.h"
#include "Wendlores/OpenLocation.h"
#include "Wendlores/SwedishTexts.h"
#include "Wendlores/WendloreApp.h"

#include "Look/Style.h"
#include "Platform/Desktop.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/FileAddress.h"
#include "Platform/QuitSignals.h"
#include "Platform/SingleInstance.h"
#include "Platform/StandardPaths.h"
#include "Previews/WebSchemes.h"
#include "Shell/Windows.h"
#include "State/AppState.h"
#include "State/ResourceBundle.h"
#include "Vault/Collation.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

/// How long work in the background, such as reading a folder, may go on after the last window has closed.
constexpr auto workPatience = 2s;

enum ExitCode { Succeeded = 0, Failed = 1, Misused = 2 };

void print(const QString& text, std::FILE* stream)
{
    std::fputs(text.toUtf8().constData(), stream);
}

QStringList argumentsOf(int count, char** words)
{
    QStringList arguments;
    for (int i = 1; i < count; ++i)
        arguments.append(QFile::decodeName(words[i]));
    return arguments;
}

/// The web engine's sandbox refuses to work for root, and switching it off is nobody's decision but theirs.
bool isRootWithSandbox()
{
    return ::geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX");
}

const QString rootNotice =
    u"wendlores: webbmotorns sandlåda går inte att använda som root. Starta som vanlig användare,\n"
    "eller, i en behållare som redan skyddar dig: QTWEBENGINE_DISABLE_SANDBOX=1 wendlores\n"_s;

Updater::Configuration updates()
{
    return {QUrl(u"" WENDLORE_UPDATE_FEED ""_s), QByteArrayLiteral(WENDLORE_UPDATE_KEY),
            QVersionNumber::fromString(u"" WENDLORE_VERSION ""_s),
            StandardPaths::cacheDirectory().appending(u"updates"_s, true)};
}

/// Shows the windows until the last one has closed and everything typed is written; gives the exit status.
int showWindows(Desktop& desktop, DesktopAppearance& appearance, Style& style, SingleInstance& instance,
                const CommandLine& commandLine)
{
    QuitSignals signals; // who asks early is heard once the program runs
    WendloreApp app(desktop.services(), appearance, style, updates());
    if (commandLine.location)
        openLocation(app.appState(), *commandLine.location);
    QObject::connect(&instance, &SingleInstance::activated, &app, [&app] { bringForward(app.mainWindow()); });
    QObject::connect(&instance, &SingleInstance::opened, &app, &WendloreApp::open);
    QObject::connect(&signals, &QuitSignals::quitRequested, &app, &WendloreApp::quit);
    app.start();
    if (commandLine.link)
        app.open({*commandLine.link});
    return QApplication::exec();
}

int run(SingleInstance& instance, const CommandLine& commandLine)
{
    auto* style = new Style; // the application owns it
    DesktopAppearance appearance;
    QApplication::setStyle(style);
    SwedishTexts texts;
    QCoreApplication::installTranslator(&texts);

    Desktop desktop;
    static_cast<void>(resourceBundle());
    const int status = showWindows(desktop, appearance, *style, instance, commandLine);
    // A file server that does not answer must not hold a program that nobody sees any more.
    if (!desktop.waitForWork(workPatience))
        std::_Exit(status);
    return status;
}

/// Lets the program that already runs do what this one was asked for; gives the exit status.
int handOver(SingleInstance& instance, const CommandLine& commandLine)
{
    QList<QUrl> addresses;
    if (commandLine.location)
        addresses.append(fileAddress(*commandLine.location));
    if (commandLine.link)
        addresses.append(*commandLine.link);
    if (instance.handOver(addresses) == SingleInstance::HandOver::taken)
        return Succeeded;
    print(u"wendlores: programmet är redan igång, men svarar inte\n"_s, stderr);
    return Failed;
}

} // namespace

int main(int argc, char** argv)
{
    const QStringList arguments = argumentsOf(argc, argv);
    const CommandLine commandLine = CommandLine::parse(arguments, QDir::currentPath());
    if (commandLine.action != CommandLine::Action::Run) {
        const bool isRefused = commandLine.action == CommandLine::Action::RefuseUsage;
        print(commandLine.text, isRefused ? stderr : stdout);
        return isRefused ? Misused : Succeeded;
    }
    if (commandLine.location && !QFileInfo::exists(commandLine.location->path())) {
        print(u"wendlores: finns inte: %1\n"_s.arg(commandLine.location->path()), stderr);
        return Failed;
    }
    if (isRootWithSandbox()) {
        print(rootNotice, stderr);
        return Failed;
    }
    registerWendloreSchemes();
    QCoreApplication::setApplicationName(u"wendlores"_s);
    QCoreApplication::setApplicationVersion(u"" WENDLORE_VERSION ""_s);
    QGuiApplication::setApplicationDisplayName(u"Wendlores"_s);
    QGuiApplication::setDesktopFileName(SingleInstance::applicationId.toString());
    // The order of names is learned while the desktop and the web engine are being set up; the first tree
    // needs it.
    const auto order =
        std::async(std::launch::async, [locale = NameOrder::userLocale()] { NameOrder{locale}; });
    const QApplication application(argc, argv);
    // The program speaks Swedish on every desktop, and so do the web engine's own pages.
    QLocale::setDefault(QLocale(QLocale::Swedish, QLocale::Sweden));
    SingleInstance instance(QDBusConnection::sessionBus(), SingleInstance::standardSocket());
    if (instance.claim() == SingleInstance::Role::second)
        return handOver(instance, commandLine);
    return run(instance, commandLine);
}
