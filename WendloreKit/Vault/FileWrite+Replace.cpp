#include "Vault/FileMetadata.h"
#include "Vault/FileWrite.h"
#include "Vault/TemporaryName.h"

#include <fcntl.h>
#include <sys/file.h>

namespace wendlore {

namespace {

constexpr mode_t privateMode = 0600;
constexpr mode_t ordinaryMode = 0666;

bool isRefusal(int error)
{
    return error == EACCES || error == EPERM;
}

} // namespace

/// A hidden file in the making; it is removed again unless it was given its real name.
class FileWrite::Temporary final
{
public:
    Temporary(FileWrite& write, mode_t mode)
        : m_write(write)
        , m_file(write.m_calls)
    {
        do {
            m_name = temporaryName();
            m_file = Descriptor(write.m_calls, write.m_calls.openAt(write.m_directory.get(), name(),
                                                                    O_WRONLY | O_CREAT | O_EXCL, mode));
        } while (!m_file.isOpen() && errno == EEXIST);
        m_isMade = m_file.isOpen();
        // The lock tells a sweep that this is no leftover. File systems without locks go without.
        if (m_isMade)
            write.m_calls.lock(m_file.get(), LOCK_EX | LOCK_NB);
    }
    ~Temporary()
    {
        m_file.close();
        if (m_isMade)
            m_write.m_calls.remove(m_write.m_directory.get(), name());
    }
    Q_DISABLE_COPY_MOVE(Temporary)

    [[nodiscard]] bool isMade() const { return m_isMade; }
    [[nodiscard]] int file() const { return m_file.get(); }
    [[nodiscard]] const char* name() const { return m_name.constData(); }

    /// Makes the bytes reach the disk and closes the file.
    [[nodiscard]] bool finish() { return m_write.m_calls.sync(m_file.get()) == 0 && m_file.close() == 0; }
    /// Takes a hidden name that no sweep removes.
    [[nodiscard]] bool becomeDisplaced()
    {
        const QByteArray name = displacedName();
        if (m_write.m_calls.rename(m_write.m_directory.get(), m_name.constData(), name.constData()) == -1)
            return false;
        m_name = name;
        return true;
    }
    /// The file is not this write's to remove any more.
    void release() { m_isMade = false; }

private:
    FileWrite& m_write;
    Descriptor m_file;
    QByteArray m_name;
    bool m_isMade = false;
};

FileWrite::Attempt FileWrite::replace()
{
    Temporary temporary(*this, m_status ? privateMode : ordinaryMode);
    if (!temporary.isMade())
        return m_status && isRefusal(errno) ? Attempt::WouldLose : failed();
    if (!writeAll(temporary.file(), m_bytes))
        return failed();
    if (m_status && !copyMetadata(m_calls, m_target.get(), *m_status, temporary.file()))
        return Attempt::WouldLose;
    if (!temporary.finish())
        return failed();
    // As late as can be: what took long is done.
    if (!isAsSeen())
        return Attempt::Outdated;
    const Attempt named = !m_seen    ? giveName(temporary)
                          : m_status ? exchange(temporary)
                                     : publishAgain(temporary);
    return named != Attempt::Succeeded || syncDirectory() ? named : failed();
}

FileWrite::Attempt FileWrite::giveName(Temporary& temporary)
{
    if (m_calls.rename(m_directory.get(), temporary.name(), m_name.constData()) == -1) {
        if (errno == ENOENT)
            return Attempt::Disturbed;
        return m_status && isRefusal(errno) ? Attempt::WouldLose : failed();
    }
    temporary.release();
    return Attempt::Succeeded;
}

/// Makes a file that has gone away again, unless another program does so first.
FileWrite::Attempt FileWrite::publishAgain(Temporary& temporary)
{
    if (publishExclusively(temporary))
        return Attempt::Succeeded;
    if (errno == EEXIST)
        return Attempt::Outdated;
    if (errno == ENOENT)
        return Attempt::Disturbed;
    return isUnknownCall(errno) || errno == EPERM ? giveName(temporary) : failed();
}

/// Takes the old file's place and looks at what was there: between the last look and a plain renaming another
/// program could have put something there that would be gone.
FileWrite::Attempt FileWrite::exchange(Temporary& temporary)
{
    // From here on no sweep may take the file away: soon it is the old one.
    if (!temporary.becomeDisplaced())
        return errno == ENOENT ? Attempt::Disturbed : failed();
    if (m_calls.exchange(m_directory.get(), temporary.name(), m_name.constData()) == -1) {
        if (isUnknownCall(errno))
            return giveName(temporary);
        if (errno == ENOENT)
            return Attempt::Disturbed; // The note has gone away just now.
        return isRefusal(errno) ? Attempt::WouldLose : failed();
    }
    if (contents(temporary.name()) != m_seen) {
        const qsizetype separator = m_path.lastIndexOf('/');
        m_displaced = FileURL::fromBytes(m_path.left(separator + 1) + temporary.name(), false);
        temporary.release();
    }
    return Attempt::Succeeded;
}

FileWrite::Attempt FileWrite::createExclusively()
{
    Temporary temporary(*this, ordinaryMode);
    if (!temporary.isMade() || !writeAll(temporary.file(), m_bytes) || !temporary.finish())
        return failed();
    if (!publishExclusively(temporary)) {
        if (errno == ENOENT)
            return Attempt::Disturbed;
        return isUnknownCall(errno) || errno == EPERM ? createDirectly() : failed();
    }
    return syncDirectory() ? Attempt::Succeeded : failed();
}

bool FileWrite::publishExclusively(Temporary& temporary)
{
    const int folder = m_directory.get();
    if (m_calls.renameExclusively(folder, temporary.name(), folder, m_name.constData()) == 0) {
        temporary.release();
        return true;
    }
    return isUnknownCall(errno) && m_calls.link(folder, temporary.name(), folder, m_name.constData()) == 0;
}

FileWrite::Attempt FileWrite::createDirectly()
{
    Descriptor file(m_calls, m_calls.openAt(m_directory.get(), m_name.constData(),
                                            O_WRONLY | O_CREAT | O_EXCL, ordinaryMode));
    if (!file.isOpen())
        return failed();
    if (!writeAll(file.get(), m_bytes) || m_calls.sync(file.get()) == -1 || file.close() == -1) {
        failed();
        m_calls.remove(m_directory.get(), m_name.constData());
        return Attempt::Failed;
    }
    return syncDirectory() ? Attempt::Succeeded : failed();
}

bool FileWrite::syncDirectory()
{
    // Some file systems cannot sync a folder, and one that was opened for entering only cannot be synced.
    return m_calls.sync(m_directory.get()) == 0 || errno == EINVAL || errno == EBADF;
}

} // namespace wendlore
