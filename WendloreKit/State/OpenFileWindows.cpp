#include "State/OpenFileWindows.h"

namespace wendlore {

namespace {

/// Two spellings of one path are one file, also when one of them was given as a directory (a package).
FileURL keyOf(const FileURL& file)
{
    return FileURL::fromBytes(file.standardized().bytes(), false);
}

} // namespace

OpenFileWindows& OpenFileWindows::shared()
{
    static OpenFileWindows registry;
    return registry;
}

bool OpenFileWindows::isOpen(const FileURL& file) const
{
    return m_open.contains(keyOf(file));
}

void OpenFileWindows::insert(const FileURL& file)
{
    if (m_open.insert(keyOf(file)).second)
        Q_EMIT openChanged();
}

void OpenFileWindows::remove(const FileURL& file)
{
    if (m_open.erase(keyOf(file)) > 0)
        Q_EMIT openChanged();
}

} // namespace wendlore
