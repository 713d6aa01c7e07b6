#include "Editor/WebEditorController.h"

#include "Editor/EditorScript.h"
#include "Editor/Scheduler.h"
#include "Editor/TextEdit.h"
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
        .beginning = [this] { return beginning(); },
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
    m_shown.push_back({++m_generation, m_onChanged, m_onOpenLink, text});
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

void WebEditorController::focusInView()
{
    if (!m_isReady)
        return;
    exec(u"focusInView"_s);
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
    m_begunGeneration = 0;
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
        pageIsReady(generation);
    else if (name == "changed"_L1 && body.isString())
        pageChanged(body.toString(), generation);
    else if (name == "edited"_L1 && body.isObject())
        pageEdited(body.toObject(), generation);
    else if (name == "selection"_L1 && body.isObject())
        pageSelects(ToolbarState::fromMessage(body.toObject()));
    else if (name == "openLink"_L1)
        pageOpensLink(body, generation);
    else if (m_onRequest)
        m_onRequest(name, body);
}

/// What is known already goes along with the page, so that it is drawn with its note, and need not be ready
/// and ask for it first.
EditorWebView::Beginning WebEditorController::beginning()
{
    if (m_isReady)
        return {};
    m_begunLook = lookScripts();
    QStringList scripts = m_begunLook;
    if (m_generation > 0 && m_desiredContent) {
        m_begunGeneration = m_generation;
        scripts.append(contentScript());
    }
    return {scripts.join(u";\n"_s), m_begunGeneration};
}

QStringList WebEditorController::lookScripts() const
{
    QStringList scripts{themeScript(m_desiredDark)};
    if (m_desiredTypography)
        scripts.append(typographyScript(*m_desiredTypography));
    scripts.append(zoomScript(m_desiredZoom));
    return scripts;
}

/// `generation` is what the page says it shows. Only what it was told to begin with counts, and what has come
/// since is sent.
void WebEditorController::pageIsReady(EditorWebView::Generation generation)
{
    m_isReady = true;
    const bool hasBegun = generation > 0 && generation == m_begunGeneration;
    if (const QStringList look = lookScripts(); !hasBegun || look != m_begunLook) {
        for (const QString& script : look)
            m_webView->evaluate(script);
    }
    if (m_desiredContent && !(hasBegun && generation == m_generation))
        sendContent();
    Q_EMIT becameReady();
}

void WebEditorController::pageChanged(const QString& text, EditorWebView::Generation generation, int edits)
{
    const std::optional<Shown> content = shown(generation);
    if (!content)
        return;
    if (const auto known = std::ranges::find(m_shown, generation, &Shown::generation);
        known != m_shown.end()) {
        known->text = text;
        known->edits = edits;
    }
    if (generation == m_generation)
        m_desiredContent = text;
    if (content->changed)
        content->changed(text);
}

/// A long note comes as what has changed in it. What does not fit what is known of it is asked for as a
/// whole.
void WebEditorController::pageEdited(const QJsonObject& body, EditorWebView::Generation generation)
{
    const std::optional<Shown> content = shown(generation);
    if (!content)
        return;
    const std::optional<TextEdit> edit = TextEdit::fromMessage(body);
    const bool isNext = edit && edit->count == content->edits + 1;
    if (const std::optional<QString> text = isNext ? edit->appliedTo(content->text) : std::nullopt)
        pageChanged(*text, generation, edit->count);
    else if (generation == m_generation)
        m_webView->evaluate(call(u"reportWhole"_s, {}));
    else
        qWarning("an edit of a note that was left does not fit its text");
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
    return m_generation == 0 ? std::optional(Shown{0, m_onChanged, m_onOpenLink, {}}) : std::nullopt;
}

/// Puts the content into the page, which from then on may report edits of it.
QString WebEditorController::contentScript()
{
    if (!m_shown.empty()) {
        m_shown.back().isSent = true;
        m_shown.back().text = *m_desiredContent;
        m_shown.back().edits = 0;
    }
    return call(u"setContent"_s, jsString(*m_desiredContent));
}

void WebEditorController::sendContent()
{
    m_webView->evaluate(contentScript(), m_generation);
}

void WebEditorController::reloadSoon()
{
    m_reload = m_scheduler.after(reloadDelay, [this] { loadEditor(); });
}

} // namespace wendlore
