#include "Wendlores/EditCommands.h"

#include "Editor/WebEditorController.h"
#include "Editor/WebEngineEditorView.h"
#include "Previews/FindBar.h"
#include "Previews/PDFKitView.h"
#include "Previews/ZoomableImage.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QUndoStack>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <optional>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// One direction of a stack of moves.
struct Moving final
{
    void (QUndoStack::*run)();
    bool (QUndoStack::*isPossible)() const;
    /// What would be done.
    QString (QUndoStack::*name)() const;
};

constexpr Moving undoing{&QUndoStack::undo, &QUndoStack::canUndo, &QUndoStack::undoText};
constexpr Moving redoing{&QUndoStack::redo, &QUndoStack::canRedo, &QUndoStack::redoText};

} // namespace

struct EditCommands::Command final
{
    QString title;
    QKeySequence shortcut;
    /// Empty for what only a note has.
    std::function<void(QLineEdit&)> inField;
    /// Whether the command could change or take anything in the field now.
    std::function<bool(const QLineEdit&)> isPossibleInField;
    /// The page's own word for the command; empty where the engine carries it out.
    QString word;
    QWebEnginePage::WebAction inPage = QWebEnginePage::NoWebAction;
    bool startsGroup = false;
    std::optional<Moving> moving = std::nullopt;
    Part part = Part::edit;
};

namespace {

QLineEdit* fieldAt(QWidget* focus)
{
    return qobject_cast<QLineEdit*>(focus);
}

QWebEngineView* pageAt(QWidget* focus)
{
    for (QWidget* widget = focus; widget; widget = widget->parentWidget()) {
        if (auto* view = qobject_cast<QWebEngineView*>(widget))
            return view;
    }
    return nullptr;
}

/// What a command of the note's page does with the search of a file.
std::function<void()> inSearch(FindBar* search, const QString& word)
{
    if (search && word == u"find"_s)
        return [search] { search->open(); };
    if (search && word == u"findNext"_s)
        return [search] { search->step(1); };
    if (search && word == u"findPrevious"_s)
        return [search] { search->step(-1); };
    return {};
}

/// What a command of the engine does with a document, or an image, that has the focus.
std::function<void()> inDocument(QWidget* focus, QWebEnginePage::WebAction action)
{
    if (auto* image = qobject_cast<ZoomableImage*>(focus); image && action == QWebEnginePage::Copy)
        return [image] { image->copy(); };
    auto* document = qobject_cast<PDFKitView*>(focus);
    if (document && action == QWebEnginePage::Copy && !document->selectedText().isEmpty())
        return [document] { document->copy(); };
    if (document && action == QWebEnginePage::SelectAll)
        return [document] { document->selectAll(); };
    return {};
}

bool hasReadableSelection(const QLineEdit& field)
{
    return field.hasSelectedText() && field.echoMode() == QLineEdit::Normal;
}

bool hasRemovableSelection(const QLineEdit& field)
{
    return hasReadableSelection(field) && !field.isReadOnly();
}

bool isWritable(const QLineEdit& field)
{
    return !field.isReadOnly();
}

bool hasText(const QLineEdit& field)
{
    return !field.text().isEmpty();
}

} // namespace

EditCommands::EditCommands(WebEditorController& controller, const QWidget& window, QObject* parent)
    : QObject(parent)
    , m_controller(controller)
    , m_window(window)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget* now) {
        if (qobject_cast<QMenuBar*>(now) && !qobject_cast<QMenuBar*>(old))
            m_focusBeforeMenuBar = old;
    });
}

const std::vector<EditCommands::Command>& EditCommands::commands()
{
    using Key = QKeySequence;
    using Page = QWebEnginePage;
    static const std::vector<Command> all{
        {u"Ångra"_s, Key::Undo, &QLineEdit::undo, &QLineEdit::isUndoAvailable, u"undo"_s, Page::NoWebAction,
         false, undoing},
        {u"Gör om"_s, Key::Redo, &QLineEdit::redo, &QLineEdit::isRedoAvailable, u"redo"_s, Page::NoWebAction,
         false, redoing},
        {u"Klipp ut"_s, Key::Cut, &QLineEdit::cut, hasRemovableSelection, {}, Page::Cut, true},
        {u"Kopiera"_s, Key::Copy, &QLineEdit::copy, hasReadableSelection, {}, Page::Copy},
        {u"Klistra in"_s, Key::Paste, &QLineEdit::paste, isWritable, {}, Page::Paste},
        {u"Markera allt"_s, Key::SelectAll, &QLineEdit::selectAll, hasText, {}, Page::SelectAll, true},
        {u"Sök i anteckningen"_s, Key::Find, {}, {}, u"find"_s, Page::NoWebAction, true},
        {u"Sök nästa"_s, Qt::Key_F3, {}, {}, u"findNext"_s},
        {u"Sök föregående"_s, Qt::SHIFT | Qt::Key_F3, {}, {}, u"findPrevious"_s},
        {u"Sök och ersätt"_s, Qt::CTRL | Qt::Key_H, {}, {}, u"replace"_s},
        {u"Visa/Dölj källtext"_s,
         Qt::CTRL | Qt::Key_E,
         {},
         {},
         u"source"_s,
         Page::NoWebAction,
         true,
         {},
         Part::view},
        {u"Visa/Dölj antal ord"_s,
         Qt::CTRL | Qt::ALT | Qt::Key_W,
         {},
         {},
         u"counts"_s,
         Page::NoWebAction,
         false,
         {},
         Part::view},
    };
    return all;
}

void EditCommands::addTo(QMenu& menu, Part part)
{
    for (const Command& command : commands()) {
        if (command.part != part)
            continue;
        if (command.startsGroup)
            menu.addSeparator();
        QAction* action = menu.addAction(command.title);
        action->setShortcut(command.shortcut);
        connect(action, &QAction::triggered, this, [this, &command] { run(command); });
        connect(&menu, &QMenu::aboutToShow, action, [this, action, &command] {
            action->setText(titleOf(command));
            action->setEnabled(isPossible(command));
        });
        // A key has to reach what has the focus then, whatever the menu showed when it was open.
        connect(&menu, &QMenu::aboutToHide, action, [action, &command] {
            action->setText(command.title);
            action->setEnabled(true);
        });
    }
}

void EditCommands::setMoves(QUndoStack& moves, const QWidget& place)
{
    m_moves = &moves;
    m_movesPlace = &place;
}

QWidget* EditCommands::focus() const
{
    QWidget* widget = QApplication::focusWidget();
    return qobject_cast<QMenuBar*>(widget) ? m_focusBeforeMenuBar.data() : widget;
}

QUndoStack* EditCommands::movesFor(const Command& command) const
{
    return m_moves && command.moving && focus() == m_movesPlace ? m_moves : nullptr;
}

QString EditCommands::titleOf(const Command& command) const
{
    if (command.word == u"find"_s && inFile(command))
        return u"Sök i dokumentet"_s;
    const QUndoStack* moves = movesFor(command);
    const QString name = moves ? (moves->*command.moving->name)() : QString();
    return name.isEmpty() ? command.title : command.title + u' ' + name;
}

bool EditCommands::isPossible(const Command& command) const
{
    if (const QUndoStack* moves = movesFor(command))
        return (moves->*command.moving->isPossible)();
    if (const QLineEdit* field = fieldAt(focus()); field && command.inField)
        return command.isPossibleInField(*field);
    if (inFile(command))
        return true;
    if (!command.word.isEmpty())
        return isNoteShown() && m_controller.isReady() && m_controller.desiredContent().has_value();
    return pageAt(focus()) != nullptr;
}

void EditCommands::run(const Command& command)
{
    if (QUndoStack* moves = movesFor(command))
        (moves->*command.moving->run)();
    else if (QLineEdit* field = fieldAt(focus()); field && command.inField)
        command.inField(*field);
    else if (const auto act = inFile(command))
        act();
    else if (!command.word.isEmpty())
        execInNote(command);
    else if (QWebEngineView* page = pageAt(focus()))
        page->triggerPageAction(command.inPage);
}

QWidget* EditCommands::noteView() const
{
    const auto* engine = dynamic_cast<const WebEngineEditorView*>(&m_controller.webView());
    return engine ? engine->widget() : nullptr;
}

bool EditCommands::isNoteShown() const
{
    const QWidget* view = noteView();
    return !view || view->isVisible();
}

std::function<void()> EditCommands::inFile(const Command& command) const
{
    if (command.word.isEmpty())
        return inDocument(focus(), command.inPage);
    const QWidget* view = noteView();
    return view && view->isVisible() ? nullptr : inSearch(FindBar::seenIn(m_window), command.word);
}

void EditCommands::execInNote(const Command& command)
{
    if (!isNoteShown())
        return;
    if (QWidget* view = noteView(); view && !command.inField)
        view->setFocus(); // what opens there takes keys
    m_controller.exec(command.word);
}

} // namespace wendlore
