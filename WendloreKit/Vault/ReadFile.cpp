#include "Vault/ReadFile.h"

#include <fcntl.h>

namespace wendlore {

Descriptor openRegularFile(const FileURL& url, FileSystemCalls& calls)
{
    if (url.bytes().contains('\0'))
        return Descriptor(calls);
    Descriptor file(calls, calls.openAt(AT_FDCWD, url.bytes().constData(), O_RDONLY | O_NONBLOCK));
    struct stat status = {};
    const bool isRegular =
        file.isOpen() && calls.status(file.get(), &status) != -1 && S_ISREG(status.st_mode);
    return isRegular ? std::move(file) : Descriptor(calls);
}

std::optional<QByteArray> readFile(const FileURL& url, FileSystemCalls& calls)
{
    const Descriptor file = openRegularFile(url, calls);
    return file.isOpen() ? readFile(file.get(), calls) : std::nullopt;
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
