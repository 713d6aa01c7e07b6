#include "Previews/DetailView.h"

#include "Previews/DetailToolbar.h"
#include "Previews/EmptyVaultView.h"
#include "Previews/FileCard.h"
#include "Previews/QuickLookView.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Look/Colors.h"
#include "State/AppState.h"
#include "Vault/FilePreviewKind.h"

#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

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

DetailView::DetailView(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_toolbar(new DetailToolbar(state, this))
    , m_stack(new QStackedWidget(this))
    , m_empty(new EmptyVaultView(state, m_stack))
    , m_placeholder(makePlaceholder(m_stack))
    , m_editor(new EditorView(state, m_stack))
    , m_card(new FileCard(state, m_stack))
{
    for (QWidget* view :
         {m_empty, m_placeholder, static_cast<QWidget*>(m_editor), static_cast<QWidget*>(m_card)})
        m_stack->addWidget(view);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_stack, 1);

    EditorSession& session = m_editor->session();
    connect(m_toolbar, &DetailToolbar::renamed, &session, [this, &session](const QString& title) {
        session.setTitle(title);
        showTitle();
    });
    connect(&session, &EditorSession::titleChanged, this, &DetailView::showTitle);
    connect(&state, &AppState::vaultURLChanged, this, &DetailView::showSelection);
    connect(&state, &AppState::selectedFileChanged, this, &DetailView::showSelection);
    showSelection();
}

void DetailView::showSelection()
{
    QWidget* view = viewForSelection();
    if (view == m_editor)
        m_editor->session().open(*m_state.selectedFile());
    else
        m_editor->session().close();
    if (view == m_card)
        m_card->setFile(*m_state.selectedFile());
    showGenericView(view == m_card && FilePreviewKind::of(*m_state.selectedFile()) == FilePreviewKind::other);
    if (m_generic)
        view = m_generic;
    m_toolbar->showEditorCommands(view == m_editor);
    m_stack->setCurrentWidget(view);
    showTitle();
}

void DetailView::showGenericView(bool isWanted)
{
    if (m_generic) {
        m_stack->removeWidget(m_generic);
        m_generic->hide();
        m_generic->deleteLater(); // its button may be what brought us here
        m_generic = nullptr;
    }
    if (!isWanted)
        return;
    m_generic = new QuickLookView(m_state, *m_state.selectedFile(), m_stack);
    m_stack->addWidget(m_generic);
}

QWidget* DetailView::viewForSelection()
{
    if (!m_state.vaultURL())
        return m_empty;
    const auto& file = m_state.selectedFile();
    if (!file || !isViewableFile(*file))
        return m_placeholder;
    return FilePreviewKind::of(*file) == FilePreviewKind::editor ? static_cast<QWidget*>(m_editor) : m_card;
}

void DetailView::showTitle()
{
    const QWidget* view = m_stack->currentWidget();
    if (view == m_editor)
        m_toolbar->setTitle(m_editor->session().title(), DetailToolbar::Title::editable);
    else if (view == m_card || view == m_generic)
        m_toolbar->setTitle(m_state.selectedFile()->nameWithoutExtension(), DetailToolbar::Title::fixed);
    else
        m_toolbar->setTitle({}, DetailToolbar::Title::fixed);
}

} // namespace wendlore
