#include "Previews/DecoderProcess.h"

#include "Decoder/DecoderProcessLimits.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Beside the program, where it is built and where hosts lay it, or where it is installed.
QByteArray decoderProgram()
{
    const QString folder = QCoreApplication::applicationDirPath();
    for (const QString& place : {u"/"_s, u"/../libexec/wendlores/"_s}) {
        const QString program = folder + place + QLatin1StringView(decoder::programName);
        if (QFileInfo(program).isExecutable())
            return QFile::encodeName(program);
    }
    qWarning("%s is not installed", decoder::programName);
    return {};
}

/// The same open file, at a place that is none of those that the decoder expects something at.
Descriptor outOfTheWay(int descriptor)
{
    constexpr int firstFree = decoder::pixelsDescriptor + 1;
    return Descriptor(FileSystemCalls::real(), ::fcntl(descriptor, F_DUPFD_CLOEXEC, firstFree));
}

/// Starts the program with `socket` as its input, `file` and `pixels` beside it, and nothing else that is
/// open here.
pid_t start(int socket, int file, int pixels)
{
    static QByteArray program = decoderProgram();
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, file, decoder::fileDescriptor);
    if (pixels != -1)
        ::posix_spawn_file_actions_adddup2(&actions, pixels, decoder::pixelsDescriptor);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, pixels == -1 ? decoder::pixelsDescriptor
                                                                      : decoder::pixelsDescriptor + 1);
    char* const arguments[] = {program.data(), nullptr};
    pid_t process = -1;
    if (program.isEmpty() ||
        ::posix_spawn(&process, program.constData(), &actions, nullptr, arguments, environ) != 0)
        process = -1;
    ::posix_spawn_file_actions_destroy(&actions);
    return process;
}

} // namespace

DecoderProcess::DecoderProcess(int file, int pixels)
{
    int ends[2] = {-1, -1};
    if (file < 0 || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == -1)
        return;
    m_wire.emplace(ends[0]);
    const Descriptor end(FileSystemCalls::real(), ends[1]);
    m_process = start(outOfTheWay(end.get()).get(), outOfTheWay(file).get(), outOfTheWay(pixels).get());
}

DecoderProcess::~DecoderProcess()
{
    if (m_process < 0)
        return;
    ::kill(m_process, SIGKILL);
    // Giving its memory back takes the system a while, for which nobody here has to wait.
    QThreadPool::globalInstance()->start([process = m_process] { ::waitpid(process, nullptr, 0); });
}

std::optional<DecoderMessage> DecoderProcess::ask(const QByteArray& question, const QuickLookLimits& limits)
{
    const auto isOver = [&limits] { return limits.areReached(); };
    if (!m_wire || m_process < 0 || !m_wire->send({question, {}}, isOver))
        return std::nullopt;
    return m_wire->receive(isOver);
}

Descriptor memoryFile(const QByteArray& bytes)
{
    FileSystemCalls& calls = FileSystemCalls::real();
    Descriptor file(calls, ::memfd_create("wendlores", MFD_CLOEXEC));
    for (qsizetype at = 0; file.isOpen() && at < bytes.size();) {
        const ssize_t count =
            calls.write(file.get(), bytes.constData() + at, size_t(bytes.size() - at), off_t(at));
        if (count <= 0)
            return Descriptor(calls);
        at += count;
    }
    return file;
}

Descriptor memoryOfSize(qint64 size)
{
    FileSystemCalls& calls = FileSystemCalls::real();
    Descriptor file(calls, ::memfd_create("wendlores", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    const bool isMade = file.isOpen() && calls.truncate(file.get(), size) == 0 &&
                        ::fcntl(file.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) == 0;
    return isMade ? std::move(file) : Descriptor(calls);
}

std::chrono::milliseconds maximumDecodingTime()
{
    return std::chrono::seconds(decoder::mostSeconds);
}

} // namespace wendlore
