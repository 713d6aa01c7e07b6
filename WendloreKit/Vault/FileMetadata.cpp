#include "Vault/FileMetadata.h"

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace wendlore {

namespace {

constexpr mode_t modeBits = 07777;

bool belongsToUser(const QByteArray& attribute)
{
    return attribute.startsWith("user.") || attribute == "system.posix_acl_access";
}

/// What `read` puts into a buffer whose size it tells when asked with size 0.
template <typename Read>
std::optional<QByteArray> readSized(const Read& read)
{
    for (;;) {
        const ssize_t size = read(nullptr, 0);
        if (size < 0)
            return std::nullopt;
        QByteArray bytes(size, Qt::Uninitialized);
        const ssize_t taken = size == 0 ? 0 : read(bytes.data(), size_t(size));
        if (taken >= 0) {
            bytes.truncate(taken);
            return bytes;
        }
        if (errno != ERANGE)
            return std::nullopt;
    }
}

/// Names of the attributes to keep; nothing when they cannot be told. A file system without any has none.
std::optional<QByteArrayList> attributeNames(FileSystemCalls& calls, int file)
{
    const auto joined =
        readSized([&](char* names, size_t size) { return calls.listAttributes(file, names, size); });
    if (!joined)
        return errno == ENOTSUP ? std::optional(QByteArrayList()) : std::nullopt;
    QByteArrayList names = joined->split('\0');
    names.removeIf([](const QByteArray& name) { return !belongsToUser(name); });
    return names;
}

bool copyAttributes(FileSystemCalls& calls, int from, int to)
{
    const auto wanted = attributeNames(calls, from);
    const auto present = attributeNames(calls, to);
    if (!wanted || !present)
        return false;
    // A new file inherits the access list that its folder prescribes; the old file may have none.
    for (const QByteArray& name : *present) {
        if (!wanted->contains(name) && calls.removeAttribute(to, name.constData()) == -1)
            return false;
    }
    for (const QByteArray& name : *wanted) {
        const auto value = readSized(
            [&](void* bytes, size_t size) { return calls.attribute(from, name.constData(), bytes, size); });
        if (!value ||
            calls.setAttribute(to, name.constData(), value->constData(), size_t(value->size())) == -1)
            return false;
    }
    return true;
}

} // namespace

bool copyMetadata(FileSystemCalls& calls, int from, const struct stat& status, int to)
{
    struct stat made = {};
    if (calls.status(to, &made) == -1)
        return false;
    const bool hasOwner = made.st_uid == status.st_uid && made.st_gid == status.st_gid;
    if (!hasOwner && calls.changeOwner(to, status.st_uid, status.st_gid) == -1)
        return false;
    // The mode comes last: a change of owner clears bits of it, an access list sets some.
    if (!copyAttributes(calls, from, to) || calls.status(to, &made) == -1)
        return false;
    const bool hasMode = (made.st_mode & modeBits) == (status.st_mode & modeBits);
    return hasMode || calls.changeMode(to, status.st_mode & modeBits) == 0;
}

} // namespace wendlore
