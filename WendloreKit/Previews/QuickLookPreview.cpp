#include "Previews/QuickLookPreview.h"

#include "Previews/FileCard.h"
#include "Previews/PDFViewer.h"
#include "Previews/QuickLookOffice.h"
#include "Previews/QuickLookWebView.h"

#include "Editor/Scheduler.h"
#include "State/AppState.h"
#include "State/Services.h"

namespace wendlore {

QuickLookPreview::QuickLookPreview(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(&state)
{}

QuickLookPreview::~QuickLookPreview()
{
    close();
}

void QuickLookPreview::setItem(const FileURL& file)
{
    close();
    replaceContent(new FileCard(*m_state, file, this));
    m_limits = QuickLookLimits();
    FileCoordinator& coordinator = m_state->services().coordinator;
    m_loading = m_state->services().scheduler.inBackground([this, &coordinator, file, limits = m_limits] {
        auto kept = isOfficeDocument(file) ? keptDocument(file) : std::nullopt;
        const bool canBeBetter = isOfficeDocument(file) && !kept;
        auto content = std::make_shared<QuickLookContent>(kept ? std::move(*kept)
                                                               : loadQuickLook(coordinator, file, limits));
        return [this, file, content, canBeBetter] {
            show(file, std::move(*content));
            if (canBeBetter)
                convert(file);
        };
    });
}

void QuickLookPreview::convert(const FileURL& file)
{
    m_loading = m_state->services().scheduler.inBackground([this, file, limits = m_limits] {
        auto content = std::make_shared<QuickLookContent>(convertDocument(file, limits));
        return [this, file, content] { show(file, std::move(*content)); };
    });
}

void QuickLookPreview::close()
{
    m_limits.stop();
    m_loading.reset();
    delete std::exchange(m_content, nullptr);
}

void QuickLookPreview::show(const FileURL& file, QuickLookContent content)
{
    if (const auto* card = std::get_if<QuickLookCard>(&content)) {
        // Only where there is nothing better already.
        if (auto* shown = qobject_cast<FileCard*>(m_content); shown && !card->message.isEmpty())
            shown->setRemark(card->message);
        return;
    }
    if (auto* page = std::get_if<QuickLookPage>(&content)) {
        auto* view = new QuickLookWebView(std::move(*page), this);
        replaceContent(view);
        connect(
            view, &QuickLookWebView::failed, this,
            [this, file] { replaceContent(new FileCard(*m_state, file, this)); }, Qt::QueuedConnection);
    } else {
        auto* pages = new PDFViewer(*m_state, std::get<QuickLookPdf>(content).file, this);
        pages->setAccessibleName(file.lastPathComponent());
        replaceContent(pages);
    }
    Q_EMIT contentShown();
}

void QuickLookPreview::replaceContent(QWidget* content)
{
    delete std::exchange(m_content, content);
    // A page of a width of its own is laid out in it before it is scaled.
    auto* webView = qobject_cast<QuickLookWebView*>(content);
    const int width = webView && webView->pageWidth() > 0 ? webView->pageWidth() : this->width();
    content->setGeometry(0, 0, width, height());
    setFocusProxy(content);
    content->show();
}

void QuickLookPreview::resizeEvent(QResizeEvent*)
{
    auto* webView = qobject_cast<QuickLookWebView*>(m_content);
    const bool isFitted = webView && webView->pageWidth() > 0;
    if (m_content && !isFitted)
        m_content->setGeometry(rect());
}

} // namespace wendlore
