#include "Support/PageFixture.h"

#include "Editor/EditorScript.h"
#include "Support/EngineTest.h"

#include <QWebEnginePage>
#include <QWebEngineView>

#include <algorithm>

namespace wendlore {

using namespace Qt::StringLiterals;

PageFixture::PageFixture(EditorWebView::Beginning first)
    : beginning(std::move(first))
{
    view.setEvents({
        .message =
            [this](const QString& name, const QJsonValue& body, EditorWebView::Generation generation) {
                messages.append({name, body, generation});
            },
        .contentProcessTerminated = [this] { ++deaths; },
        .navigationFailed = [this] { ++failures; },
        .vaultRoot = [this] { return vaultRoot; },
        .beginning = [this] { return beginning; },
    });
    view.widget()->resize(600, 400);
    view.widget()->show();
    view.widget()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(view.widget(), patience));
    load();
}

void PageFixture::load()
{
    view.load(u"vault://app/index.html"_s);
    WAIT_VERIFY(has(u"ready"_s));
}

void PageFixture::setContent(const QString& text, EditorWebView::Generation generation)
{
    view.evaluate(u"window.VaultEditor.setContent(%1)"_s.arg(jsString(text)), generation);
    view.evaluate(u"window.VaultEditor.focus()"_s);
    drain();
}

void PageFixture::drain()
{
    bool isDone = false;
    view.drain([&isDone] { isDone = true; });
    WAIT_VERIFY(isDone);
}

void PageFixture::type(const QString& text)
{
    view.widget()->setFocus();
    WAIT_VERIFY(value(u"document.hasFocus()"_s).toBool());
    pressKeys(*view.widget()->focusProxy(), text);
}

QVariant PageFixture::value(const QString& expression)
{
    std::optional<QVariant> result;
    view.widget()->page()->runJavaScript(expression, [&result](const QVariant& answer) { result = answer; });
    static_cast<void>(waitFor([&result] { return result.has_value(); }));
    return result.value_or(QVariant());
}

int PageFixture::widthOfImage(const QString& address)
{
    static_cast<void>(value(u"window.__width = null; (() => { const image = new Image();"
                            "image.onload = () => { window.__width = image.naturalWidth; };"
                            "image.onerror = () => { window.__width = -1; };"
                            "image.src = %1; })()"_s.arg(jsString(address))));
    QVariant width;
    static_cast<void>(waitFor([&] { return !(width = value(u"window.__width"_s)).isNull(); }));
    return width.toInt();
}

bool PageFixture::has(const QString& name) const
{
    return std::ranges::any_of(messages, [&](const PageMessage& message) { return message.name == name; });
}

std::pair<QString, EditorWebView::Generation> PageFixture::lastChange() const
{
    for (auto message = messages.rbegin(); message != messages.rend(); ++message) {
        if (message->name == u"changed"_s)
            return {message->body.toString(), message->generation};
    }
    return {};
}

} // namespace wendlore
