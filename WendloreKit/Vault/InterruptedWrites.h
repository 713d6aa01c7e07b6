#pragma once

#include "Vault/AtomicFile.h"
#include "Vault/FileSystemCalls.h"

namespace wendlore {

class RecoveredTexts;

/// Backups of files that are written over their old bytes. A backup is on the disk before the first byte
/// changes and goes when the last one is on the disk; one that is found at a start tells of a write that was
/// cut off.
class InterruptedWrites final
{
public:
    /// One write over old bytes.
    struct Entry final
    {
        FileURL file;
        QByteArray oldBytes;
        QByteArray newBytes;
    };
    /// Where a backup lies, when `result` says that it could be made.
    struct Backup final
    {
        FileURL record;
        WriteResult result;
    };

    InterruptedWrites(FileSystemCalls& calls, FileURL directory);

    /// Keeps every other process from writing in place until the descriptor is closed; not open (and `errno`
    /// set) when the folder cannot be used.
    [[nodiscard]] Descriptor lock();
    [[nodiscard]] Backup keep(const Entry& entry);
    void forget(const FileURL& record);

    /// Ends the writes that were cut off: a file that holds a mixture of old and new bytes gets the new ones.
    /// One that was changed since, or is gone, stays as it is, and both texts are put into `recovered`.
    /// Gives how many there were.
    int settle(RecoveredTexts& recovered);

private:
    /// False when the backup is still needed.
    [[nodiscard]] bool settle(const Entry& entry, RecoveredTexts& recovered);
    [[nodiscard]] QList<FileURL> records();

    FileSystemCalls& m_calls;
    FileURL m_directory;
};

} // namespace wendlore
