#pragma once

#include "Vault/FileURL.h"

#include <QString>

#include <optional>

namespace wendlore {

/// Modal choosers. Each gives nothing when the user cancels.
class Panels
{
public:
    /// Where a chooser starts: where the last one ended, or at the user's pictures.
    enum class Start { lastPlace, pictures };

    virtual ~Panels() = default;

    /// Lets the user choose one existing folder.
    [[nodiscard]] virtual std::optional<FileURL> chooseFolder(const QString& prompt,
                                                              const QString& message) = 0;
    /// Lets the user choose one existing file whose name matches one of `patterns` ("*.json").
    [[nodiscard]] virtual std::optional<FileURL> chooseFile(const QString& prompt, const QString& message,
                                                            const QStringList& patterns, Start start) = 0;
};

} // namespace wendlore
