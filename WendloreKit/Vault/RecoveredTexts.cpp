#include "Vault/RecoveredTexts.h"

#include "Vault/AtomicFile.h"
#include "Vault/ExclusiveMove.h"
#include "Vault/Log.h"
#include "Vault/PrivateDirectory.h"
#include "Vault/ReadFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int maximumNameBytes = 180;
constexpr int maximumExtensionBytes = 30;
constexpr int maximumPerSecond = 1000;
constexpr auto stampFormat = "yyyy-MM-dd HHmmss";

/// One kept text, as its file name tells: "Möte 2025-03-14 093200 1a2b3c4d 2.md", where the letters before
/// the number stand for the note's path.
struct Kept final
{
    QString fileName;
    QDateTime time;
    QString noteKey;
    int number = 1;
    qint64 size = 0;
};

/// How it went to put an entry under some name.
struct Ending final
{
    bool isTaken;
    QString error;
};

/// Eight letters that stand for a note's whole path, so that notes of one name are kept apart.
QString noteKey(const FileURL& note)
{
    const QByteArray digest = QCryptographicHash::hash(note.bytes(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex().first(8));
}

qint64 sizeOf(const QFileInfo& entry)
{
    if (!entry.isDir() || entry.isSymLink())
        return entry.isSymLink() ? 0 : entry.size();
    qint64 bytes = 0;
    QDirIterator files(entry.filePath(), QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        bytes += files.fileInfo().size();
    }
    return bytes;
}

/// The texts kept in `directory`, oldest first; other files are left out.
std::vector<Kept> keptTexts(const FileURL& directory)
{
    static const QRegularExpression pattern(
        uR"( (\d{4}-\d\d-\d\d \d{6}) ([0-9a-f]{8})(?: (\d+))?(?:\.[^.]*)?$)"_s);
    std::vector<Kept> texts;
    const QFileInfoList files =
        QDir(directory.path())
            .entryInfoList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo& info : files) {
        const auto match = pattern.match(info.fileName());
        const auto time = QDateTime::fromString(match.captured(1), QString::fromLatin1(stampFormat));
        if (match.hasMatch() && time.isValid())
            texts.push_back({info.fileName(), time, match.captured(2), std::max(1, match.captured(3).toInt()),
                             sizeOf(info)});
    }
    std::ranges::stable_sort(texts, [](const Kept& left, const Kept& right) {
        return std::tie(left.time, left.number) < std::tie(right.time, right.number);
    });
    return texts;
}

/// The start of `text` that fits into `maximum` bytes of UTF-8.
QString truncatedToBytes(QString text, qsizetype maximum)
{
    while (text.toUtf8().size() > maximum)
        text.chop(text.size() > 1 && text.back().isLowSurrogate() ? 2 : 1);
    return text;
}

QString entryName(const FileURL& note, const QString& time, int number)
{
    const QString extension = truncatedToBytes(note.pathExtension(), maximumExtensionBytes);
    return truncatedToBytes(note.nameWithoutExtension(), maximumNameBytes) + u' ' + time + u' ' +
           noteKey(note) + (number == 1 ? QString() : u' ' + QString::number(number)) +
           (extension.isEmpty() ? QString() : u'.' + extension);
}

} // namespace

RecoveredTexts::RecoveredTexts(FileURL directory, std::function<QDateTime()> now)
    : m_directory(std::move(directory))
    , m_now(std::move(now))
{}

FileURL RecoveredTexts::keep(const FileURL& note, const QByteArray& bytes, const QString& reason)
{
    if (bytes.isEmpty())
        return {};
    const auto texts = keptTexts(m_directory);
    const auto newest = std::ranges::find(texts.rbegin(), texts.rend(), noteKey(note), &Kept::noteKey);
    if (newest != texts.rend()) {
        const FileURL entry = m_directory.appending(newest->fileName);
        if (readFile(entry) == bytes)
            return entry;
    }
    return putEntry(note, reason, [&](const FileURL& entry) {
        const WriteResult result = AtomicFile::create(entry, bytes);
        return Ending{result.outcome == WriteOutcome::Taken, result.error};
    });
}

FileURL RecoveredTexts::take(const FileURL& item, const QString& reason)
{
    return putEntry(item, reason, [&](const FileURL& entry) {
        const int error = moveExclusively(item, entry);
        return Ending{error == EEXIST, error == 0 ? QString() : qt_error_string(error)};
    });
}

/// Calls `put` with the locations that the next entry may have, until one is not taken.
template <typename Put>
FileURL RecoveredTexts::putEntry(const FileURL& item, const QString& reason, const Put& put) const
{
    const QString time = m_now().toString(QString::fromLatin1(stampFormat));
    Ending ending{true, m_directory.path()};
    if (!makePrivateDirectory(m_directory))
        ending.isTaken = false;
    for (int number = 1; ending.isTaken && number <= maximumPerSecond; ++number) {
        const FileURL entry = m_directory.appending(entryName(item, time, number));
        ending = put(entry);
        if (ending.error.isEmpty()) {
            qCWarning(filesLog) << "kept" << item.path() << "in" << entry.path() << ":" << reason;
            enforceLimits();
            return entry;
        }
    }
    qCWarning(filesLog) << "cannot keep" << item.path() << ":" << ending.error;
    return {};
}

void RecoveredTexts::enforceLimits() const
{
    const auto texts = keptTexts(m_directory);
    const QDateTime oldest = m_now().addDays(-maximumAgeDays);
    std::error_code error;
    qint64 bytes = 0;
    // Newest first; the one that was kept just now stays however large it is.
    for (size_t index = texts.size(); index-- > 0;) {
        bytes += texts[index].size;
        const bool isNewest = index == texts.size() - 1;
        if (!isNewest && (texts[index].time < oldest || bytes > maximumBytes))
            std::filesystem::remove_all(m_directory.appending(texts[index].fileName).bytes().toStdString(),
                                        error);
    }
}

} // namespace wendlore
