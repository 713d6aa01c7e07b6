#include "Previews/DecoderProcess.h"

#include "Decoder/DecoderProcessLimits.h"
#include "Decoder/Picture.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
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

/// Starts the program with `socket` as its input and nothing else that is open here.
pid_t start(int socket)
{
    static QByteArray program = decoderProgram();
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    char* const arguments[] = {program.data(), nullptr};
    pid_t process = -1;
    if (program.isEmpty() ||
        ::posix_spawn(&process, program.constData(), &actions, nullptr, arguments, environ) != 0)
        process = -1;
    ::posix_spawn_file_actions_destroy(&actions);
    return process;
}

/// A process that waits for its file.
struct WaitingDecoder final
{
    std::unique_ptr<DecoderWire> wire;
    pid_t process = -1;

    [[nodiscard]] static WaitingDecoder started()
    {
        int ends[2] = {-1, -1};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == -1)
            return {};
        const Descriptor other(FileSystemCalls::real(), ends[1]);
        return {std::make_unique<DecoderWire>(ends[0]), start(other.get())};
    }
    [[nodiscard]] bool isAlive() const { return process > 0 && ::waitpid(process, nullptr, WNOHANG) == 0; }
};

/// Keeps one process that is started already: its start takes as long as many files take to be decoded. It
/// ends by itself when this program does.
class SpareDecoder final
{
public:
    static SpareDecoder& shared()
    {
        static SpareDecoder spare;
        return spare;
    }

    [[nodiscard]] WaitingDecoder take()
    {
        WaitingDecoder taken;
        {
            const QMutexLocker locker(&m_mutex);
            std::swap(taken, m_spare);
        }
        return taken.isAlive() ? std::move(taken) : WaitingDecoder::started();
    }
    void replaceInBackground()
    {
        QThreadPool::globalInstance()->start([this] {
            const QMutexLocker locker(&m_mutex);
            if (!m_spare.isAlive())
                m_spare = WaitingDecoder::started();
        });
    }

private:
    QMutex m_mutex;
    WaitingDecoder m_spare;
};

/// A file of `size` bytes that takes memory as it is filled, and which nobody can make shorter.
Descriptor memoryOfSize(qint64 size)
{
    FileSystemCalls& calls = FileSystemCalls::real();
    Descriptor file(calls, ::memfd_create("wendlores", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    const bool isMade = file.isOpen() && calls.truncate(file.get(), size) == 0 &&
                        ::fcntl(file.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) == 0;
    return isMade ? std::move(file) : Descriptor(calls);
}

} // namespace

DecoderProcess::DecoderProcess(int file)
    : m_memory(memoryOfSize(decoder::mostPixels))
{
    if (file < 0 || !m_memory.isOpen())
        return;
    WaitingDecoder decoder = SpareDecoder::shared().take();
    m_wire = std::move(decoder.wire);
    m_process = decoder.process;
    if (m_process > 0 && !m_wire->sendFiles({file, m_memory.get()}))
        m_wire.reset();
}

DecoderProcess::~DecoderProcess()
{
    if (m_process < 0)
        return;
    ::kill(m_process, SIGKILL);
    if (m_answers < firstAnswers)
        SpareDecoder::shared().replaceInBackground();
    // Giving its memory back takes the system a while, for which nobody here has to wait.
    QThreadPool::globalInstance()->start([process = m_process] { ::waitpid(process, nullptr, 0); });
}

std::optional<QByteArray> DecoderProcess::ask(const QByteArray& question, const QuickLookLimits& limits)
{
    const auto isOver = [&limits] { return limits.areReached(); };
    if (!m_wire || m_process < 0 || !m_wire->send(question, isOver))
        return std::nullopt;
    auto answer = m_wire->receive(isOver);
    if (++m_answers == firstAnswers)
        SpareDecoder::shared().replaceInBackground();
    return answer;
}

QImage DecoderProcess::picture(QSize size, bool hasAlpha) const
{
    if (size.isEmpty() || size.width() > decoder::mostPixels / bytesPerPixel / size.height())
        return {};
    auto file = std::make_unique<QFile>();
    if (!file->open(m_memory.get(), QIODevice::ReadOnly))
        return {};
    const qint64 bytesPerLine = qint64(bytesPerPixel) * size.width();
    const uchar* pixels = file->map(0, bytesPerLine * size.height());
    if (!pixels)
        return {};
    // What is mapped lives as long as the file object, though not the descriptor.
    return QImage(
        pixels, size.width(), size.height(), bytesPerLine,
        hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32,
        [](void* mapped) { delete static_cast<QFile*>(mapped); }, file.release());
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

std::chrono::milliseconds maximumDecodingTime()
{
    return std::chrono::seconds(decoder::mostSeconds);
}

} // namespace wendlore
