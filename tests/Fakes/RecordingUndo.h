#pragma once

#include "Vault/UndoRegistrar.h"

#include <QStringList>

#include <vector>

namespace wendlore {

/// Remembers what was registered, for a test to run.
class RecordingUndo final : public UndoRegistrar
{
public:
    void registerUndo(const QString& name, std::function<void()> undo) override
    {
        names.append(name);
        actions.push_back(std::move(undo));
    }

    /// Runs the way back registered last.
    void runLast() const
    {
        const auto action = actions.back();
        action();
    }

    QStringList names;
    std::vector<std::function<void()>> actions;
};

} // namespace wendlore
