#pragma once

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace wendlore {

/// Whether the program `name` is installed.
[[nodiscard]] inline bool hasProgram(const QString& name)
{
    return !QStandardPaths::findExecutable(name).isEmpty();
}

/// Runs a program of the system to its end; ends the test program when it does not succeed.
inline void runProgram(const QString& name, const QStringList& arguments)
{
    constexpr int timeOut = 120'000;
    QProcess process;
    process.start(name, arguments);
    if (!process.waitForFinished(timeOut) || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(name), process.readAllStandardError().constData());
}

} // namespace wendlore
