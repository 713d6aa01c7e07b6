#include "Vault/FileWrite.h"

#include "Vault/ReadFile.h"

#include <algorithm>
#include <cstring>

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int maximumLinks = 40;
constexpr int maximumAttempts = 8;
constexpr qsizetype blockSize = 256 * 1024;

} // namespace

FileWrite::FileWrite(FileSystemCalls& calls, FileURL backups, FileURL url, QByteArray bytes)
    : m_calls(calls)
    , m_backups(std::move(backups))
    , m_url(std::move(url))
    , m_bytes(std::move(bytes))
    , m_directory(calls)
    , m_target(calls)
{}

WriteResult FileWrite::write()
{
    for (int attempt = 0; attempt < maximumAttempts; ++attempt) {
        if (!followLinks() || !openTarget())
            return failure();
        const auto isEqual = holdsBytesAlready();
        if (!isEqual)
            return failure();
        if (*isEqual)
            return {WriteOutcome::Unchanged, {}};

        const bool hasOtherNames = m_status && m_status->st_nlink > 1;
        Attempt ended = hasOtherNames ? Attempt::WouldLose : replace();
        const bool isInPlace = ended == Attempt::WouldLose;
        if (isInPlace)
            ended = writeInPlace();
        if (ended == Attempt::Succeeded)
            return {isInPlace ? WriteOutcome::InPlace : WriteOutcome::Replaced, {}, m_displaced};
        if (ended == Attempt::Outdated)
            return {WriteOutcome::Changed, m_url.path() + u": has changed"_s};
        if (ended == Attempt::Failed)
            return failure();
    }
    m_error = EBUSY;
    return failure();
}

WriteResult FileWrite::writeOver(const QByteArray& seen)
{
    m_seen = seen;
    return write();
}

WriteResult FileWrite::create()
{
    for (int attempt = 0; attempt < maximumAttempts; ++attempt) {
        if (!openDirectoryOf(m_url.bytes()))
            return failure();
        const Attempt ended = createExclusively();
        if (ended == Attempt::Succeeded)
            return {WriteOutcome::Replaced, {}};
        if (ended == Attempt::Failed)
            return failure(m_error == EEXIST ? WriteOutcome::Taken : WriteOutcome::Failed);
    }
    m_error = EBUSY;
    return failure();
}

bool FileWrite::openDirectoryOf(const QByteArray& path)
{
    const qsizetype separator = path.lastIndexOf('/');
    if (separator < 0 || separator == path.size() - 1 || path.contains('\0')) {
        m_error = separator < 0 ? ENOENT : path.contains('\0') ? EINVAL : EISDIR;
        return false;
    }
    m_path = path;
    m_name = path.mid(separator + 1);
    const QByteArray folder = path.left(std::max<qsizetype>(separator, 1));
    m_directory = Descriptor(m_calls, m_calls.openAt(AT_FDCWD, folder.constData(), O_RDONLY | O_DIRECTORY));
    // A folder that may be entered but not listed can still be written to.
    if (!m_directory.isOpen() && errno == EACCES)
        m_directory = Descriptor(m_calls, m_calls.openAt(AT_FDCWD, folder.constData(), O_PATH | O_DIRECTORY));
    if (!m_directory.isOpen())
        failed();
    return m_directory.isOpen();
}

bool FileWrite::followLinks()
{
    QByteArray path = m_url.bytes();
    for (int link = 0; link < maximumLinks; ++link) {
        if (!openDirectoryOf(path))
            return false;
        char target[PATH_MAX];
        const ssize_t length = m_calls.readLink(m_directory.get(), m_name.constData(), target, sizeof target);
        if (length < 0) {
            failed();
            return m_error == EINVAL || m_error == ENOENT; // No link, or nothing there yet.
        }
        const QByteArray next(target, length);
        path = next.startsWith('/') ? next : path.left(path.lastIndexOf('/') + 1) + next;
    }
    m_error = ELOOP;
    return false;
}

bool FileWrite::openTarget()
{
    m_status.reset();
    m_target.close();
    struct stat status = {};
    if (m_calls.statusAt(m_directory.get(), m_name.constData(), &status) == -1) {
        failed();
        return m_error == ENOENT;
    }
    if (!S_ISREG(status.st_mode)) {
        m_error = S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP;
        return false;
    }
    // What cannot be read is not overwritten either: nobody could keep what it holds.
    m_target = Descriptor(
        m_calls, m_calls.openAt(m_directory.get(), m_name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    if (!m_target.isOpen() || m_calls.status(m_target.get(), &status) == -1) {
        failed();
        return m_error == ENOENT; // It went away just now.
    }
    m_status = status;
    return true;
}

std::optional<bool> FileWrite::holdsBytesAlready()
{
    if (!m_status || m_status->st_size != m_bytes.size())
        return false;
    QByteArray block(std::min(blockSize, m_bytes.size()), Qt::Uninitialized);
    for (qsizetype position = 0; position < m_bytes.size();) {
        const ssize_t taken =
            m_calls.read(m_target.get(), block.data(), size_t(block.size()), off_t(position));
        if (taken < 0) {
            failed();
            return std::nullopt;
        }
        const qsizetype left = m_bytes.size() - position;
        if (taken == 0 || taken > left ||
            memcmp(block.constData(), m_bytes.constData() + position, taken) != 0)
            return false;
        position += taken;
    }
    return true;
}

bool FileWrite::isAsSeen() const
{
    if (!m_seen)
        return true;
    const auto bytes = contents(m_name);
    return bytes ? bytes == m_seen : errno == ENOENT;
}

std::optional<QByteArray> FileWrite::contents(const QByteArray& name) const
{
    const Descriptor file(
        m_calls, m_calls.openAt(m_directory.get(), name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    return file.isOpen() ? readFile(file.get(), m_calls) : std::nullopt;
}

bool FileWrite::writeAll(int file, const QByteArray& bytes)
{
    for (qsizetype position = 0; position < bytes.size();) {
        const ssize_t taken = m_calls.write(file, bytes.constData() + position,
                                            size_t(bytes.size() - position), off_t(position));
        if (taken == 0)
            errno = ENOSPC;
        if (taken <= 0)
            return false;
        position += taken;
    }
    return true;
}

FileWrite::Attempt FileWrite::failed()
{
    m_error = errno;
    return Attempt::Failed;
}

WriteResult FileWrite::failure(WriteOutcome outcome) const
{
    return {outcome, m_url.path() + u": "_s + qt_error_string(m_error) + m_note};
}

} // namespace wendlore
