#include "Previews/QuickLookOfficeProcess.h"

#include "Previews/QuickLookOfficeConfinement.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <csignal>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int pollInterval = 50; // milliseconds
constexpr int timeToEnd = 5000;  // milliseconds; a file server that does not answer can keep it longer

/// No macros, and nothing is fetched that a document refers to. Numbers and dates are Swedish where a
/// document leaves that open.
constexpr auto settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema"
 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel" oor:op="fuse"><value>3</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="BlockUntrustedRefererLinks" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Setup/L10N"><prop oor:name="ooSetupSystemLocale" oor:op="fuse"><value>sv-SE</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>2</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>2</value></prop></item>
</oor:items>
)";

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(bytes) == bytes.size();
}

/// What the program calls its release, as it says beside itself; empty when it says it elsewhere.
QByteArray releaseOf(const QString& program)
{
    constexpr auto key = "buildid=";
    QFile file(QFileInfo(QFileInfo(program).canonicalFilePath()).dir().filePath(u"versionrc"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith(key))
            return line.mid(qstrlen(key));
    }
    return {};
}

QString profileIn(const QString& folder)
{
    return folder + u"/profil"_s;
}

QProcessEnvironment environmentIn(const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, folder);
    environment.insert(u"TMPDIR"_s, folder);
    environment.insert(u"SAL_USE_VCLPLUGIN"_s, u"svp"_s);
    for (const QString& name :
         {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s, u"XDG_CONFIG_HOME"_s,
          u"XDG_CACHE_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_STATE_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        environment.remove(name);
    return environment;
}

/// Removes the socket that the program with the settings at `address` listened on: it may make one in the
/// folder that all share, but remove nothing there. Its name has a sum of that in it.
void removeSocket(const QString& address)
{
    const QByteArray sum = QCryptographicHash::hash(
        {reinterpret_cast<const char*>(address.utf16()), address.size() * qsizetype(sizeof(QChar))},
        QCryptographicHash::Md5);
    QString pattern = u"OSL_PIPE_*_SingleOfficeIPC_"_s; // of a user who may have another number in there
    for (const char byte : sum)
        pattern += QString::number(uchar(byte), 16);
    for (const QString& folder : {u"/tmp"_s, u"/var/tmp"_s}) {
        const auto sockets = QDir(folder).entryInfoList({pattern}, QDir::System | QDir::Hidden);
        for (const QFileInfo& socket : sockets)
            QFile::remove(socket.filePath());
    }
}

/// Runs the program once; see `runOfficeProgram`.
bool run(const QString& program, const QString& folder, const QStringList& arguments,
         const QuickLookLimits& limits)
{
    const QString profile = QUrl::fromLocalFile(profileIn(folder)).toString(QUrl::FullyEncoded);
    QProcess process;
    process.setProcessEnvironment(environmentIn(folder));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const QuickLookOfficeConfinement confinement(program, folder);
    process.setChildProcessModifier([&confinement] { confinement.apply(); });
    process.start(program, QStringList{u"-env:UserInstallation="_s + profile} + arguments);
    if (!process.waitForStarted())
        return false;
    const auto group = static_cast<pid_t>(process.processId());
    bool isRunning = true;
    while (isRunning && !limits.areReached())
        isRunning = !process.waitForFinished(pollInterval) && process.state() != QProcess::NotRunning;
    ::kill(-group, SIGKILL); // and what it may have left behind
    process.waitForFinished(timeToEnd);
    removeSocket(profile);
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 && !limits.areReached();
}

} // namespace

bool runOfficeProgram(const QString& program, const QString& folder, const QStringList& documents,
                      const QString& format, const QuickLookLimits& limits)
{
    const QString profile = profileIn(folder);
    if (program.isEmpty() || !write(profile + u"/user/registrymodifications.xcu"_s, settings))
        return false;
    // Without it the program takes itself for new, looks through its extensions and starts again.
    const QByteArray release = releaseOf(program);
    const QString note = profile + u"/user/extensions/buildid"_s;
    const bool isKnown = !release.isEmpty() && write(note, release);
    const QStringList arguments =
        QStringList{u"--headless"_s,   u"--norestore"_s, u"--nodefault"_s, u"--nologo"_s, u"--nolockcheck"_s,
                    u"--convert-to"_s, format,           u"--outdir"_s,    folder} +
        documents;
    // The second start is refused the socket of the first one, which is gone when it is tried once more.
    return run(program, folder, arguments, limits) ||
           (!isKnown && QFile::exists(note) && run(program, folder, arguments, limits));
}

} // namespace wendlore
