#include "Decoder/FileRules.h"

#include <algorithm>
#include <array>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace wendlore {

namespace {

/// Everything that a rule set of that version of the kernel's interface can forbid. Its headers may be older.
quint64 rightsOfVersion(long version)
{
    constexpr std::array<int, 5> rightsOf{13, 14, 15, 15, 16};
    return (quint64(1) << rightsOf.at(size_t(std::min<long>(version, rightsOf.size())) - 1)) - 1;
}

/// What can be done with a file, of everything that can be done in folders.
constexpr quint64 truncating = 1U << 14;
constexpr quint64 controllingDevices = 1U << 15;
constexpr quint64 rightsToFiles = LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_READ_FILE |
                                  LANDLOCK_ACCESS_FS_WRITE_FILE | truncating | controllingDevices;

/// What the kernel takes for a rule set, with parts that its headers may be too old to know: rights to files,
/// to the network, and to what other processes offer (sockets without a file, signals).
struct RuleSet final
{
    quint64 files = 0;
    quint64 network = 0;
    quint64 processes = 0;

    explicit RuleSet(long version)
        : files(rightsOfVersion(version))
        , network(version >= 4 ? 3 : 0)
        , processes(version >= 6 ? 3 : 0)
    {}
};

quint64 rightsFor(FileRules::Access access)
{
    switch (access) {
    case FileRules::Access::read:
        return LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
    case FileRules::Access::readAndRun:
        return LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR | LANDLOCK_ACCESS_FS_EXECUTE;
    case FileRules::Access::makeSockets:
        return LANDLOCK_ACCESS_FS_MAKE_SOCK;
    case FileRules::Access::everything:
        break;
    }
    return ~quint64(0);
}

} // namespace

FileRules::FileRules()
    : m_rules(FileSystemCalls::real())
{
    const long version = ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return;
    const RuleSet nothing(version);
    m_rights = nothing.files;
    m_rules = Descriptor(FileSystemCalls::real(),
                         int(::syscall(SYS_landlock_create_ruleset, &nothing, sizeof(nothing), 0)));
}

void FileRules::leave(const QByteArray& path, Access access)
{
    const Descriptor place(FileSystemCalls::real(), ::open(path.constData(), O_PATH | O_CLOEXEC));
    struct stat status = {};
    if (!m_rules.isOpen() || !place.isOpen() || ::fstat(place.get(), &status) == -1)
        return;
    landlock_path_beneath_attr rule = {};
    rule.parent_fd = place.get();
    rule.allowed_access = rightsFor(access) & m_rights;
    if (!S_ISDIR(status.st_mode))
        rule.allowed_access &= rightsToFiles;
    ::syscall(SYS_landlock_add_rule, m_rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

void FileRules::apply() const
{
    if (m_rules.isOpen())
        ::syscall(SYS_landlock_restrict_self, m_rules.get(), 0);
}

} // namespace wendlore
