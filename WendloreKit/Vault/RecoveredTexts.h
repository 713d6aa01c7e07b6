#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QDateTime>

#include <functional>

namespace wendlore {

/// The net beneath the saving rules: before a rule drops text without a copy, the text is kept here, named by
/// note and time. The folder is capped: entries older than `maximumAgeDays` go, then the oldest until
/// `maximumBytes` fit.
class RecoveredTexts final
{
public:
    static constexpr int maximumAgeDays = 90;
    static constexpr qint64 maximumBytes = 200 * 1024 * 1024;

    /// Keeps texts in `directory` (made when first needed). `now` gives the time that names entries.
    explicit RecoveredTexts(
        FileURL directory, std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    /// Keeps `bytes`, which belong to the note at `note`, and logs `reason`. Gives the entry's location;
    /// empty when it could not be written (logged). Text that the newest entry of that note holds already is
    /// not kept twice.
    FileURL keep(const FileURL& note, const QByteArray& bytes, const QString& reason);

    /// Moves a file or folder in here that would be removed for good, and logs `reason`. Gives the entry's
    /// location; empty when the item stays where it is (logged).
    FileURL take(const FileURL& item, const QString& reason);

    [[nodiscard]] const FileURL& directory() const { return m_directory; }

private:
    template <typename Put>
    FileURL putEntry(const FileURL& item, const QString& reason, const Put& put) const;
    void enforceLimits() const;

    FileURL m_directory;
    std::function<QDateTime()> m_now;
};

} // namespace wendlore
