#include "State/BucketTree.h"

#include "Editor/Scheduler.h"
#include "Vault/FileTree.h"
#include "Vault/LowPriority.h"
#include "Vault/TreeUpdate.h"

#include <utility>

namespace wendlore {

namespace {

using namespace std::chrono_literals;

/// The window shows the program's own changes first, and changes in a row are followed by one reading.
constexpr auto pause = 300ms;

} // namespace

BucketTree::BucketTree(Scheduler& scheduler, std::function<void()> changed)
    : m_scheduler(scheduler)
    , m_changed(std::move(changed))
{}

BucketTree::~BucketTree() = default;

const std::vector<FileNode>& BucketTree::nodes() const
{
    if (!m_isRead) {
        ++m_demands;
        m_nodes = std::make_shared<Nodes>(buildTree(m_bucket));
        m_isRead = true;
    }
    return *m_nodes;
}

void BucketTree::open(const std::optional<FileURL>& bucket)
{
    m_bucket = bucket.value_or(FileURL());
    ++m_demands;
    m_nodes = std::make_shared<Nodes>();
    m_isRead = m_bucket.isEmpty();
    tell();
    m_isTold = m_isRead;
    m_pause = m_isRead ? nullptr : m_scheduler.after(0ms, [this] { startReading(); });
}

void BucketTree::read()
{
    m_pause.reset();
    ++m_demands;
    Nodes found = buildTree(m_bucket);
    if (!m_isTold || found != *m_nodes)
        show(std::make_shared<Nodes>(std::move(found)));
}

void BucketTree::readInBackground(std::function<void()> then)
{
    m_waiting.push_back(std::move(then));
    ++m_demands;
    startReading();
}

void BucketTree::updateFolder(const FileURL& folder)
{
    update([folder](Nodes& nodes, const FileURL& bucket) {
        return wendlore::updateFolder(nodes, bucket, folder);
    });
}

void BucketTree::updateMoved(const FileURL& from, const FileURL& to)
{
    update([from, to](Nodes& nodes, const FileURL& bucket) {
        return wendlore::updateMoved(nodes, bucket, from, to);
    });
}

void BucketTree::update(const std::function<bool(Nodes&, const FileURL&)>& change)
{
    if (m_bucket.isEmpty())
        return;
    static_cast<void>(nodes());
    if (m_nodes.use_count() > 1)
        m_nodes = std::make_shared<Nodes>(*m_nodes);
    ++m_demands;
    if (change(*m_nodes, m_bucket))
        tell();
    m_pause = m_scheduler.after(pause, [this] { startReading(); });
}

void BucketTree::startReading()
{
    m_pause.reset();
    if (m_reading)
        return; // when that one ends, it sees that it is old
    const auto read = [this, bucket = m_bucket, shown = std::shared_ptr<const Nodes>(m_nodes),
                       demands = m_demands, isAwaited = !m_waiting.empty()]() -> std::function<void()> {
        auto found = std::make_shared<Nodes>();
        const auto build = [&] { *found = buildTree(bucket); };
        isAwaited ? build() : atLowPriority(build);
        // A large tree that is known already is given back here, where nobody waits for it.
        if (*found == *shown)
            found.reset();
        return [this, found, demands] {
            m_reading.reset();
            if (demands != m_demands) {
                startReading();
                return;
            }
            if (found || !m_isTold)
                show(found ? found : m_nodes);
            for (const auto& then : std::exchange(m_waiting, {}))
                then();
        };
    };
    m_reading = m_scheduler.inBackground(read);
}

void BucketTree::show(std::shared_ptr<Nodes> nodes)
{
    m_nodes = std::move(nodes);
    m_isRead = true;
    tell();
}

void BucketTree::tell()
{
    m_isTold = true;
    m_changed();
}

} // namespace wendlore
