#pragma once

#include "Vault/FileNode.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace wendlore {

class ScheduledTask;
class Scheduler;

/// The open bucket's tree, as it was last read from disk: whole, or only where the program itself changed
/// something, which then is shown at once while the rest is read in the background. Used on the main thread.
class BucketTree final
{
public:
    /// `changed` is called whenever the tree has become another.
    BucketTree(Scheduler& scheduler, std::function<void()> changed);
    ~BucketTree();

    /// Reads the tree first if that has not been done yet.
    [[nodiscard]] const std::vector<FileNode>& nodes() const;
    /// Whether asking for the nodes takes no time.
    [[nodiscard]] bool isRead() const { return m_isRead; }

    /// From now on the tree is that of `bucket`, empty without one. It is read soon, in the background, so
    /// that opening a large bucket keeps nobody waiting who does not need the tree.
    void open(const std::optional<FileURL>& bucket);
    /// Reads the whole tree now.
    void read();
    /// The same without waiting; calls `then` when what a reading that
    /// began after this call found is shown.
    void readInBackground(std::function<void()> then);
    /// Shows what `folder` holds now, and soon after, read in the background, what else has changed.
    void updateFolder(const FileURL& folder);
    /// The same for both ends of a move.
    void updateMoved(const FileURL& from, const FileURL& to);

private:
    using Nodes = std::vector<FileNode>;

    /// Applies `change`, which tells whether it changed anything.
    void update(const std::function<bool(Nodes&, const FileURL& bucket)>& change);
    void startReading();
    void show(std::shared_ptr<Nodes> nodes);
    void tell();

    Scheduler& m_scheduler;
    std::function<void()> m_changed;
    FileURL m_bucket; ///< empty while none is open
    /// Shared only with a reading in the background, which compares with it.
    mutable std::shared_ptr<Nodes> m_nodes = std::make_shared<Nodes>();
    mutable bool m_isRead = true;
    mutable int m_demands = 0; ///< what a reading found that began before the last of these may be old
    bool m_isTold = true;      ///< whether `m_changed` was called for the nodes as they are
    std::unique_ptr<ScheduledTask> m_pause; ///< before a reading that nobody waits for
    std::unique_ptr<ScheduledTask> m_reading;
    std::vector<std::function<void()>> m_waiting;
};

} // namespace wendlore
