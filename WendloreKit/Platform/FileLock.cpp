#include "Platform/FileLock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace wendlore {

FileLock::FileLock(const FileURL& file)
    : m_descriptor(::open(file.bytes().constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
{
    if (m_descriptor < 0)
        return;
    int result = -1;
    do {
        result = ::flock(m_descriptor, LOCK_EX);
    } while (result < 0 && errno == EINTR);
    m_isHeld = result == 0;
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace wendlore
