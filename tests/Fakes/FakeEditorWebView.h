#pragma once

#include "Editor/EditorWebView.h"

#include <QStringList>

#include <vector>

namespace wendlore {

/// A web view without an engine: records what the host does and lets a test post the page's messages.
class FakeEditorWebView final : public EditorWebView
{
public:
    void setEvents(Events events) override { m_events = std::move(events); }
    void load(const QString& address) override { loads.append(address); }
    void evaluate(const QString& script) override { scripts.append(script); }

    void evaluate(const QString& script, Generation shown) override
    {
        generation = shown;
        scripts.append(script);
    }

    void drain(std::function<void()> done) override
    {
        drainAsked();
        if (answersDrains)
            done();
        else
            drains.push_back(std::move(done));
    }

    /// Posts a message as the page would, marked with the content that it shows now.
    void post(const QString& name, const QJsonValue& body = {}) { m_events.message(name, body, generation); }
    /// Posts a message that was on its way since the page showed an earlier content.
    void postLate(const QString& name, const QJsonValue& body, Generation shown)
    {
        m_events.message(name, body, shown);
    }
    /// Asks what to begin with, as a page that is being loaded does; gives the script that it then runs.
    QString begin()
    {
        const Beginning beginning = m_events.beginning();
        generation = beginning.generation;
        return beginning.script;
    }
    void terminateContentProcess() { m_events.contentProcessTerminated(); }
    void failNavigation() { m_events.navigationFailed(); }

    /// What waits for the page to answer, when `answersDrains` is off.
    std::vector<std::function<void()>> drains;
    bool answersDrains = true;
    std::function<void()> drainAsked = [] {};
    QStringList loads;
    QStringList scripts;
    Generation generation = 0;

private:
    Events m_events;
};

} // namespace wendlore
