#pragma once

#include "Vault/FileSystemCalls.h"
#include "Vault/FileURL.h"

#include <QDateTime>

#include <functional>

namespace wendlore {

class FileCoordinator;
class RecoveredTexts;
class Workspace;

/// Writes a note without losing what somebody else wrote there meanwhile: their version goes to a conflict
/// copy beside the note, ours takes the note's place. Whatever can be kept neither there nor as a copy goes
/// into the recovered texts first.
class NoteSaver final
{
public:
    using Clock = std::function<QDateTime()>;

    struct Result final
    {
        /// False when something would have been lost: nothing was written over, and the save has to be tried
        /// again.
        bool isKept = true;
        /// Where their version lies now; empty when there was no conflict.
        FileURL conflictCopy = {};
    };

    NoteSaver(FileCoordinator& coordinator, RecoveredTexts& recovered, const Workspace& workspace, Clock now,
              FileSystemCalls& calls = FileSystemCalls::real());

    /// Puts `markdown` into `note`. `baseline` is the text that the caller believes to be on disk: another
    /// text there is a conflict, unless it is empty or `markdown` itself.
    [[nodiscard]] Result save(const FileURL& note, const QString& baseline, const QString& markdown);

private:
    /// Saves `theirs`, which lies at `note`, from being replaced by `markdown`; as `save`.
    [[nodiscard]] Result keepTheirs(const FileURL& note, const QByteArray& theirs, const QString& baseline,
                                    const QString& markdown);
    /// Their version as a conflict copy, or else as a recovered text.
    [[nodiscard]] Result copyAside(const FileURL& note, const QByteArray& theirs);
    /// A version of `note` that cannot be read cannot be copied: it is moved to where the copy would go.
    [[nodiscard]] Result moveAside(const FileURL& version, const FileURL& note);
    /// Keeps a version that our text displaced at the very moment it came, and adds that to `result`.
    void keepDisplaced(Result& result, const FileURL& note, const FileURL& displaced, const QString& baseline,
                       const QString& markdown);
    [[nodiscard]] FileURL copyURL(const FileURL& note) const;

    FileCoordinator& m_coordinator;
    RecoveredTexts& m_recovered;
    const Workspace& m_workspace;
    Clock m_now;
    FileSystemCalls& m_calls;
};

} // namespace wendlore
