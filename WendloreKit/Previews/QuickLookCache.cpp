#include "Previews/QuickLookCache.h"

#include "Previews/FileStatus.h"

#include "Vault/AtomicFile.h"
#include "Vault/PrivateDirectory.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace wendlore {

QuickLookCache::QuickLookCache(FileURL folder, qint64 maximumSize)
    : m_folder(std::move(folder))
    , m_maximumSize(maximumSize)
{}

FileURL QuickLookCache::standardFolder()
{
    return FileURL::directory(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation))
        .appending(u"wendlores/previews"_s, true);
}

FileURL QuickLookCache::placeOf(const FileURL& file, const QString& extension) const
{
    const auto status = statusOf(file);
    if (!status)
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(file.bytes());
    hash.addData(QByteArray(1, '\0') + QByteArray::number(qint64(status->st_size)) + ' ' +
                 QByteArray::number(changeTime(*status)));
    return m_folder.appending(QString::fromLatin1(hash.result().toHex().first(40)) + u'.' + extension);
}

bool QuickLookCache::has(const FileURL& place) const
{
    QFile file(QFile::decodeName(place.bytes()));
    if (place.isEmpty() || !file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return false;
    file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    return file.size() > 0;
}

bool QuickLookCache::keep(const FileURL& place, const QByteArray& bytes) const
{
    if (place.isEmpty() || bytes.size() > m_maximumSize || !makePrivateDirectory(m_folder) ||
        !AtomicFile::write(place, bytes).succeeded())
        return false;
    dropOldest(place);
    return true;
}

void QuickLookCache::dropOldest(const FileURL& kept) const
{
    qint64 size = 0;
    const auto newestFirst = QDir(m_folder.path()).entryInfoList(QDir::Files, QDir::Time);
    for (const QFileInfo& info : newestFirst) {
        size += info.size();
        if (size > m_maximumSize && info.fileName() != kept.lastPathComponent())
            QFile::remove(info.filePath());
    }
}

} // namespace wendlore
