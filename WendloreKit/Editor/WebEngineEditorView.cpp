#include "Editor/WebEngineEditorView.h"

#include "Editor/EditorPage.h"
#include "Editor/EditorScript.h"
#include "Editor/Spelling.h"
#include "Editor/WendloreSchemeHandler.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QWebChannel>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineUrlScheme>
#include <QWebEngineView>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace wendlore {

namespace {

constexpr auto schemeName = "vault";
constexpr auto loadTimeOut = 60s;

/// The keys that stand as fences: nobody has them on a keyboard.
constexpr int fenceKeys = Qt::Key_F24 - Qt::Key_F13 + 1;

/// What the page finds when it starts: the message handlers that it knows, over the engine's channel. The
/// number of the content that is shown goes along with every message.
///
/// What the host has to say passes through `after`, which waits until the fence before it has arrived: keys
/// and clicks reach the page on another way than scripts, and scripts overtake them there. A fence is a key,
/// so when it arrives, all input before it has been handled. One that goes to a video's frame, which has the
/// focus, is not waited for, and one that does not come for another reason not forever.
const QString bridgeScript = uR"JS((() => {
  const FENCES = %1;
  const PATIENCE = 1000;
  const transport = qt.webChannelTransport;
  let shown = 0;
  let calls = 0;
  let passed = 0;
  const queue = [];
  const post = (name, body = null) => transport.send(JSON.stringify(
    {type: 6, id: ++calls, object: 'host', method: 'post', args: [name, body, shown]}));
  const handlers = {};
  for (const name of ['ready', 'changed', 'edited', 'selection', 'openLink', 'noteNames', 'importImage'])
    handlers[name] = Object.freeze({postMessage: body => post(name, body)});
  window.webkit = Object.freeze({messageHandlers: Object.freeze(handlers)});
  const advance = fence => {
    passed = Math.max(passed, fence);
    while (queue.length > 0 && queue[0].fence <= passed) {
      try {
        queue.shift().task();
      } catch (error) {
        reportError(error);
      }
    }
  };
  Object.defineProperty(window, '__host', {value: Object.freeze({
    after(fence, task) {
      queue.push({fence, task});
      if (fence > passed)
        setTimeout(advance, PATIENCE, fence);
      advance(document.activeElement instanceof HTMLIFrameElement ? fence : passed);
    },
    show(generation) {
      shown = generation;
      post('shown');
    },
    // A task of its own: what the last key did is told before.
    drain(number) {
      const {port1, port2} = new MessageChannel();
      port1.onmessage = () => post('drained', number);
      port2.postMessage(null);
    },
  })});
  addEventListener('keydown', event => {
    const key = /^F(1[3-9]|2[0-4])$/.test(event.key) ? Number(event.key.slice(1)) - 13 : -1;
    if (key < 0)
      return;
    event.preventDefault();
    event.stopImmediatePropagation();
    // Of the fences that share the key it is the next one; one that was no longer waited for says nothing.
    const ahead = (key - passed % FENCES + FENCES) % FENCES;
    if (ahead <= FENCES / 2)
      advance(passed + ahead);
  }, true);
})();)JS"_s.arg(fenceKeys);

/// What marks the page's messages with `generation` from then on.
QString showScript(EditorWebView::Generation generation)
{
    return u";\n__host.show("_s + QString::number(generation) + u')';
}

bool isLinkKey(const QKeyEvent& event)
{
    return event.key() == Qt::Key_K && event.modifiers() == Qt::ControlModifier;
}

} // namespace

/// The one object that the page can reach, and the one thing that it can do.
class WebEngineEditorView::Bridge final : public QObject
{
    Q_OBJECT

public:
    explicit Bridge(WebEngineEditorView& view, QObject* parent)
        : QObject(parent)
        , m_view(view)
    {}

    Q_INVOKABLE void post(const QString& name, const QJsonValue& body, double generation)
    {
        m_view.receive(name, body, generation < 0 ? 0 : static_cast<Generation>(generation));
    }

private:
    WebEngineEditorView& m_view;
};

void registerEditorScheme()
{
    QWebEngineUrlScheme scheme(schemeName);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

WebEngineEditorView::WebEngineEditorView()
{
    makeProfile();
    makePage();
    m_view = new QWebEngineView;
    m_view->setPage(m_page);
    m_page->setParent(m_view);
    m_view->installEventFilter(this);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_view, &QWidget::customContextMenuRequested, this, &WebEngineEditorView::showContextMenu);

    m_loadTimeOut.setSingleShot(true);
    connect(&m_loadTimeOut, &QTimer::timeout, this, [this] {
        // The engine may say nothing of a load that it was given while another one was under way.
        loadFinished(false);
        m_page->triggerAction(QWebEnginePage::Stop);
    });
}

WebEngineEditorView::~WebEngineEditorView()
{
    m_events = {};
    // The page goes before its profile.
    delete m_view;
}

void WebEngineEditorView::makeProfile()
{
    offerDictionaries();
    // Nobody accepts downloads here, so the engine refuses them.
    m_profile = std::make_unique<QWebEngineProfile>();
    checkSpelling(*m_profile);
    auto* handler = new WendloreSchemeHandler(m_profile.get());
    handler->setVaultProvider([this] { return m_events.vaultRoot ? m_events.vaultRoot() : std::nullopt; });
    handler->setBeginning([this] { return beginning(); });
    m_profile->installUrlSchemeHandler(schemeName, handler);
}

void WebEngineEditorView::makePage()
{
    m_page = new EditorPage(m_profile.get());
    QWebEngineScript script;
    script.setSourceCode(bridgeScript);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    m_page->scripts().insert(script);
    auto* channel = new QWebChannel(m_page);
    channel->registerObject(u"host"_s, new Bridge(*this, channel));
    m_page->setWebChannel(channel, QWebEngineScript::MainWorld);

    connect(m_page, &QWebEnginePage::loadFinished, this, &WebEngineEditorView::loadFinished);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, [this] {
        m_isLoaded = false;
        answerDrains();
        if (m_events.contentProcessTerminated)
            m_events.contentProcessTerminated();
    });
}

QWebEngineView* WebEngineEditorView::widget() const
{
    return m_view;
}

qint64 WebEngineEditorView::processId() const
{
    return m_page ? m_page->renderProcessPid() : 0;
}

void WebEngineEditorView::setEvents(Events events)
{
    m_events = std::move(events);
}

void WebEngineEditorView::load(const QString& address)
{
    if (!m_page)
        return;
    m_isLoaded = false;
    m_isLoading = true;
    m_isShowing = false;
    m_lastFence = 0;
    answerDrains();
    m_loadTimeOut.start(loadTimeOut);
    QUrl numbered(address);
    numbered.setQuery(QString::number(++m_loads));
    m_page->load(numbered);
}

/// In ASCII, so that no way of coding letters stands between the note and the page. A page that is loaded in
/// the place of another one may get that one's from the engine's memory, and must not begin with it.
QByteArray WebEngineEditorView::beginning() const
{
    if (!m_events.beginning)
        return {};
    const auto [script, generation] = m_events.beginning();
    const QString begin = generation > 0 ? script + showScript(generation) : script;
    return asciiScript(
        u"if (location.search === '?%1')\nwindow.VaultBeginning = (function () {\n"_s.arg(m_loads) + begin +
        u"\n});\n"_s);
}

void WebEngineEditorView::loadFinished(bool succeeded)
{
    m_loadTimeOut.stop();
    m_isLoaded = succeeded;
    const bool wasLoading = std::exchange(m_isLoading, false);
    if (!succeeded && wasLoading && m_events.navigationFailed)
        m_events.navigationFailed();
}

void WebEngineEditorView::evaluate(const QString& script)
{
    if (!m_page)
        return;
    // In parentheses: the engine then reads the script once, which can be a whole note, and not twice.
    m_page->runJavaScript(u"__host.after(%1, (function () {"_s.arg(fence()) + script + u"\n}));"_s,
                          QWebEngineScript::MainWorld);
}

void WebEngineEditorView::evaluate(const QString& script, Generation generation)
{
    // The content first: what the page still says about the old one meanwhile belongs to the old one, and a
    // content that the page refuses is never shown.
    evaluate(script + showScript(generation));
    m_isShowing = true;
}

void WebEngineEditorView::drain(std::function<void()> done)
{
    if (!m_page || !m_isLoaded) {
        done();
        return;
    }
    m_drains[++m_lastDrain] = std::move(done);
    evaluate(u"__host.drain(%1)"_s.arg(m_lastDrain));
}

/// Sends a fence after the keys and clicks that the page was given since the last one; a page that shows
/// nothing yet is not kept waiting. The number of the last fence sent.
int WebEngineEditorView::fence()
{
    QWidget* const input = m_view->focusProxy();
    if (std::exchange(m_isInputAhead, false) && input && m_isShowing) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_F13 + ++m_lastFence % fenceKeys, Qt::NoModifier);
        QCoreApplication::sendEvent(input, &key);
        m_isInputAhead = false;
    }
    return m_lastFence;
}

bool WebEngineEditorView::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        // The engine makes the widget that takes the page's input, and another one for another process.
        static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
        break;
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
        m_isInputAhead = true;
        break;
    case QEvent::ShortcutOverride:
        // On X11 the engine would take it to delete the rest of the line.
        if (isLinkKey(*static_cast<QKeyEvent*>(event))) {
            event->ignore();
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void WebEngineEditorView::receive(const QString& name, const QJsonValue& body, Generation generation)
{
    // The page works as soon as it speaks, which can be before the engine counts it as loaded.
    if (name == "ready"_L1) {
        m_isLoaded = true;
        m_isShowing = generation > 0;
    }
    if (name == "drained"_L1) {
        if (const auto waiting = m_drains.extract(body.toInt()))
            waiting.mapped()();
    } else if (m_events.message) {
        m_events.message(name, body, generation);
    }
}

/// A page that is gone has nothing more to say.
void WebEngineEditorView::answerDrains()
{
    for (const auto& [number, done] : std::exchange(m_drains, {}))
        done();
}

void WebEngineEditorView::showContextMenu(const QPoint& position)
{
    struct Entry final
    {
        QWebEnginePage::WebAction action;
        QString title;
    };
    auto* menu = new QMenu(m_view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addSpellingSuggestions(*menu, *m_page, m_view->lastContextMenuRequest());
    for (const auto& [webAction, title] : std::initializer_list<Entry>{
             {QWebEnginePage::Cut, u"Klipp ut"_s},
             {QWebEnginePage::Copy, u"Kopiera"_s},
             {QWebEnginePage::Paste, u"Klistra in"_s},
             {QWebEnginePage::PasteAndMatchStyle, u"Klistra in som oformaterad text"_s},
             {QWebEnginePage::SelectAll, u"Markera allt"_s}}) {
        if (webAction == QWebEnginePage::SelectAll)
            menu->addSeparator();
        QAction* const pageAction = m_page->action(webAction);
        QAction* const entry = menu->addAction(title);
        entry->setEnabled(pageAction->isEnabled());
        if (webAction == QWebEnginePage::PasteAndMatchStyle)
            connect(entry, &QAction::triggered, this, &WebEngineEditorView::pasteText);
        else
            connect(entry, &QAction::triggered, pageAction, &QAction::trigger);
    }
    menu->popup(m_view->mapToGlobal(position));
}

/// The page cannot tell the engine's own way of it from ordinary pasting, which reads Markdown.
void WebEngineEditorView::pasteText()
{
    evaluate(u"window.VaultEditor.pasteText(%1)"_s.arg(jsString(QGuiApplication::clipboard()->text())));
}

} // namespace wendlore

#include "WebEngineEditorView.moc"
