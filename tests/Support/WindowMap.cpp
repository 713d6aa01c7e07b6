#include "Support/WindowMap.h"

#include "Support/Window.h"

#include "Editor/EditorView.h"
#include "Previews/ContentView.h"
#include "Previews/DetailView.h"
#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"

#include <QPushButton>

namespace wendlore {

WindowMap::WindowMap(const FileURL& bucket, const FileURL& selected, const QRect& place)
    : m_state(m_services.services())
    , m_window(m_state)
    , m_place(place)
{
    m_state.switchVault(bucket);
    m_state.setSelectedFile(selected);
    showAt(m_window, place.size());
}

QPoint WindowMap::onScreen(const QWidget& widget, const QPoint& place) const
{
    return m_place.topLeft() + widget.mapTo(&m_window, place);
}

QPoint WindowMap::control(const QString& name) const
{
    const QWidget* control = childNamed(m_window, name);
    if (!control || !control->isVisible())
        qFatal("no control %s", qPrintable(name));
    return onScreen(*control, control->rect().center());
}

QPoint WindowMap::buttonWithText(const QString& text) const
{
    for (const auto* button : m_window.findChildren<QPushButton*>()) {
        if (button->text() == text && button->isVisible())
            return onScreen(*button, button->rect().center());
    }
    qFatal("no button %s", qPrintable(text));
}

QPoint WindowMap::row(const FileURL& item) const
{
    const auto& tree = *m_window.findChild<FileTreeView*>();
    const QModelIndex index = static_cast<FileTreeModel*>(tree.model())->indexOf(item);
    if (!index.isValid())
        qFatal("no row of %s", qPrintable(item.path()));
    return onScreen(*tree.viewport(), tree.visualRect(index).center());
}

QPoint WindowMap::note() const
{
    const EditorView& editor = m_window.content().detail().editor();
    return onScreen(editor, editor.rect().center());
}

} // namespace wendlore
