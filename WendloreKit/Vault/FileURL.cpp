#include "Vault/FileURL.h"

#include "Vault/EntryURLs.h"
#include "Vault/FileName.h"

#include <QList>

namespace wendlore {

FileURL FileURL::ofPath(std::string_view path, bool isDirectory)
{
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    if (path.empty())
        return {PathMemory(), 0, 0, isDirectory};
    const std::size_t folder = path.rfind('/') + 1; // 0 when there is none
    const std::string_view name = path.substr(folder);
    PathMemory memory({path.substr(0, folder)}, name.size());
    name.copy(memory.room(), name.size());
    return {std::move(memory), 0, std::uint32_t(name.size()), isDirectory};
}

FileURL FileURL::file(const QString& path)
{
    return fromBytes(path.toUtf8(), false);
}

FileURL FileURL::directory(const QString& path)
{
    return fromBytes(path.toUtf8(), true);
}

FileURL FileURL::fromBytes(const QByteArray& path, bool isDirectory)
{
    return ofPath({path.constData(), std::size_t(path.size())}, isDirectory);
}

QByteArray FileURL::bytes() const
{
    const std::string_view before = folder();
    const std::string_view last = name();
    QByteArray path(qsizetype(before.size() + last.size()), Qt::Uninitialized);
    last.copy(path.data() + before.copy(path.data(), before.size()), last.size());
    return path;
}

QString FileURL::path() const
{
    return QString::fromUtf8(bytes());
}

QString FileURL::lastPathComponent() const
{
    return QString::fromUtf8(nameBytes());
}

QByteArray FileURL::nameBytes() const
{
    const std::string_view last = name().empty() ? folder() : name();
    return QByteArray(last.data(), qsizetype(last.size()));
}

QString FileURL::pathExtension() const
{
    return QString::fromUtf8(extensionOf(nameBytes()));
}

QString FileURL::nameWithoutExtension() const
{
    return QString::fromUtf8(withoutExtension(nameBytes()));
}

FileURL FileURL::deletingLastPathComponent() const
{
    return ofPath(folder().empty() ? "/" : folder(), true);
}

FileURL FileURL::appending(const QString& component, bool isDirectory) const
{
    return appendingBytes(component.toUtf8(), isDirectory);
}

FileURL FileURL::appendingBytes(const QByteArray& component, bool isDirectory) const
{
    const QByteArray path = bytes();
    const bool joined = path.endsWith('/') || component.startsWith('/');
    return fromBytes(joined ? path + component : path + '/' + component, isDirectory);
}

FileURL FileURL::entry(std::string_view name, bool isDirectory) const
{
    return EntryURLs(*this, name.size()).add(name, isDirectory);
}

FileURL FileURL::standardized() const
{
    QList<QByteArray> kept;
    for (const QByteArray& part : bytes().split('/')) {
        if (part.isEmpty() || part == ".")
            continue;
        if (part != "..")
            kept.append(part);
        else if (!kept.isEmpty())
            kept.removeLast();
    }
    return fromBytes('/' + kept.join('/'), m_isDirectory);
}

bool FileURL::isBelow(const FileURL& folder) const
{
    const std::string_view above = this->folder();
    const std::string_view before = folder.folder();
    const std::string_view last = folder.name();
    if (last.empty())
        return !name().empty() && above.starts_with(before);
    return above.size() > before.size() + last.size() && above.starts_with(before) &&
           above.substr(before.size()).starts_with(last) && above[before.size() + last.size()] == '/';
}

} // namespace wendlore
