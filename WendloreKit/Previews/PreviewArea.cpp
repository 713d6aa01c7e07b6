#include "Previews/PreviewArea.h"

#include "Previews/EmptyVaultView.h"
#include "Previews/FileOpenElsewhereView.h"
#include "Previews/FileViewer.h"

#include "Editor/ConflictNotice.h"
#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Editor/WebEditorController.h"
#include "Look/Colors.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Vault/FilePreviewKind.h"

#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

QWidget* makePlaceholder(QWidget* parent)
{
    auto* label = new QLabel(u"Välj en not"_s, parent);
    label->setForegroundRole(mutedRole);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

PreviewArea::PreviewArea(AppState& state, Host host, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_host(host)
    , m_stack(new QStackedWidget(this))
    , m_empty(new EmptyVaultView(state, this))
    , m_placeholder(makePlaceholder(this))
    , m_elsewhere(new FileOpenElsewhereView(this))
    , m_editor(new EditorView(state, this))
{
    for (QWidget* view :
         {m_empty, m_placeholder, static_cast<QWidget*>(m_elsewhere), static_cast<QWidget*>(m_editor)})
        m_stack->addWidget(view);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new ConflictNotice(*m_editor, this));
    layout->addWidget(m_stack, 1);
    connect(&state, &AppState::vaultURLChanged, this, &PreviewArea::showSelection);
    connect(&state, &AppState::selectedFileChanged, this, &PreviewArea::showSelection);
    connect(&OpenFileWindows::shared(), &OpenFileWindows::openChanged, this, &PreviewArea::showSelection);
    showSelection();
}

QWidget* PreviewArea::currentWidget() const
{
    return m_stack->currentWidget();
}

void PreviewArea::showSelection()
{
    m_shown = viewForSelection();
    if (m_shown == Shown::editor)
        m_editor->session().open(*m_state.selectedFile());
    else
        m_editor->session().close();
    if (m_shown != Shown::viewer)
        dropViewer();
    else if (m_viewedFile != m_state.selectedFile())
        makeViewer(*m_state.selectedFile());
    if (m_shown == Shown::elsewhere)
        m_elsewhere->setFile(*m_state.selectedFile());
    m_stack->setCurrentWidget(widgetFor(m_shown));
    Q_EMIT shownChanged();
}

PreviewArea::Shown PreviewArea::viewForSelection() const
{
    if (m_host == Host::mainWindow && !m_state.vaultURL())
        return Shown::emptyVault;
    const auto& file = m_state.selectedFile();
    if (!file || !isViewableFile(*file))
        return Shown::placeholder;
    if (m_host == Host::mainWindow && OpenFileWindows::shared().isOpen(*file))
        return Shown::elsewhere;
    return FilePreviewKind::of(*file) == FilePreviewKind::editor ? Shown::editor : Shown::viewer;
}

QWidget* PreviewArea::widgetFor(Shown shown)
{
    switch (shown) {
    case Shown::emptyVault:
        return m_empty;
    case Shown::elsewhere:
        return m_elsewhere;
    case Shown::editor:
        return m_editor;
    case Shown::viewer:
        return m_viewer;
    case Shown::placeholder:
        break;
    }
    return m_placeholder;
}

void PreviewArea::takeFocus()
{
    if (m_shown == Shown::editor) {
        m_editor->setFocus();
        m_state.editorController().focus();
        return;
    }
    const QList<QWidget*> controls = currentWidget()->findChildren<QWidget*>();
    const auto first = std::ranges::find_if(controls, [](const QWidget* control) {
        return (control->focusPolicy() & Qt::TabFocus) != 0 && control->isVisible() && control->isEnabled();
    });
    QWidget* taker = first == controls.end() ? currentWidget() : *first;
    taker->setFocus(Qt::TabFocusReason);
}

void PreviewArea::makeViewer(const FileURL& file)
{
    dropViewer();
    m_viewedFile = file;
    m_viewer = makeFileViewer(m_state, file, this);
    m_stack->addWidget(m_viewer);
}

void PreviewArea::dropViewer()
{
    m_viewedFile.reset();
    if (!m_viewer)
        return;
    m_stack->removeWidget(m_viewer);
    m_viewer->hide();
    m_viewer->deleteLater(); // a link in it may be what brought us here
    m_viewer = nullptr;
}

} // namespace wendlore
