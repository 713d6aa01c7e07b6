#include "Editor/WebEditorController.h"

#include "Editor/EditorScript.h"
#include "Editor/Scheduler.h"
#include "Typography/TypographyScript.h"

#include <QJsonObject>

#include <algorithm>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto reloadDelay = 300ms;

QString call(const QString& function, const QString& argument)
{
    return u"window.VaultEditor."_s + function + u'(' + argument + u')';
}

QString themeScript(bool dark)
{
    return call(u"setTheme"_s, jsString(dark ? u"dark"_s : u"light"_s));
}

} // namespace

WebEditorController::WebEditorController(std::unique_ptr<EditorWebView> webView, Scheduler& scheduler,
                                         QObject* parent)
    : QObject(parent)
    , m_webView(std::move(webView))
    , m_scheduler(scheduler)
{
    m_webView->setEvents({
        .message = [this](const QString& name, const QJsonValue& body,
                          EditorWebView::Generation generation) { receive(name, body, generation); },
        .contentProcessTerminated = [this] { reloadSoon(); },
        .navigationFailed = [this] { reloadSoon(); },
        .vaultRoot = [this] { return vaultRoot(); },
    });
    loadEditor();
}

WebEditorController::~WebEditorController() = default;

std::optional<FileURL> WebEditorController::vaultRoot() const
{
    return m_vaultProvider ? m_vaultProvider() : std::nullopt;
}

void WebEditorController::setContent(const QString& text)
{
    // A content that the page never got cannot be edited there: its receiver is not needed.
    if (!m_shown.empty() && !m_shown.back().isSent)
        m_shown.pop_back();
    m_desiredContent = text;
    m_shown.push_back({++m_generation, m_onChanged, m_onOpenLink});
    if (m_isReady)
        sendContent();
}

void WebEditorController::exec(const QString& command, const CommandValue& value)
{
    if (!m_isReady)
        return;
    QString arguments = jsString(command);
    if (const int* number = std::get_if<int>(&value))
        arguments += u", "_s + QString::number(*number);
    else if (const QString* text = std::get_if<QString>(&value))
        arguments += u", "_s + jsString(*text);
    m_webView->evaluate(call(u"exec"_s, arguments));
}

void WebEditorController::setTheme(bool dark)
{
    m_desiredDark = dark;
    if (m_isReady)
        m_webView->evaluate(themeScript(dark));
}

void WebEditorController::setTypography(const TypographyTheme& theme)
{
    m_desiredTypography = theme;
    if (m_isReady)
        m_webView->evaluate(typographyScript(theme));
}

void WebEditorController::setZoom(double zoom)
{
    m_desiredZoom = zoom;
    if (m_isReady)
        m_webView->evaluate(zoomScript(zoom));
}

void WebEditorController::focus()
{
    if (!m_isReady)
        return;
    m_webView->evaluate(call(u"focus"_s, {}));
    Q_EMIT focused();
}

void WebEditorController::drain(std::function<void()> done)
{
    m_webView->drain(std::move(done));
}

void WebEditorController::loadEditor()
{
    m_reload.reset();
    m_isReady = false;
    m_webView->load(u"vault://app/index.html"_s);
}

void WebEditorController::receive(const QString& name, const QJsonValue& body,
                                  EditorWebView::Generation generation)
{
    if (generation > m_generation)
        return;
    // Messages arrive in the order they were posted: nothing older than this one is still on its way, but for
    // what a page that has just been loaded says (it shows no content yet).
    while (!m_shown.empty() && m_shown.front().generation < generation)
        m_shown.pop_front();

    if (name == "ready"_L1)
        pageIsReady();
    else if (name == "changed"_L1 && body.isString())
        pageChanged(body.toString(), generation);
    else if (name == "selection"_L1 && body.isObject())
        pageSelects(ToolbarState::fromMessage(body.toObject()));
    else if (name == "openLink"_L1)
        pageOpensLink(body, generation);
    else if (m_onRequest)
        m_onRequest(name, body);
}

void WebEditorController::pageIsReady()
{
    m_isReady = true;
    m_webView->evaluate(themeScript(m_desiredDark));
    if (m_desiredTypography)
        m_webView->evaluate(typographyScript(*m_desiredTypography));
    m_webView->evaluate(zoomScript(m_desiredZoom));
    if (m_desiredContent)
        sendContent();
    Q_EMIT becameReady();
}

void WebEditorController::pageChanged(const QString& text, EditorWebView::Generation generation)
{
    const std::optional<Shown> content = shown(generation);
    if (!content)
        return;
    if (generation == m_generation)
        m_desiredContent = text;
    if (content->changed)
        content->changed(text);
}

void WebEditorController::pageSelects(const ToolbarState& state)
{
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

void WebEditorController::pageOpensLink(const QJsonValue& body, EditorWebView::Generation generation)
{
    const QJsonValue href = body.isObject() ? body.toObject().value("href"_L1) : body;
    const std::optional<Shown> content = shown(generation);
    if (href.isString() && content && content->openLink)
        content->openLink(href.toString(), body.toObject().value("wiki"_L1).toBool(false));
}

/// A copy, because a receiver may put a new content into the page. Nothing for a content that is no more.
std::optional<WebEditorController::Shown>
WebEditorController::shown(EditorWebView::Generation generation) const
{
    const auto found = std::ranges::find(m_shown, generation, &Shown::generation);
    if (found != m_shown.end())
        return *found;
    // Before the first content there is one page, which shows nothing yet.
    return m_generation == 0 ? std::optional(Shown{0, m_onChanged, m_onOpenLink}) : std::nullopt;
}

void WebEditorController::sendContent()
{
    if (!m_shown.empty())
        m_shown.back().isSent = true;
    m_webView->evaluate(call(u"setContent"_s, jsString(*m_desiredContent)), m_generation);
}

void WebEditorController::reloadSoon()
{
    m_reload = m_scheduler.after(reloadDelay, [this] { loadEditor(); });
}

} // namespace wendlore
