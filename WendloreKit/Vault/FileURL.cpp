#include "Vault/FileURL.h"

#include "Vault/FileName.h"

#include <QList>

#include <cstring>

namespace wendlore {

namespace {

QByteArray withoutTrailingSeparators(QByteArray path)
{
    qsizetype length = path.size();
    while (length > 1 && path[length - 1] == '/')
        --length;
    path.truncate(length);
    return path;
}

} // namespace

FileURL FileURL::file(const QString& path)
{
    return {withoutTrailingSeparators(path.toUtf8()), false};
}

FileURL FileURL::directory(const QString& path)
{
    return {withoutTrailingSeparators(path.toUtf8()), true};
}

FileURL FileURL::fromBytes(QByteArray path, bool isDirectory)
{
    return {withoutTrailingSeparators(std::move(path)), isDirectory};
}

QString FileURL::path() const
{
    return QString::fromUtf8(m_path);
}

QString FileURL::lastPathComponent() const
{
    return QString::fromUtf8(nameBytes());
}

QByteArray FileURL::nameBytes() const
{
    return m_path.size() == 1 ? m_path : m_path.mid(m_path.lastIndexOf('/') + 1);
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
    const qsizetype separator = m_path.lastIndexOf('/');
    return {separator <= 0 ? QByteArray("/") : m_path.left(separator), true};
}

FileURL FileURL::appending(const QString& component, bool isDirectory) const
{
    return appendingBytes(component.toUtf8(), isDirectory);
}

FileURL FileURL::appendingBytes(const QByteArray& component, bool isDirectory) const
{
    const bool joined = m_path.endsWith('/') || component.startsWith('/');
    return fromBytes(joined ? m_path + component : m_path + '/' + component, isDirectory);
}

FileURL FileURL::entry(std::string_view name, bool isDirectory) const
{
    const qsizetype folder = m_path.endsWith('/') ? m_path.size() - 1 : m_path.size();
    QByteArray path(folder + 1 + static_cast<qsizetype>(name.size()), Qt::Uninitialized);
    char* bytes = path.data();
    std::memcpy(bytes, m_path.constData(), static_cast<std::size_t>(folder));
    bytes[folder] = '/';
    std::memcpy(bytes + folder + 1, name.data(), name.size());
    return {std::move(path), isDirectory};
}

FileURL FileURL::standardized() const
{
    QList<QByteArray> kept;
    for (const QByteArray& part : m_path.split('/')) {
        if (part.isEmpty() || part == ".")
            continue;
        if (part != "..")
            kept.append(part);
        else if (!kept.isEmpty())
            kept.removeLast();
    }
    return {'/' + kept.join('/'), m_isDirectory};
}

bool FileURL::isBelow(const FileURL& folder) const
{
    const QByteArray& root = folder.m_path;
    if (root == "/")
        return m_path.size() > 1;
    return m_path.size() > root.size() && m_path.startsWith(root) && m_path[root.size()] == '/';
}

} // namespace wendlore
