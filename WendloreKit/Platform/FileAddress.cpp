#include "Platform/FileAddress.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

QUrl fileAddress(const FileURL& file)
{
    return QUrl::fromEncoded("file://" + file.bytes().toPercentEncoding("/"));
}

std::optional<FileURL> fileAt(const QUrl& address)
{
    const bool isHere = address.host().isEmpty() || address.host() == "localhost"_L1;
    const QByteArray path = QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toUtf8());
    if (address.scheme() != "file"_L1 || !isHere || !path.startsWith('/') || path.contains('\0'))
        return std::nullopt;
    const bool isDirectory = QFileInfo(QFile::decodeName(path)).isDir();
    return FileURL::fromBytes(path, isDirectory).standardized();
}

} // namespace wendlore
