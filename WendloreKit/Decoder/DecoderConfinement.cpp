#include "Decoder/DecoderConfinement.h"

#include "Decoder/DecoderCallFilter.h"
#include "Decoder/DecoderProcessLimits.h"
#include "Decoder/FileRules.h"

#include <QFile>
#include <QLibraryInfo>

#include <sys/prctl.h>
#include <sys/resource.h>

namespace wendlore {

namespace {

void limitTo(__rlimit_resource resource, rlim_t most)
{
    const rlimit limit{most, most};
    ::setrlimit(resource, &limit);
}

/// Leaves nothing to be opened but what decoders load while they work: libraries, fonts and their tables, and
/// the time of this place.
void closeOtherFiles()
{
    FileRules rules;
    for (const char* path : {"/usr", "/lib", "/lib64", "/etc/ld.so.cache", "/etc/fonts", "/etc/localtime"})
        rules.leave(path, FileRules::Access::read);
    for (const auto place : {QLibraryInfo::LibrariesPath, QLibraryInfo::PluginsPath})
        rules.leave(QFile::encodeName(QLibraryInfo::path(place)), FileRules::Access::read);
    rules.apply();
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
