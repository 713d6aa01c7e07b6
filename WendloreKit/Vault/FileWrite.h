#pragma once

#include "Vault/AtomicFile.h"
#include "Vault/FileSystemCalls.h"

#include <optional>

namespace wendlore {

/// The steps of one safe write; `AtomicFile` is how the rest of the program asks for one.
///
///   finding the file, choosing how to write it     FileWrite.cpp
///   a new file that takes the old one's place      FileWrite+Replace.cpp
///   over the old bytes, with a backup              FileWrite+InPlace.cpp
class FileWrite final
{
public:
    /// Prepares to make `url` hold `bytes`. In-place writes keep their backup in `backups`; without it they
    /// fail.
    FileWrite(FileSystemCalls& calls, FileURL backups, FileURL url, QByteArray bytes);

    /// Makes the file hold the bytes, whether it exists or not.
    [[nodiscard]] WriteResult write();
    /// The same, unless the file holds something else than `seen` just before the bytes take its place.
    [[nodiscard]] WriteResult writeOver(const QByteArray& seen);
    /// Makes the file, unless something of that name exists.
    [[nodiscard]] WriteResult create();

private:
    enum class Attempt {
        Succeeded,
        WouldLose, ///< a new file could not keep what belongs to the old one
        Disturbed, ///< another program got in between; to be tried again
        Outdated,  ///< another program has put something else there than the caller has seen
        Failed     ///< `m_error` says why
    };
    class Temporary;

    [[nodiscard]] bool openDirectoryOf(const QByteArray& path);
    [[nodiscard]] bool followLinks();
    [[nodiscard]] bool openTarget();
    [[nodiscard]] std::optional<bool> holdsBytesAlready();
    /// Whether replacing the file now would take away nothing that the caller has not seen.
    [[nodiscard]] bool isAsSeen() const;
    [[nodiscard]] std::optional<QByteArray> contents(const QByteArray& name) const;

    [[nodiscard]] Attempt replace();
    [[nodiscard]] Attempt giveName(Temporary& temporary);
    [[nodiscard]] Attempt publishAgain(Temporary& temporary);
    [[nodiscard]] Attempt exchange(Temporary& temporary);
    [[nodiscard]] Attempt createExclusively();
    [[nodiscard]] Attempt createDirectly();
    [[nodiscard]] bool publishExclusively(Temporary& temporary);
    [[nodiscard]] bool syncDirectory();

    [[nodiscard]] Attempt writeInPlace();
    [[nodiscard]] Attempt overwrite(int file, const QByteArray& old, bool* isOldIntact);
    [[nodiscard]] bool putBytes(int file, const QByteArray& bytes);

    [[nodiscard]] bool writeAll(int file, const QByteArray& bytes);
    /// Remembers why the last call failed.
    Attempt failed();
    [[nodiscard]] WriteResult failure(WriteOutcome outcome = WriteOutcome::Failed) const;

    FileSystemCalls& m_calls;
    FileURL m_backups;
    FileURL m_url;
    QByteArray m_bytes;
    std::optional<QByteArray> m_seen; ///< absent when the file may hold anything

    QByteArray m_path;
    QByteArray m_name;
    Descriptor m_directory;
    Descriptor m_target;
    std::optional<struct stat> m_status;
    int m_error = 0;
    QString m_note;
    FileURL m_displaced; ///< as `WriteResult` has it
};

} // namespace wendlore
