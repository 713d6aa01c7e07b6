#include "Previews/GoogleDocPreview.h"

#include "Previews/GoogleDocPointer.h"
#include "Previews/GoogleSignInCard.h"
#include "Previews/GoogleWebView.h"
#include "Previews/ReadForViewing.h"
#include "Previews/ViewerStack.h"

#include "Editor/Scheduler.h"
#include "State/AppState.h"
#include "State/Workspace.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int messageSymbol = 32;

} // namespace

GoogleDocPreview::GoogleDocPreview(AppState& state, const FileURL& file, QWidget* parent,
                                   const GoogleAddresses& addresses)
    : QWidget(parent)
    , m_state(state)
    , m_file(file)
    , m_addresses(addresses)
    , m_stack(new ViewerStack(this))
{
    m_reading = readInBackground(
        state.services(), file, GoogleDocPointer::maximumSize,
        [file, addresses](const auto& bytes) {
            return bytes ? GoogleDocPointer::previewURL(file, *bytes, addresses) : std::nullopt;
        },
        [this](const auto& previewURL) { didRead(previewURL); });
}

GoogleDocPreview::~GoogleDocPreview() = default;

GoogleWebView* GoogleDocPreview::webView() const
{
    return qobject_cast<GoogleWebView*>(m_stack->content());
}

void GoogleDocPreview::didRead(const std::optional<QUrl>& previewURL)
{
    m_reading.reset();
    if (!previewURL) {
        m_stack->showMessage(u"Kunde inte läsa pekarfilen"_s, messageSymbol);
        return;
    }
    m_previewURL = *previewURL;
    showWebView();
}

void GoogleDocPreview::showWebView()
{
    auto* view = new GoogleWebView(m_state.services().scheduler, m_addresses);
    view->setAccessibleName(m_file.lastPathComponent());
    m_stack->showContent(view);
    connect(view, &GoogleWebView::signInWallReached, this, [this] {
        const bool isNews = !std::exchange(m_signInWall, true);
        if (isNews && !m_allowSignIn)
            showSignInCard();
    });
    connect(view, &GoogleWebView::windowWanted, this,
            [this](const QUrl& address) { m_state.services().workspace.open(address); });
    const auto signIn = GoogleDocPointer::signInURL(m_file, m_previewURL, m_addresses);
    view->goTo(m_allowSignIn && signIn ? *signIn : m_previewURL);
}

void GoogleDocPreview::showSignInCard()
{
    auto* card = new GoogleSignInCard(GoogleDocPointer::accountEmail(m_file));
    m_stack->showContent(card);
    connect(card, &GoogleSignInCard::signInWanted, this, [this] {
        m_allowSignIn = true;
        showWebView();
    });
    connect(card, &GoogleSignInCard::browserWanted, this,
            [this] { m_state.services().workspace.open(m_previewURL); });
}

} // namespace wendlore
