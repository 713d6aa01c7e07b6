#include "Platform/UndoStackRegistrar.h"

#include <QUndoCommand>
#include <QUndoStack>

#include <utility>

namespace wendlore {

/// One step of the stack. It holds the action of whichever direction comes next.
class UndoStackRegistrar::Command final : public QUndoCommand
{
public:
    Command(UndoStackRegistrar& registrar, const QString& name, std::function<void()> undo)
        : QUndoCommand(name)
        , m_registrar(registrar)
        , m_action(std::move(undo))
    {}

    void undo() override { run(); }
    void redo() override
    {
        // The stack does a step when it is pushed; this one was done already.
        if (m_isDone)
            m_isDone = false;
        else
            run();
    }
    void setAction(std::function<void()> action) { m_action = std::move(action); }

private:
    void run()
    {
        const std::function<void()> action = std::exchange(m_action, {});
        m_registrar.m_running = this;
        action();
        m_registrar.m_running = nullptr;
        // What could not be done has no way back either.
        setObsolete(!m_action);
    }

    UndoStackRegistrar& m_registrar;
    std::function<void()> m_action;
    bool m_isDone = true;
};

UndoStackRegistrar::UndoStackRegistrar(QUndoStack& stack)
    : m_stack(stack)
{}

void UndoStackRegistrar::registerUndo(const QString& name, std::function<void()> undo)
{
    if (m_running != nullptr)
        m_running->setAction(std::move(undo));
    else
        m_stack.push(new Command(*this, name, std::move(undo)));
}

} // namespace wendlore
