#include "Vault/InterruptedWrites.h"

#include "Vault/FileWrite.h"
#include "Vault/Log.h"
#include "Vault/PrivateDirectory.h"
#include "Vault/ReadFile.h"
#include "Vault/RecoveredTexts.h"
#include "Vault/TemporaryName.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <optional>

#include <fcntl.h>
#include <sys/file.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr quint32 magic = 0x574c4231;
const auto suffix = u".backup"_s;

QByteArray encoded(const InterruptedWrites::Entry& entry)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << magic << entry.file.bytes() << entry.oldBytes << entry.newBytes;
    return bytes;
}

std::optional<InterruptedWrites::Entry> decoded(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 start = 0;
    QByteArray path;
    InterruptedWrites::Entry entry;
    stream >> start >> path >> entry.oldBytes >> entry.newBytes;
    if (start != magic || stream.status() != QDataStream::Ok || !path.startsWith('/'))
        return std::nullopt;
    entry.file = FileURL::fromBytes(path, false);
    return entry;
}

/// Whether a write of the new bytes over the old ones can have left `bytes`, wherever it was cut off.
bool isMixture(const QByteArray& bytes, const InterruptedWrites::Entry& entry)
{
    const QByteArray& before = entry.oldBytes;
    const QByteArray& after = entry.newBytes;
    if (bytes.size() < std::min(before.size(), after.size()) ||
        bytes.size() > std::max(before.size(), after.size()))
        return false;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        const bool isNew = at < after.size() && bytes[at] == after[at];
        // Past the old end the disk shows zeros until the new bytes arrive.
        const bool isOld = at < before.size() ? bytes[at] == before[at] : bytes[at] == '\0';
        if (!isNew && !isOld)
            return false;
    }
    return true;
}

} // namespace

InterruptedWrites::InterruptedWrites(FileSystemCalls& calls, FileURL directory)
    : m_calls(calls)
    , m_directory(std::move(directory))
{}

Descriptor InterruptedWrites::lock()
{
    if (m_directory.isEmpty() || !makePrivateDirectory(m_directory)) {
        errno = m_directory.isEmpty() ? ENOTSUP : errno;
        return Descriptor(m_calls);
    }
    const QByteArray path = m_directory.appending(u"lock"_s).bytes();
    Descriptor file(m_calls, m_calls.openAt(AT_FDCWD, path.constData(), O_RDWR | O_CREAT, 0600));
    if (file.isOpen() && m_calls.lock(file.get(), LOCK_EX) == -1)
        return Descriptor(m_calls);
    return file;
}

InterruptedWrites::Backup InterruptedWrites::keep(const Entry& entry)
{
    const FileURL record = m_directory.appending(QString::fromLatin1(temporaryName().mid(1)) + suffix);
    return {record, FileWrite(m_calls, {}, record, encoded(entry)).create()};
}

void InterruptedWrites::forget(const FileURL& record)
{
    m_calls.remove(AT_FDCWD, record.bytes().constData());
}

QList<FileURL> InterruptedWrites::records()
{
    const QDir folder(m_directory.path());
    QList<FileURL> records;
    for (const QString& name : folder.entryList(QStringList(u'*' + suffix), QDir::Files))
        records.append(m_directory.appending(name));
    return records;
}

int InterruptedWrites::settle(RecoveredTexts& recovered)
{
    if (!QFile::exists(m_directory.path()))
        return 0;
    QList<FileURL> found;
    {
        // Who holds the lock is writing still; the backups seen under it belong to processes that have ended.
        const Descriptor lock = this->lock();
        if (!lock.isOpen())
            return 0;
        AtomicFile::sweepLeftovers(m_directory);
        AtomicFile::sweepLeftovers(recovered.directory());
        found = records();
    }
    for (const FileURL& record : found) {
        const auto bytes = readFile(record);
        const auto entry = bytes ? decoded(*bytes) : std::nullopt;
        if (!entry) {
            qCWarning(filesLog) << "cannot read the backup" << record.path();
            continue;
        }
        if (settle(*entry, recovered))
            forget(record);
    }
    return int(found.size());
}

bool InterruptedWrites::settle(const Entry& entry, RecoveredTexts& recovered)
{
    const auto bytes = readFile(entry.file);
    if (bytes == entry.newBytes)
        return true;
    if (bytes && isMixture(*bytes, entry)) {
        const WriteResult result = FileWrite(m_calls, m_directory, entry.file, entry.newBytes).write();
        qCWarning(filesLog) << "completed the interrupted save of" << entry.file.path() << result.error;
        if (result.succeeded())
            return true;
    }
    const auto isKept = [&](const QByteArray& text, const QString& reason) {
        return text.isEmpty() || !recovered.keep(entry.file, text, reason).isEmpty();
    };
    const bool isOldKept = isKept(entry.oldBytes, u"before an interrupted save"_s);
    return isKept(entry.newBytes, u"an interrupted save"_s) && isOldKept;
}

} // namespace wendlore
