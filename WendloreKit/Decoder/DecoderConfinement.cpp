#include "Decoder/DecoderConfinement.h"

#include "Decoder/DecoderCallFilter.h"
#include "Decoder/DecoderProcessLimits.h"

#include <QFile>
#include <QLibraryInfo>

#include <algorithm>
#include <array>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace wendlore {

namespace {

void limitTo(__rlimit_resource resource, rlim_t most)
{
    const rlimit limit{most, most};
    ::setrlimit(resource, &limit);
}

/// Everything that a rule set of that version of the kernel's interface can forbid. Its headers may be older.
quint64 rightsOfVersion(long version)
{
    constexpr std::array<int, 5> rightsOf{13, 14, 15, 15, 16};
    return (quint64(1) << rightsOf.at(size_t(std::min<long>(version, rightsOf.size())) - 1)) - 1;
}

/// Lets the files below `path` be read. What is not there needs no rule.
void allowReading(int rules, const QByteArray& path)
{
    landlock_path_beneath_attr rule = {};
    rule.parent_fd = ::open(path.constData(), O_PATH | O_CLOEXEC);
    struct stat status = {};
    if (rule.parent_fd == -1)
        return;
    rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
    if (::fstat(rule.parent_fd, &status) == 0 && S_ISDIR(status.st_mode))
        rule.allowed_access |= LANDLOCK_ACCESS_FS_READ_DIR;
    ::syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    ::close(rule.parent_fd);
}

/// Leaves nothing to be opened but what decoders load while they work: libraries, fonts and their tables, and
/// the time of this place.
void closeOtherFiles()
{
    const long version = ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return;
    landlock_ruleset_attr attributes = {};
    attributes.handled_access_fs = rightsOfVersion(version);
    const int rules = int(::syscall(SYS_landlock_create_ruleset, &attributes, sizeof(attributes), 0));
    if (rules == -1)
        return;
    for (const char* path : {"/usr", "/lib", "/lib64", "/etc/ld.so.cache", "/etc/fonts", "/etc/localtime"})
        allowReading(rules, path);
    for (const auto place : {QLibraryInfo::LibrariesPath, QLibraryInfo::PluginsPath})
        allowReading(rules, QFile::encodeName(QLibraryInfo::path(place)));
    ::syscall(SYS_landlock_restrict_self, rules, 0);
    ::close(rules);
}

} // namespace

void confineDecoder()
{
    // What can hold data: libraries set much larger ranges of addresses aside, which take no memory.
    limitTo(RLIMIT_DATA, decoder::mostMemory);
    limitTo(RLIMIT_FSIZE, 0);
    limitTo(RLIMIT_CORE, 0);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    closeOtherFiles();
    filterDecoderCalls();
}

} // namespace wendlore
