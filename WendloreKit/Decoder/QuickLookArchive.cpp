#include "Decoder/QuickLookArchive.h"

#include <archive.h>
#include <archive_entry.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Small, so that the time is looked at often while a tiny file unpacks to a huge one.
constexpr qsizetype blockSize = 16 * 1024;

/// An archive that is being read from its beginning to its end.
class Reading final
{
public:
    Reading(const QuickLookFile& file, const QuickLookLimits& limits)
        : m_file(file.contents())
        , m_limits(limits)
        , m_block(blockSize, Qt::Uninitialized)
        , m_archive(archive_read_new())
    {
        if (!m_archive || !file.isOpen() || m_file.isSequential())
            return;
        archive_read_support_format_all(m_archive.get());
        // Not all of them: some are other programs, which would be started.
        archive_read_support_filter_gzip(m_archive.get());
        archive_read_support_filter_bzip2(m_archive.get());
        archive_read_support_filter_xz(m_archive.get());
        archive_read_support_filter_lzma(m_archive.get());
        archive_read_support_filter_zstd(m_archive.get());
        archive_read_support_filter_compress(m_archive.get());
        archive_read_set_seek_callback(m_archive.get(), &Reading::seek);
        m_isOpen = archive_read_open2(m_archive.get(), this, nullptr, &Reading::read, &Reading::skip,
                                      nullptr) == ARCHIVE_OK;
    }

    /// The next entry, valid until the one after it; null at the end, where the archive is damaged, and when
    /// the time is over.
    archive_entry* next()
    {
        archive_entry* entry = nullptr;
        if (!m_isOpen || m_limits.areReached())
            return nullptr;
        const int status = archive_read_next_header(m_archive.get(), &entry);
        return status == ARCHIVE_OK || status == ARCHIVE_WARN ? entry : nullptr;
    }

    /// What the entry that came last holds; nothing when that is more than `maximum` bytes or damaged.
    std::optional<QByteArray> contents(qint64 maximum)
    {
        QByteArray bytes;
        for (;;) {
            const la_ssize_t count = archive_read_data(m_archive.get(), m_chunk.data(), m_chunk.size());
            if (count == 0)
                return bytes;
            if (count < 0 || bytes.size() + count > maximum || m_limits.areReached())
                return std::nullopt;
            bytes.append(m_chunk.data(), count);
        }
    }

private:
    static la_ssize_t read(archive* archive, void* self, const void** block)
    {
        auto& reading = *static_cast<Reading*>(self);
        if (reading.m_limits.areReached()) {
            archive_set_error(archive, ECANCELED, "stopped");
            return ARCHIVE_FATAL;
        }
        *block = reading.m_block.constData();
        return reading.m_file.read(reading.m_block.data(), blockSize);
    }

    static la_int64_t skip(archive*, void* self, la_int64_t wanted)
    {
        QFile& file = static_cast<Reading*>(self)->m_file;
        const qint64 before = file.pos();
        const qint64 target = std::clamp(before + wanted, before, std::max(before, file.size()));
        return file.seek(target) ? target - before : 0;
    }

    static la_int64_t seek(archive*, void* self, la_int64_t offset, int whence)
    {
        QFile& file = static_cast<Reading*>(self)->m_file;
        const qint64 base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.pos() : file.size();
        const qint64 target = base + offset;
        if (target < 0 || target > file.size() || !file.seek(target))
            return ARCHIVE_FATAL;
        return target;
    }

    struct Free final
    {
        void operator()(archive* archive) const { archive_read_free(archive); }
    };

    QFile& m_file;
    const QuickLookLimits& m_limits;
    QByteArray m_block;
    QByteArray m_chunk = QByteArray(64 * 1024, Qt::Uninitialized);
    std::unique_ptr<archive, Free> m_archive;
    bool m_isOpen = false;
};

QString pathOf(archive_entry* entry)
{
    const char* path = archive_entry_pathname_utf8(entry);
    return QString::fromUtf8(path ? path : archive_entry_pathname(entry));
}

ArchiveEntry described(archive_entry* entry)
{
    ArchiveEntry described{.path = pathOf(entry), .size = {}, .modified = {}, .isFolder = false};
    described.isFolder = archive_entry_filetype(entry) == AE_IFDIR;
    if (archive_entry_size_is_set(entry) && !described.isFolder)
        described.size = archive_entry_size(entry);
    if (archive_entry_mtime_is_set(entry))
        described.modified = QDateTime::fromSecsSinceEpoch(archive_entry_mtime(entry));
    return described;
}

} // namespace

std::optional<ArchiveListing> listArchive(const QuickLookFile& file, const QuickLookLimits& limits,
                                          qsizetype maximum)
{
    Reading reading(file, limits);
    ArchiveListing listing;
    while (archive_entry* entry = reading.next()) {
        if (listing.entries.size() == maximum) {
            listing.isWhole = false;
            break;
        }
        listing.entries.append(described(entry));
    }
    if (limits.areReached())
        listing.isWhole = false;
    return listing.entries.isEmpty() ? std::nullopt : std::optional(listing);
}

QHash<QString, QByteArray> readArchive(const QuickLookFile& file,
                                       const std::function<bool(const QString&)>& isWanted,
                                       qint64 maximumSize, const QuickLookLimits& limits)
{
    QHash<QString, QByteArray> contents;
    Reading reading(file, limits);
    while (archive_entry* entry = reading.next()) {
        const QString path = pathOf(entry);
        if (archive_entry_filetype(entry) != AE_IFREG || !isWanted(path))
            continue;
        if (auto bytes = reading.contents(maximumSize)) {
            maximumSize -= bytes->size();
            contents.insert(path, std::move(*bytes));
        }
    }
    return contents;
}

} // namespace wendlore
