#pragma once

#include "Editor/EditorWebView.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <deque>
#include <optional>

namespace wendlore {

/// A page in a process of its own: what the host sends and what the page posts lie on their way, in order,
/// until a test lets them arrive.
class PageModel final : public EditorWebView
{
public:
    void setEvents(Events events) override { m_events = std::move(events); }
    void load(const QString&) override
    {
        m_toPage.clear();
        m_content.reset();
        m_shown = 0;
        m_isAlive = true;
        post(QStringLiteral("ready"), {});
    }
    void evaluate(const QString&) override {}
    void evaluate(const QString& script, Generation generation) override
    {
        if (m_isAlive)
            m_toPage.push_back({argument(script), generation});
    }
    void drain(std::function<void()> done) override { done(); }

    /// What the page shows; nothing while it was given nothing.
    [[nodiscard]] const std::optional<QString>& content() const { return m_content; }

    /// The user changes the text; the page reports it.
    void edit(const QString& text)
    {
        m_content = text;
        post(QStringLiteral("changed"), text);
    }
    /// The oldest content on its way reaches the page; false when there is none.
    bool deliverToPage()
    {
        if (m_toPage.empty())
            return false;
        m_content = m_toPage.front().text;
        m_shown = m_toPage.front().generation;
        m_toPage.pop_front();
        post(QStringLiteral("shown"), {});
        return true;
    }
    /// The oldest message on its way reaches the host; false when there is none.
    bool deliverToHost()
    {
        if (m_toHost.empty())
            return false;
        const Message message = m_toHost.front();
        m_toHost.pop_front();
        if (message.name == QStringLiteral("changed"))
            m_reported.append(message.body.toString());
        m_events.message(message.name, message.body, message.shown);
        return true;
    }
    /// The page's process dies, and what it had posted last may die with it. Gives the texts that it reported
    /// and that never arrived.
    QStringList crash(bool losesMessages)
    {
        QStringList lost;
        for (const Message& message : m_toHost) {
            if (losesMessages && message.name == QStringLiteral("changed"))
                lost.append(message.body.toString());
        }
        if (losesMessages)
            m_toHost.clear();
        while (deliverToHost()) {
        }
        m_isAlive = false;
        m_toPage.clear();
        m_content.reset();
        m_events.contentProcessTerminated();
        return lost;
    }
    /// Every text that the host was told of.
    [[nodiscard]] const QStringList& reported() const { return m_reported; }

private:
    struct Message final
    {
        QString name;
        QJsonValue body;
        Generation shown;
    };
    struct Content final
    {
        QString text;
        Generation generation;
    };

    void post(const QString& name, const QJsonValue& body) { m_toHost.push_back({name, body, m_shown}); }
    /// The text inside `window.VaultEditor.setContent("...")`.
    [[nodiscard]] static QString argument(const QString& script)
    {
        const qsizetype start = script.indexOf(QLatin1Char('(')) + 1;
        const QString literal = script.mid(start, script.size() - start - 1);
        return QJsonDocument::fromJson('[' + literal.toUtf8() + ']').array().first().toString();
    }

    Events m_events;
    std::deque<Message> m_toHost;
    std::deque<Content> m_toPage;
    QStringList m_reported;
    std::optional<QString> m_content;
    Generation m_shown = 0;
    bool m_isAlive = false;
};

} // namespace wendlore
