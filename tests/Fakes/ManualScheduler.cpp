#include "Fakes/ManualScheduler.h"

#include <algorithm>
#include <deque>

namespace wendlore {

struct ManualScheduler::State
{
    struct Timed
    {
        int id;
        std::chrono::milliseconds due;
        std::function<void()> work;
    };
    struct Background
    {
        int id;
        std::function<std::function<void()>()> work;
        bool isWanted = true;
    };

    std::chrono::milliseconds now{0};
    int nextId = 0;
    std::vector<Timed> timed;
    std::deque<Background> background;
};

class ManualScheduler::Task final : public ScheduledTask
{
public:
    Task(std::weak_ptr<State> state, int id)
        : m_state(std::move(state))
        , m_id(id)
    {}

    ~Task() override
    {
        const auto state = m_state.lock();
        if (!state)
            return;
        std::erase_if(state->timed, [this](const State::Timed& timed) { return timed.id == m_id; });
        for (State::Background& background : state->background) {
            if (background.id == m_id)
                background.isWanted = false;
        }
    }

private:
    std::weak_ptr<State> m_state;
    int m_id;
};

ManualScheduler::ManualScheduler()
    : m_state(std::make_shared<State>())
{}

ManualScheduler::~ManualScheduler() = default;

std::unique_ptr<ScheduledTask> ManualScheduler::after(std::chrono::milliseconds delay,
                                                      std::function<void()> work)
{
    const int id = m_state->nextId++;
    m_state->timed.push_back({id, m_state->now + delay, std::move(work)});
    return std::make_unique<Task>(m_state, id);
}

std::unique_ptr<ScheduledTask> ManualScheduler::inBackground(std::function<std::function<void()>()> work)
{
    const int id = m_state->nextId++;
    m_state->background.push_back({id, std::move(work)});
    return std::make_unique<Task>(m_state, id);
}

void ManualScheduler::advance(std::chrono::milliseconds time)
{
    const auto end = m_state->now + time;
    for (;;) {
        const auto next = std::ranges::min_element(m_state->timed, {}, &State::Timed::due);
        if (next == m_state->timed.end() || next->due > end)
            break;
        m_state->now = next->due;
        const auto work = std::move(next->work);
        m_state->timed.erase(next);
        work();
    }
    m_state->now = end;
}

bool ManualScheduler::finishNextBackgroundWork()
{
    if (m_state->background.empty())
        return false;
    // The work may take part in races with the test, so its entry stays cancellable until it has run.
    const auto deliver = m_state->background.front().work();
    const bool isWanted = m_state->background.front().isWanted;
    m_state->background.pop_front();
    if (isWanted && deliver)
        deliver();
    return true;
}

void ManualScheduler::finishBackgroundWork()
{
    while (finishNextBackgroundWork()) {
    }
}

std::chrono::milliseconds ManualScheduler::now() const
{
    return m_state->now;
}

int ManualScheduler::pendingTasks() const
{
    return static_cast<int>(m_state->timed.size());
}

int ManualScheduler::pendingBackgroundWork() const
{
    return static_cast<int>(std::ranges::count_if(
        m_state->background, [](const State::Background& work) { return work.isWanted; }));
}

} // namespace wendlore
