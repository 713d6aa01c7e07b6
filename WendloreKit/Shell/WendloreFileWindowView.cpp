#include "Shell/WendloreFileWindowView.h"

#include "Shell/WindowClosing.h"
#include "Shell/WindowGeometry.h"

#include "Editor/ConflictNotice.h"
#include "Editor/EditorBar.h"
#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Editor/WebEditorController.h"
#include "Look/Colors.h"
#include "Previews/FileViewer.h"
#include "Previews/TitleField.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/Relocation.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr QSize smallest(480, 320);
constexpr QSize first(900, 700);

} // namespace

WendloreFileWindowView::WendloreFileWindowView(const Services& services, const std::optional<FileURL>& file,
                                               QWidget* parent)
    : QMainWindow(parent, Qt::Window)
    , m_fileURL(file)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setPalette(Colors::of(ColorScheme::light).palette());
    setMinimumSize(smallest);
    resize(WindowGeometry::firstSize(*this, first));
    if (m_fileURL) {
        m_windowState = std::make_unique<AppState>(services);
        m_windowState->openBucketOf(*m_fileURL); // its pictures and links are found there
    }
    setCentralWidget(makeContent());
    if (m_windowState)
        observeState();
    showTitle();
}

WendloreFileWindowView::~WendloreFileWindowView()
{
    disappear();
    // The views go before the state that they show.
    delete takeCentralWidget();
}

QWidget* WendloreFileWindowView::makeContent()
{
    if (!m_fileURL) {
        auto* notice = new QLabel(u"Filen kunde inte öppnas"_s, this);
        notice->setAlignment(Qt::AlignCenter);
        return notice;
    }
    if (FilePreviewKind::of(*m_fileURL) == FilePreviewKind::editor)
        return makeEditor();
    return makeFileViewer(*m_windowState, *m_fileURL, this);
}

QWidget* WendloreFileWindowView::makeEditor()
{
    auto* pane = new QWidget(this);
    m_editor = new EditorView(*m_windowState, pane);
    m_closing = std::make_unique<WindowClosing>(*this, *m_editor);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* bar = new EditorBar(*m_windowState, pane);
    m_title = new TitleField(bar);
    bar->setTitle(*m_title);
    layout->addWidget(bar);
    layout->addWidget(new ConflictNotice(*m_editor, pane));
    layout->addWidget(m_editor, 1);

    EditorSession& session = m_editor->session();
    connect(&session, &EditorSession::titleChanged, this, &WendloreFileWindowView::showTitle);
    connect(m_title, &TitleField::renamed, &session, &EditorSession::setTitle);
    session.open(*m_fileURL);
    connect(
        &session, &EditorSession::loaded, this, [this] { m_windowState->editorController().focusInView(); },
        Qt::SingleShotConnection);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, &session, &EditorSession::flush);
    m_editor->setFocus();
    return pane;
}

void WendloreFileWindowView::observeState()
{
    connect(m_windowState.get(), &AppState::didMove, this, &WendloreFileWindowView::follow);
    connect(m_windowState.get(), &AppState::didDelete, this, &WendloreFileWindowView::leaveDeleted);
    connect(m_windowState.get(), &AppState::selectedFileChanged, this,
            &WendloreFileWindowView::passOtherSelectionOn);
}

void WendloreFileWindowView::showTitle()
{
    setWindowFilePath(m_fileURL ? m_fileURL->path() : u"/"_s);
    setWindowTitle(m_fileURL ? m_fileURL->nameWithoutExtension() : QString());
    if (m_title)
        m_title->setTitle(windowTitle());
}

void WendloreFileWindowView::showEvent(QShowEvent* event)
{
    appear();
    QMainWindow::showEvent(event);
}

void WendloreFileWindowView::appear()
{
    if (!m_fileURL || std::exchange(m_isRegistered, true))
        return;
    OpenFileWindows::shared().insert(*m_fileURL);
    m_windowState->setSelectedFile(m_fileURL);
}

void WendloreFileWindowView::disappear()
{
    if (std::exchange(m_isRegistered, false))
        OpenFileWindows::shared().remove(*m_fileURL);
}

void WendloreFileWindowView::closeEvent(QCloseEvent* event)
{
    if (m_closing && !m_closing->mayClose(*event))
        return;
    if (m_editor)
        m_editor->session().close();
    disappear();
    Q_EMIT disappeared();
    event->accept();
}

/// The file was renamed or moved, perhaps with its folder and from another window.
void WendloreFileWindowView::follow(const FileURL& from, const FileURL& to)
{
    const FileURL old = *m_fileURL;
    const FileURL now = relocated(old, from, to);
    if (now == old)
        return;
    m_fileURL = now;
    if (m_isRegistered) {
        OpenFileWindows::shared().insert(now);
        // Whoever shows the old place still has to hear of the move.
        QMetaObject::invokeMethod(
            &OpenFileWindows::shared(), [old] { OpenFileWindows::shared().remove(old); },
            Qt::QueuedConnection);
    }
    if (m_windowState->selectedFile() != m_fileURL)
        m_windowState->setSelectedFile(m_fileURL);
    showTitle();
    Q_EMIT fileURLChanged();
}

/// What is still typed after the file was deleted must not bring it back.
void WendloreFileWindowView::leaveDeleted(const FileURL& item)
{
    if (!m_fileURL->hasPathOf(item) && !m_fileURL->isBelow(item))
        return;
    if (m_editor)
        m_editor->session().close();
    close();
}

void WendloreFileWindowView::passOtherSelectionOn()
{
    const std::optional<FileURL> selected = m_windowState->selectedFile();
    if (!m_isRegistered || !selected || selected->hasPathOf(*m_fileURL))
        return;
    m_windowState->setSelectedFile(m_fileURL);
    Q_EMIT fileRequested(*selected);
}

} // namespace wendlore
