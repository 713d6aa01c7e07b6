#pragma once

#include <QByteArray>
#include <QStringList>

namespace wendlore {

/// The commands for scripts, which show no window: `search FOLDER QUERY` and `tree FOLDER`.
namespace Companion {

enum Status { Succeeded = 0, NothingFound = 1, Misused = 2 };

/// What a command wants to say, and its exit status.
struct Answer final
{
    Status status = Succeeded;
    QByteArray output;
    QByteArray errors;
};

/// Carries out the command that `arguments` begin with; a relative folder starts at `currentFolder`. A
/// command that makes no sense and a folder that is not there are misuse. Paths are given relative to the
/// folder, as the file system's own bytes.
[[nodiscard]] Answer run(const QStringList& arguments, const QString& currentFolder);

} // namespace Companion

} // namespace wendlore
