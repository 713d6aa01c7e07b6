#include "Shell/WindowClosing.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

WindowClosing::WindowClosing(QWidget& window, EditorView& editor)
    : m_window(window)
    , m_editor(editor)
{}

bool WindowClosing::mayClose(QCloseEvent& event)
{
    if (m_step == Step::settled) {
        m_step = Step::notAsked;
        event.accept();
        return true;
    }
    event.ignore();
    if (std::exchange(m_step, Step::waiting) == Step::notAsked)
        settle();
    return false;
}

void WindowClosing::settle()
{
    m_editor.session().settle([this, window = QPointer(&m_window)] {
        // Perhaps at once, and the close event has to end first.
        if (window)
            QMetaObject::invokeMethod(
                window, [this] { didSettle(); }, Qt::QueuedConnection);
    });
    m_editor.setEnabled(false); // no key may come after the last one, which is waited for
}

void WindowClosing::didSettle()
{
    if (m_editor.session().hasUnsavedText())
        askWhatToDo();
    else
        closeForGood();
}

void WindowClosing::askWhatToDo()
{
    auto* box = new QMessageBox(QMessageBox::Warning, u"Noten gick inte att spara"_s,
                                u"Noten gick inte att spara. Om disken är full: gör plats och försök igen."_s,
                                QMessageBox::NoButton, &m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    const auto* again = box->addButton(u"Försök igen"_s, QMessageBox::AcceptRole);
    auto* back = box->addButton(u"Avbryt"_s, QMessageBox::RejectRole);
    const auto* close = box->addButton(u"Stäng utan att spara"_s, QMessageBox::DestructiveRole);
    box->setEscapeButton(back);
    QObject::connect(box, &QMessageBox::finished, &m_window, [this, box, again, close] {
        if (box->clickedButton() == again)
            settle();
        else if (box->clickedButton() == close)
            closeForGood();
        else
            stay();
    });
    box->open();
}

void WindowClosing::closeForGood()
{
    m_step = Step::settled;
    m_window.close();
}

void WindowClosing::stay()
{
    m_step = Step::notAsked;
    m_editor.setEnabled(true);
    m_editor.setFocus();
}

} // namespace wendlore
