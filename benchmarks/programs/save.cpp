// Writes the bytes of a file, each time a little different: bench-save atomic|plain SOURCE TARGET. Prints the
// milliseconds of the write. "atomic" is how the program saves a note; "plain" writes over the file and syncs
// it, which loses the note when the machine stops halfway.

#include "Vault/AtomicFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <functional>

#include <fcntl.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

bool writePlainly(const QString& target, const QByteArray& bytes)
{
    const int file =
        ::open(QFile::encodeName(target).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0)
        return false;
    const bool isWritten = ::write(file, bytes.constData(), size_t(bytes.size())) == bytes.size();
    const bool isSynced = ::fsync(file) == 0;
    return ::close(file) == 0 && isWritten && isSynced;
}

bool writeAtomically(const QString& target, const QByteArray& bytes)
{
    return AtomicFile::write(FileURL::file(target), bytes).outcome == WriteOutcome::Replaced;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 4)
        qFatal("bench-save atomic|plain SOURCE TARGET");
    const std::function write = arguments[1] == "atomic"_L1 ? writeAtomically : writePlainly;
    QFile source(arguments[2]);
    if (!source.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(arguments[2]));
    QByteArray bytes = source.readAll();
    const QByteArray stamp = QByteArray::number(QCoreApplication::applicationPid());
    bytes.replace(bytes.size() / 2, stamp.size(), stamp);

    QElapsedTimer elapsed;
    elapsed.start();
    if (!write(arguments[3], bytes))
        qFatal("cannot write %s", qPrintable(arguments[3]));
    std::printf("%f\n", double(elapsed.nsecsElapsed()) / 1e6);
    return 0;
}
