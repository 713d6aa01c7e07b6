#pragma once

#include <QByteArray>
#include <QStringList>

namespace wendlore {

/// The commands for scripts, which show no window: `search FOLDER QUERY` and `tree FOLDER`.
namespace Companion {

/// What a command wants to say, and its exit status.
struct Answer final
{
    int status = 0;
    QByteArray output;
    QByteArray errors;
};

/// Whether the arguments that follow the program's name begin with a command.
[[nodiscard]] bool isCommand(const QStringList& arguments);

/// Carries out a command; a relative folder starts at `currentFolder`. The status is 0, or 1 for a search
/// that finds nothing, or 2 for a command that makes no sense or a folder that is not there. Paths are given
/// relative to the folder, as the file system's own bytes.
[[nodiscard]] Answer run(const QStringList& arguments, const QString& currentFolder);

} // namespace Companion

} // namespace wendlore
