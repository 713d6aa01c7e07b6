#include "Shell/WendloreView.h"

#include "Shell/FileTreeView.h"
#include "Shell/SidebarView.h"
#include "Shell/SidebarWidth.h"

#include "Editor/EditorView.h"
#include "Previews/PreviewArea.h"
#include "State/AppState.h"

#include <QEvent>

#include <cmath>

namespace wendlore {

namespace {

constexpr int detailMinimum = 320;
constexpr int detailIdeal = 750;

} // namespace

WendloreView::WendloreView(const Services& services, const FileURL& bucketURL, Options options,
                           QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , m_store(std::make_unique<AppState>(services))
    , m_bucketURL(bucketURL)
    , m_options(std::move(options))
{
    m_store->switchVault(bucketURL);
    if (m_options.reveal)
        m_store->revealFile(m_options.reveal->url);

    m_sidebar = new SidebarView(*m_store, this);
    m_sidebar->setMinimumWidth(static_cast<int>(sidebarWidth::minimum));
    m_sidebar->setMaximumWidth(static_cast<int>(sidebarWidth::maximum));
    m_sidebar->tree().setUndoRegistrar(m_options.undo);
    m_sidebar->installEventFilter(this);
    addWidget(m_sidebar);
    m_preview = new PreviewArea(*m_store, PreviewArea::Host::embedded, this);
    m_preview->editor().setInlineToolbar(m_options.inlineFileToolbar);
    m_preview->setMinimumWidth(detailMinimum);
    addWidget(m_preview);
    setChildrenCollapsible(false);
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    placeSidebar();

    connect(m_store.get(), &AppState::selectedFileChanged, this, &WendloreView::tellSelection);
    tellSelection();
}

WendloreView::~WendloreView()
{
    // The views go before the state that they show.
    delete m_sidebar;
    delete m_preview;
}

void WendloreView::setBucketURL(const FileURL& bucket)
{
    if (bucket == m_bucketURL)
        return;
    m_bucketURL = bucket;
    m_store->switchVault(bucket);
}

void WendloreView::setReveal(const std::optional<RevealRequest>& reveal)
{
    if (reveal == m_options.reveal)
        return;
    m_options.reveal = reveal;
    if (reveal)
        m_store->revealFile(reveal->url);
}

void WendloreView::placeSidebar()
{
    const double width = sidebarWidth::initial(m_store->savedSidebarWidth(m_bucketURL));
    setSizes({static_cast<int>(std::round(width)), detailIdeal});
}

bool WendloreView::eventFilter(QObject* watched, QEvent* event)
{
    // Widths of a view that was never shown are nobody's choice.
    if (watched == m_sidebar && event->type() == QEvent::Resize && isVisible())
        keepSidebarWidth();
    return QSplitter::eventFilter(watched, event);
}

void WendloreView::keepSidebarWidth()
{
    const double width = m_sidebar->width();
    if (sidebarWidth::isWorthSaving(width, m_store->savedSidebarWidth(m_bucketURL)))
        m_store->saveSidebarWidth(width, m_bucketURL);
}

void WendloreView::tellSelection() const
{
    if (m_options.onSelectedFileChange)
        m_options.onSelectedFileChange(m_store->selectedFile());
}

} // namespace wendlore
