#pragma once

#include "Vault/FileURL.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace wendlore {

/// What the program was asked for when it was started.
struct CommandLine final
{
    enum class Action { Run, ShowText, RefuseUsage };

    Action action = Action::Run;
    /// What to print before ending, for any action but `Run`.
    QString text = {};
    /// The folder or file to open; it need not exist.
    std::optional<FileURL> location = std::nullopt;
    /// The link of the program's own scheme to follow.
    std::optional<QUrl> link = std::nullopt;

    /// Reads the arguments that follow the program's name; a relative path starts at `folder`.
    [[nodiscard]] static CommandLine parse(const QStringList& arguments, const QString& folder);
};

} // namespace wendlore
