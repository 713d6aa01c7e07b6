#include "Vault/FileWrite.h"
#include "Vault/InterruptedWrites.h"
#include "Vault/ReadFile.h"

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace wendlore {

FileWrite::Attempt FileWrite::writeInPlace()
{
    InterruptedWrites backups(m_calls, m_backups);
    const Descriptor lock = backups.lock();
    if (!lock.isOpen())
        return failed();

    Descriptor file(m_calls, m_calls.openAt(m_directory.get(), m_name.constData(), O_RDWR | O_NOFOLLOW));
    struct stat status = {};
    if (!file.isOpen() || m_calls.status(file.get(), &status) == -1)
        return failed();
    if (status.st_dev != m_status->st_dev || status.st_ino != m_status->st_ino)
        return Attempt::Disturbed;
    const auto old = readFile(file.get(), m_calls);
    if (!old)
        return failed();
    if (m_seen && *old != *m_seen)
        return Attempt::Outdated;

    const auto backup = backups.keep({FileURL::fromBytes(m_path, false), *old, m_bytes});
    if (!backup.result.succeeded()) {
        m_error = EIO;
        m_note = u" (no backup: "_s + backup.result.error + u')';
        return Attempt::Failed;
    }
    bool isOldIntact = false;
    const Attempt ended = overwrite(file.get(), *old, &isOldIntact);
    if (ended == Attempt::Succeeded || isOldIntact)
        backups.forget(backup.record);
    else
        m_note = u" (the former text is in "_s + backup.record.path() + u')';
    return ended;
}

FileWrite::Attempt FileWrite::overwrite(int file, const QByteArray& old, bool* isOldIntact)
{
    // Room first: once bytes are overwritten, a full disk could leave neither text.
    if (!m_bytes.isEmpty() && m_calls.reserve(file, off_t(m_bytes.size())) == -1 && errno != EOPNOTSUPP &&
        errno != ENOSYS) {
        *isOldIntact = true;
        return failed();
    }
    if (putBytes(file, m_bytes))
        return Attempt::Succeeded;
    failed();
    *isOldIntact = putBytes(file, old);
    return Attempt::Failed;
}

bool FileWrite::putBytes(int file, const QByteArray& bytes)
{
    return writeAll(file, bytes) && m_calls.truncate(file, off_t(bytes.size())) == 0 &&
           m_calls.sync(file) == 0;
}

} // namespace wendlore
