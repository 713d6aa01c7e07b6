#include "Previews/HTMLViewer.h"

#include "Previews/HtmlAddress.h"
#include "Previews/HtmlPage.h"
#include "Previews/HtmlSchemeHandler.h"
#include "Previews/ReadForViewing.h"
#include "Previews/ViewerStack.h"

#include "Editor/Scheduler.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"
#include "State/Workspace.h"

#include <QPushButton>
#include <QWebEngineProfile>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qint64 maximumFileSize = 256LL << 20;
constexpr int messageSymbol = 28;

} // namespace

HTMLViewer::HTMLViewer(AppState& state, const FileURL& file, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_file(file)
    , m_stack(new ViewerStack(this))
{
    m_stack->showProgress(u"Laddar…"_s);
    m_reading = readInBackground(
        state.services(), file, maximumFileSize,
        [](const auto& bytes) { return bytes ? std::optional(htmlAsUtf8(*bytes)) : std::nullopt; },
        [this](const auto& html) { didRead(html); });
}

HTMLViewer::~HTMLViewer()
{
    // The page goes before its profile.
    delete m_view;
}

void HTMLViewer::didRead(const std::optional<QByteArray>& html)
{
    m_reading.reset();
    if (!html) {
        m_stack->showMessage(u"Kunde inte ladda HTML-filen"_s, messageSymbol);
        return;
    }
    m_timeout = m_state.services().scheduler.after(timeOut, [this] { giveUp(); });
    showPage(*html);
}

void HTMLViewer::showPage(const QByteArray& html)
{
    m_profile = std::make_unique<QWebEngineProfile>(); // keeps nothing, knows no other page
    m_profile->installUrlSchemeHandler(
        htmlScheme, new HtmlSchemeHandler(m_state.services().coordinator, m_file, html,
                                          folderOfPage(m_file, m_state.vaultURL()), m_profile.get()));
    m_view = new PreviewWebView;
    auto* page = new HtmlPage(m_file, m_profile.get(), m_view);
    m_view->showPage(*page);
    m_view->setAccessibleName(m_file.lastPathComponent());
    connect(page, &HtmlPage::addressClicked, this,
            [this](const QUrl& address) { m_state.services().workspace.open(address); });
    // Selecting another file deletes this viewer: not in the middle of the page's question.
    connect(page, &HtmlPage::fileClicked, &m_state, &AppState::openLinkedFile, Qt::QueuedConnection);
    connect(page, &QWebEnginePage::loadFinished, this, [this](bool succeeded) {
        if (succeeded)
            didFinish();
    });
    connect(page, &QWebEnginePage::renderProcessTerminated, this, &HTMLViewer::giveUp);
    m_stack->showContent(m_view);
    page->load(pageAddress(m_file));
}

void HTMLViewer::didFinish()
{
    m_timeout.reset();
}

void HTMLViewer::giveUp()
{
    m_timeout.reset();
    auto& notice = m_stack->showMessage(u"Kunde inte visa förhandsvisningen"_s, messageSymbol);
    QPushButton* open = notice.addButton(u"Öppna i webbläsare"_s);
    connect(open, &QPushButton::clicked, this, [this] { m_state.services().workspace.open(m_file); });
}

} // namespace wendlore
