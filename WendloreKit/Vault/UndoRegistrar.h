#pragma once

#include <QString>

#include <functional>

namespace wendlore {

/// Where an operation leaves the way back. What is registered while a way back runs is the way forth again,
/// which the user is offered as redo.
class UndoRegistrar
{
public:
    virtual ~UndoRegistrar() = default;

    /// `name` says to the user what would be undone.
    virtual void registerUndo(const QString& name, std::function<void()> undo) = 0;
};

} // namespace wendlore
