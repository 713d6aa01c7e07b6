#include "Wendlores/EditCommands.h"

#include "Editor/WebEditorController.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <functional>

using namespace Qt::StringLiterals;

namespace wendlore {

struct EditCommands::Command final
{
    QString title;
    QKeySequence::StandardKey shortcut;
    std::function<void(QLineEdit&)> inField;
    /// The page's own word for the command; empty where the engine carries it out.
    QString word;
    QWebEnginePage::WebAction inPage = QWebEnginePage::NoWebAction;
    bool startsGroup = false;
};

namespace {

QWebEngineView* focusedPage()
{
    for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (auto* view = qobject_cast<QWebEngineView*>(widget))
            return view;
    }
    return nullptr;
}

} // namespace

EditCommands::EditCommands(WebEditorController& controller, QObject* parent)
    : QObject(parent)
    , m_controller(controller)
{}

void EditCommands::addTo(QMenu& menu)
{
    static const Command commands[] = {
        {u"Ångra"_s, QKeySequence::Undo, &QLineEdit::undo, u"undo"_s},
        {u"Gör om"_s, QKeySequence::Redo, &QLineEdit::redo, u"redo"_s},
        {u"Klipp ut"_s, QKeySequence::Cut, &QLineEdit::cut, {}, QWebEnginePage::Cut, true},
        {u"Kopiera"_s, QKeySequence::Copy, &QLineEdit::copy, {}, QWebEnginePage::Copy},
        {u"Klistra in"_s, QKeySequence::Paste, &QLineEdit::paste, {}, QWebEnginePage::Paste},
        {u"Markera allt"_s,
         QKeySequence::SelectAll,
         &QLineEdit::selectAll,
         {},
         QWebEnginePage::SelectAll,
         true},
    };
    for (const Command& command : commands) {
        if (command.startsGroup)
            menu.addSeparator();
        QAction* action = menu.addAction(command.title);
        action->setShortcut(command.shortcut);
        connect(action, &QAction::triggered, this, [this, &command] { run(command); });
    }
}

void EditCommands::run(const Command& command)
{
    if (auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget()))
        command.inField(*field);
    else if (!command.word.isEmpty())
        m_controller.exec(command.word);
    else if (QWebEngineView* page = focusedPage())
        page->triggerPageAction(command.inPage);
}

} // namespace wendlore
