#include "Previews/DetailView.h"

#include "Previews/DetailToolbar.h"
#include "Previews/PreviewArea.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "State/AppState.h"

#include <QVBoxLayout>

namespace wendlore {

DetailView::DetailView(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_toolbar(new DetailToolbar(state, this))
    , m_preview(new PreviewArea(state, PreviewArea::Host::mainWindow, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_preview, 1);

    EditorSession& session = editor().session();
    connect(m_toolbar, &DetailToolbar::renamed, &session, [this, &session](const QString& title) {
        session.setTitle(title);
        showTitle();
    });
    connect(&session, &EditorSession::titleChanged, this, &DetailView::showTitle);
    connect(m_preview, &PreviewArea::shownChanged, this, &DetailView::showTitle);
    showTitle();
}

EditorView& DetailView::editor() const
{
    return m_preview->editor();
}

void DetailView::takeFocus()
{
    m_preview->takeFocus();
}

void DetailView::showTitle()
{
    const PreviewArea::Shown shown = m_preview->shown();
    m_toolbar->showEditorCommands(shown == PreviewArea::Shown::editor);
    if (shown == PreviewArea::Shown::editor)
        m_toolbar->setTitle(editor().session().title(), DetailToolbar::Title::editable);
    else if (shown == PreviewArea::Shown::viewer || shown == PreviewArea::Shown::elsewhere)
        m_toolbar->setTitle(m_state.selectedFile()->nameWithoutExtension(), DetailToolbar::Title::fixed);
    else
        m_toolbar->setTitle({}, DetailToolbar::Title::fixed);
}

} // namespace wendlore
