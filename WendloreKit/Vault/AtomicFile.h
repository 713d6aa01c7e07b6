#pragma once

#include "Vault/FileSystemCalls.h"
#include "Vault/FileURL.h"

#include <QByteArray>
#include <QString>

#include <chrono>

namespace wendlore {

class RecoveredTexts;

/// How a write ended.
enum class WriteOutcome {
    Unchanged, ///< the file held these bytes already; nothing was written
    Replaced,  ///< a new file took the old one's place (or there was none) in one step
    InPlace,   ///< written into the existing file, because replacing it would have lost links or ownership
    Taken,     ///< nothing was created, because something of that name exists
    Changed,   ///< nothing was written, because the file no longer holds what the caller has seen
    /// The new bytes are not safely on the disk. The old ones are still there; where even that failed,
    /// `error` names the backup that holds them.
    Failed
};

/// What a write did. `error` is empty when it succeeded.
struct WriteResult final
{
    WriteOutcome outcome = WriteOutcome::Failed;
    QString error = {};
    /// After `writeOver`: a hidden file beside the written one with a version that nobody has seen, as it
    /// came at the very moment of the replacement. Whoever wrote gives it a name that people find.
    FileURL displaced = {};

    [[nodiscard]] bool succeeded() const
    {
        return outcome == WriteOutcome::Unchanged || outcome == WriteOutcome::Replaced ||
               outcome == WriteOutcome::InPlace;
    }
};

/// The one way this program writes a file. The old bytes or the new ones are there at every moment, also
/// after a kill or a full disk, and both the bytes and the directory entry have reached the disk when it
/// returns.
namespace AtomicFile {

/// Where files that have to be written in place are backed up meanwhile, and where such a backup is found
/// again.
void setBackupDirectory(const FileURL& directory);

/// Ends the in-place writes that a kill cut off, once at start-up. What cannot be ended, because the file was
/// changed since, is put into `recovered`. Gives how many there were.
int settleInterruptedWrites(RecoveredTexts& recovered);

/// Makes `url` hold exactly `bytes`. Follows symbolic links; keeps mode, owner and extended attributes.
[[nodiscard]] WriteResult write(const FileURL& url, const QByteArray& bytes);

/// The same, unless the file holds something else than `seen` by the time the bytes would take its place
/// (`Changed`). A file that is gone is made again. Where the file system can exchange two names, not even
/// what comes in the last moment is lost (`displaced`).
[[nodiscard]] WriteResult writeOver(const FileURL& url, const QByteArray& seen, const QByteArray& bytes,
                                    FileSystemCalls& calls = FileSystemCalls::real());

/// Creates `url` holding `bytes`, unless anything of that name exists, also when it appears meanwhile
/// (`Taken`).
[[nodiscard]] WriteResult create(const FileURL& url, const QByteArray& bytes);

/// Removes leftovers of interrupted writes that lie directly in `directory`; gives how many there were.
int sweepLeftovers(const FileURL& directory);

/// Moves what lies in `directory` as `displaced` for longer than `age` into `recovered`: its writer was
/// killed before it could look at it. Gives how many there were.
int recoverDisplaced(const FileURL& directory, RecoveredTexts& recovered,
                     std::chrono::seconds age = std::chrono::seconds(10));

} // namespace AtomicFile

} // namespace wendlore
