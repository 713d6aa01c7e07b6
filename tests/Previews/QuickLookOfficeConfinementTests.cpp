#include "Previews/QuickLookOfficeConfinement.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"

#include <QTest>

#include <cstring>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

bool knowsPlaces()
{
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) > 0;
}

bool canOpen(const QByteArray& path, int flags)
{
    const int file = ::open(path.constData(), flags, 0600);
    return file != -1 && ::close(file) == 0;
}

bool canRun(const QByteArray& program)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl(program.constData(), "program", nullptr);
        ::_exit(1);
    }
    int status = 1;
    return ::waitpid(child, &status, 0) == child && status == 0;
}

bool canHaveSocket(int family)
{
    const int socket = ::socket(family, SOCK_STREAM, 0);
    return socket != -1 && ::close(socket) == 0;
}

/// A socket with a name in the file system, as services of the desktop have one.
class Service final
{
public:
    explicit Service(const QByteArray& path)
    {
        m_address.sun_family = AF_UNIX;
        std::strncpy(m_address.sun_path, path.constData(), sizeof(m_address.sun_path) - 1);
    }
    bool listen() const
    {
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        return ::bind(socket, address(), sizeof(m_address)) == 0 && ::listen(socket, 1) == 0;
    }
    bool canConnect() const
    {
        return ::connect(::socket(AF_UNIX, SOCK_STREAM, 0), address(), sizeof(m_address)) == 0;
    }

private:
    const sockaddr* address() const { return reinterpret_cast<const sockaddr*>(&m_address); }

    sockaddr_un m_address = {};
};

} // namespace

Q_DECLARE_METATYPE(std::function<bool()>)

class QuickLookOfficeConfinementTests final : public QObject
{
    Q_OBJECT

    using Attempt = std::function<bool()>;

    Bucket m_bucket{{"hemlig.md", "hemlig"}, {"bort.md", "x"}, {"arbete/eget.txt", "x"}};
    Service m_service{path(u"tjänst"_s)};

    /// Whether a process can do it that is confined to the folder "arbete", or that is not.
    [[nodiscard]] bool succeeds(const Attempt& attempt, bool isConfined) const
    {
        const ChildResult child = ChildProcess::run([&] {
            if (isConfined)
                QuickLookOfficeConfinement(u"/usr/bin/soffice"_s, m_bucket.folder(u"arbete"_s).path())
                    .apply();
            return QByteArray(attempt() ? "done" : "refused");
        });
        return child.said == "done";
    }

    [[nodiscard]] QByteArray path(const QString& name) const { return m_bucket.file(name).bytes(); }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_service.listen()); }

    void whatADocumentDoesNotNeedIsRefused_data()
    {
        QTest::addColumn<Attempt>("attempt");
        const auto add = [](const char* name, const Attempt& attempt) { QTest::newRow(name) << attempt; };
        add("the network", [] { return canHaveSocket(AF_INET); });
        add("the network's newer half", [] { return canHaveSocket(AF_INET6); });
        add("services of the desktop", [this] { return m_service.canConnect(); });
        if (!knowsPlaces())
            return;
        add("read a note", [this] { return canOpen(path(u"hemlig.md"_s), O_RDONLY); });
        add("read a folder", [this] { return canOpen(m_bucket.root().bytes(), O_RDONLY | O_DIRECTORY); });
        add("write a note", [this] { return canOpen(path(u"hemlig.md"_s), O_WRONLY); });
        add("make a file", [this] { return canOpen(path(u"ny.md"_s), O_RDWR | O_CREAT | O_EXCL); });
        add("remove a note", [this] { return ::unlink(path(u"bort.md"_s).constData()) == 0; });
    }

    void whatADocumentDoesNotNeedIsRefused()
    {
        QFETCH(const Attempt, attempt);
        QVERIFY(!succeeds(attempt, true));
        QVERIFY2(succeeds(attempt, false), "anybody else can");
    }

    void itCannotLookIntoTheProgram()
    {
        QVERIFY(!succeeds([] { return ::ptrace(PTRACE_ATTACH, ::getppid(), nullptr, nullptr) == 0; }, true));
    }

    void whatTheOfficeProgramNeedsIsThere_data()
    {
        QTest::addColumn<Attempt>("attempt");
        const auto add = [](const char* name, const Attempt& attempt) { QTest::newRow(name) << attempt; };
        add("its folder to read", [this] { return canOpen(path(u"arbete/eget.txt"_s), O_RDONLY); });
        add("its folder to write", [this] { return canOpen(path(u"arbete/ny.txt"_s), O_RDWR | O_CREAT); });
        add("its folder to tidy", [this] { return ::unlink(path(u"arbete/eget.txt"_s).constData()) == 0; });
        add("fonts", [] { return canOpen("/usr/share", O_RDONLY | O_DIRECTORY); });
        add("other programs", [] { return canRun("/bin/true"); });
        add("nothing to write to", [] { return canOpen("/dev/null", O_WRONLY); });
        add("chance", [] { return canOpen("/dev/urandom", O_RDONLY); });
        add("a socket of its own", [this] { return Service(path(u"arbete/uttag"_s)).listen(); });
    }

    void whatTheOfficeProgramNeedsIsThere()
    {
        QFETCH(const Attempt, attempt);
        QVERIFY(succeeds(attempt, true));
    }
};

QTEST_GUILESS_MAIN(QuickLookOfficeConfinementTests)
#include "QuickLookOfficeConfinementTests.moc"
