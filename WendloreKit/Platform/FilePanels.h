#pragma once

#include "State/Panels.h"

namespace wendlore {

/// The desktop's own file dialogs, in front of the window that is active.
class FilePanels final : public Panels
{
public:
    [[nodiscard]] std::optional<FileURL> chooseFolder(const QString& prompt, const QString& message) override;
    [[nodiscard]] std::optional<FileURL> chooseFile(const QString& prompt, const QString& message,
                                                    const QStringList& patterns, Start start) override;
};

} // namespace wendlore
