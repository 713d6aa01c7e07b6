#pragma once

#include "Vault/UndoRegistrar.h"

class QUndoStack;

namespace wendlore {

/// Offers ways back in a window's undo stack. An operation registers its inverse when it runs; run as undo or
/// redo, the inverse it registers then is the way in the other direction.
class UndoStackRegistrar final : public UndoRegistrar
{
public:
    /// Registers in `stack`, which must not outlive the registrar.
    explicit UndoStackRegistrar(QUndoStack& stack);

    void registerUndo(const QString& name, std::function<void()> undo) override;

private:
    class Command;

    QUndoStack& m_stack;
    /// The command that is being undone or redone.
    Command* m_running = nullptr;
};

} // namespace wendlore
