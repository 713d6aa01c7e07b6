#include "Decoder/DecoderConfinement.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"

#include <QFile>
#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <csignal>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

enum class Confinement { none, decoder };

/// Whether the kernel can keep a process from opening files by their places.
bool knowsPlaces()
{
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) > 0;
}

bool canOpen(const QByteArray& path, int flags)
{
    const int file = ::open(path.constData(), flags, 0600);
    return file != -1 && ::close(file) == 0;
}

bool canHaveSocket(int family)
{
    const int socket = ::socket(family, SOCK_STREAM, 0);
    return socket != -1 && ::close(socket) == 0;
}

bool canStartProcess()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    return child > 0;
}

/// Does not come back when it can.
bool canStartProgram()
{
    ::execl("/bin/true", "true", nullptr);
    return false;
}

bool canStartThread()
{
    bool hasRun = false;
    try {
        std::thread([&hasRun] { hasRun = true; }).join();
    } catch (const std::system_error&) {
        return false;
    }
    return hasRun;
}

} // namespace

Q_DECLARE_METATYPE(std::function<bool()>)

class DecoderConfinementTests final : public QObject
{
    Q_OBJECT

    using Attempt = std::function<bool()>;

    Bucket m_bucket{{"hemlig.md", "hemlig"}, {"bort.md", "x"}, {"flytt.md", "x"}};

    /// Whether a process that is, or is not, confined can do it.
    static bool succeeds(const Attempt& attempt, Confinement confinement)
    {
        const ChildResult child = ChildProcess::run([&] {
            if (confinement == Confinement::decoder)
                confineDecoder();
            return QByteArray(attempt() ? "done" : "refused");
        });
        return child.said != "refused";
    }

    [[nodiscard]] QByteArray path(const QString& name) const { return m_bucket.file(name).bytes(); }

private Q_SLOTS:
    void whatADecoderDoesNotNeedIsRefused_data()
    {
        QTest::addColumn<Attempt>("attempt");
        const auto add = [](const char* name, const Attempt& attempt) { QTest::newRow(name) << attempt; };
        add("write a file", [this] { return canOpen(path(u"hemlig.md"_s), O_WRONLY); });
        add("make a file", [this] { return canOpen(path(u"ny.md"_s), O_RDWR | O_CREAT); });
        add("remove a file", [this] { return ::unlink(path(u"bort.md"_s).constData()) == 0; });
        add("rename a file",
            [this] { return ::rename(path(u"flytt.md"_s).constData(), path(u"dit.md"_s).constData()) == 0; });
        add("lay a file open", [this] { return ::chmod(path(u"hemlig.md"_s).constData(), 0666) == 0; });
        add("the network", [] { return canHaveSocket(AF_INET); });
        add("services of the desktop", [] { return canHaveSocket(AF_UNIX); });
        add("a process", &canStartProcess);
        add("a program", &canStartProgram);
        add("signals to the program", [] { return ::kill(::getppid(), 0) == 0; });
        add("signals to its threads", [] { return ::syscall(SYS_tgkill, ::getppid(), ::getppid(), 0) == 0; });
        if (!knowsPlaces())
            return;
        add("read a file", [this] { return canOpen(path(u"hemlig.md"_s), O_RDONLY); });
        add("read a folder", [this] { return canOpen(m_bucket.root().bytes(), O_RDONLY | O_DIRECTORY); });
        add("the users", [] { return canOpen("/etc/passwd", O_RDONLY); });
        add("other processes", [] { return canOpen("/proc/self/status", O_RDONLY); });
    }

    void whatADecoderDoesNotNeedIsRefused()
    {
        QFETCH(const Attempt, attempt);
        QVERIFY(!succeeds(attempt, Confinement::decoder));
        QVERIFY2(succeeds(attempt, Confinement::none), "anybody else can");
    }

    void whatItNeedsIsThere_data()
    {
        QTest::addColumn<Attempt>("attempt");
        const auto add = [](const char* name, const Attempt& attempt) { QTest::newRow(name) << attempt; };
        add("libraries and fonts", [] { return canOpen("/usr/share", O_RDONLY | O_DIRECTORY); });
        if (QFile::exists(u"/etc/localtime"_s))
            add("the time of this place", [] { return canOpen("/etc/localtime", O_RDONLY); });
        add("threads", &canStartThread);
        add("memory", [] { return QByteArray(200'000'000, 'x').size() == 200'000'000; });
    }

    void whatItNeedsIsThere()
    {
        QFETCH(const Attempt, attempt);
        QVERIFY(succeeds(attempt, Confinement::decoder));
    }

    void aDecoderThatGivesUpEnds()
    {
        QVERIFY(!ChildProcess::run([]() -> QByteArray {
                     confineDecoder();
                     std::signal(SIGABRT, SIG_DFL);
                     std::abort();
                 }).hasExited);
    }
};

QTEST_GUILESS_MAIN(DecoderConfinementTests)
#include "DecoderConfinementTests.moc"
