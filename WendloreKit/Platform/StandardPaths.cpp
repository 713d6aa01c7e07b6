#include "Platform/StandardPaths.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// The program's folder below the one that `variable` names, or below `fallback` in the user's home. A
/// relative path in the variable counts as none.
FileURL ownDirectory(const char* variable, const QString& fallback)
{
    QByteArray base = qgetenv(variable);
    if (!base.startsWith('/'))
        base = QFile::encodeName(QDir::home().filePath(fallback));
    return FileURL::fromBytes(base, true).appending(u"wendlores"_s, true);
}

} // namespace

FileURL StandardPaths::configDirectory()
{
    return ownDirectory("XDG_CONFIG_HOME", u".config"_s);
}

FileURL StandardPaths::dataDirectory()
{
    return ownDirectory("XDG_DATA_HOME", u".local/share"_s);
}

FileURL StandardPaths::stateDirectory()
{
    return ownDirectory("XDG_STATE_HOME", u".local/state"_s);
}

FileURL StandardPaths::cacheDirectory()
{
    return ownDirectory("XDG_CACHE_HOME", u".cache"_s);
}

} // namespace wendlore
