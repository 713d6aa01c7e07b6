#include "Vault/ReadFile.h"

#include <fcntl.h>

namespace wendlore {

std::optional<QByteArray> readFile(const FileURL& url, FileSystemCalls& calls)
{
    if (url.bytes().contains('\0'))
        return std::nullopt;
    const Descriptor file(calls, calls.openAt(AT_FDCWD, url.bytes().constData(), O_RDONLY | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || calls.status(file.get(), &status) == -1 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return readFile(file.get(), calls);
}

std::optional<QByteArray> readFile(int descriptor, FileSystemCalls& calls)
{
    struct stat status = {};
    if (calls.status(descriptor, &status) == -1)
        return std::nullopt;
    QByteArray bytes(status.st_size, Qt::Uninitialized);
    for (qsizetype position = 0; position < bytes.size();) {
        const ssize_t taken =
            calls.read(descriptor, bytes.data() + position, size_t(bytes.size() - position), off_t(position));
        if (taken < 0)
            return std::nullopt;
        if (taken == 0)
            bytes.truncate(position);
        position += taken;
    }
    return bytes;
}

} // namespace wendlore
