#include "Editor/NoteSaver.h"

#include "Editor/ConflictCopy.h"
#include "Editor/NoteText.h"

#include "State/Workspace.h"

#include "Vault/AtomicFile.h"
#include "Vault/DiskEntry.h"
#include "Vault/FileCoordinator.h"
#include "Vault/Log.h"
#include "Vault/ReadFile.h"
#include "Vault/RecoveredTexts.h"

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// How often another program may take a conflict copy's name, or change the note, just before us.
constexpr int maximumAttempts = 10;

/// Writes `ours`, unless there is something else by now than `theirs`, or anything where there was nothing.
WriteResult write(const FileURL& note, const std::optional<QByteArray>& theirs, const QByteArray& ours,
                  FileSystemCalls& calls)
{
    if (theirs)
        return AtomicFile::writeOver(note, *theirs, ours, calls);
    const WriteResult created = AtomicFile::create(note, ours);
    // A link to nothing is followed, and a folder is no place for a text. A file has come just now, and has
    // not been read.
    const bool isInTheWay = created.outcome == WriteOutcome::Taken && diskEntry(note) != DiskEntry::File;
    return isInTheWay ? AtomicFile::writeOver(note, {}, ours, calls) : created;
}

void logConflict(const FileURL& note, const QString& baseline, const QString& disk, const QString& markdown)
{
    qCWarning(filesLog).noquote() << u"[SYNC] konflikt %1 baselineLen=%2 diskLen=%3 mdLen=%4"_s.arg(
        note.lastPathComponent(), QString::number(characterCount(baseline)),
        QString::number(characterCount(disk)), QString::number(characterCount(markdown)));
}

} // namespace

NoteSaver::NoteSaver(FileCoordinator& coordinator, RecoveredTexts& recovered, const Workspace& workspace,
                     Clock now, FileSystemCalls& calls)
    : m_coordinator(coordinator)
    , m_recovered(recovered)
    , m_workspace(workspace)
    , m_now(std::move(now))
    , m_calls(calls)
{}

NoteSaver::Result NoteSaver::save(const FileURL& note, const QString& baseline, const QString& markdown)
{
    const QByteArray ours = markdown.toUtf8();
    FileURL conflictCopy;
    for (int attempt = 0; attempt < maximumAttempts; ++attempt) {
        std::optional<QByteArray> theirs;
        Result result;
        if (diskEntry(note) == DiskEntry::File) {
            theirs = m_coordinator.readWhole(note);
            result = theirs ? keepTheirs(note, *theirs, baseline, markdown) : moveAside(note, note);
        }
        if (result.conflictCopy.isEmpty())
            result.conflictCopy = conflictCopy;
        if (!result.isKept)
            return result;
        const WriteResult written = write(note, theirs, ours, m_calls);
        if (written.outcome == WriteOutcome::Changed || written.outcome == WriteOutcome::Taken) {
            conflictCopy = result.conflictCopy; // one more version came while ours was written
            continue;
        }
        if (!written.displaced.isEmpty())
            keepDisplaced(result, note, written.displaced, baseline, markdown);
        if (!written.succeeded()) {
            qCWarning(filesLog) << "cannot write" << note.path() << ":" << written.error;
            result.isKept =
                ours.isEmpty() || !m_recovered.keep(note, ours, u"the note could not be written"_s).isEmpty();
        }
        return result;
    }
    return {.isKept = false, .conflictCopy = conflictCopy};
}

NoteSaver::Result NoteSaver::keepTheirs(const FileURL& note, const QByteArray& theirs,
                                        const QString& baseline, const QString& markdown)
{
    const std::optional<QString> disk = noteText(theirs);
    if (!disk) {
        const bool isKept = !m_recovered.keep(note, theirs, u"the note was not UTF-8"_s).isEmpty();
        return isKept ? Result() : copyAside(note, theirs);
    }
    if (disk->isEmpty() || *disk == baseline || *disk == markdown)
        return {};
    logConflict(note, baseline, *disk, markdown);
    return copyAside(note, theirs);
}

void NoteSaver::keepDisplaced(Result& result, const FileURL& note, const FileURL& displaced,
                              const QString& baseline, const QString& markdown)
{
    const auto theirs = readFile(displaced);
    const Result kept = theirs ? keepTheirs(note, *theirs, baseline, markdown) : moveAside(displaced, note);
    if (!kept.conflictCopy.isEmpty())
        result.conflictCopy = kept.conflictCopy;
    if (kept.isKept)
        m_calls.remove(AT_FDCWD, displaced.bytes().constData());
    else
        qCWarning(filesLog) << "another version of" << note.path() << "stays in" << displaced.path();
}

NoteSaver::Result NoteSaver::copyAside(const FileURL& note, const QByteArray& theirs)
{
    for (int attempt = 0; attempt < maximumAttempts; ++attempt) {
        const FileURL copy = copyURL(note);
        const WriteResult written = AtomicFile::create(copy, theirs);
        if (written.succeeded())
            return {.conflictCopy = copy};
        qCWarning(filesLog) << "cannot write" << copy.path() << ":" << written.error;
        if (!existsOnDisk(copy))
            break;
    }
    return {.isKept = !m_recovered.keep(note, theirs, u"the conflict copy could not be written"_s).isEmpty()};
}

NoteSaver::Result NoteSaver::moveAside(const FileURL& version, const FileURL& note)
{
    const FileURL copy = copyURL(note);
    if (m_calls.renameExclusively(AT_FDCWD, version.bytes().constData(), AT_FDCWD,
                                  copy.bytes().constData()) == 0)
        return {.conflictCopy = copy};
    // A file that is gone by now has nothing left to lose.
    return {.isKept = !existsOnDisk(version)};
}

FileURL NoteSaver::copyURL(const FileURL& note) const
{
    return conflictCopyURL(note, m_workspace.computerName(), m_now());
}

} // namespace wendlore
