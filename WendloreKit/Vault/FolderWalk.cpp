#include "Vault/FolderWalk.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <linux/close_range.h>
#include <unistd.h>

namespace wendlore {

namespace {

/// Below so many folders that wait, a second thread costs more than it saves.
constexpr std::size_t foldersWorthThreads = 8;
constexpr unsigned maximumThreads = 4;

/// Gives this thread a table of open files of its own, empty but for the standard streams: opening and
/// closing then take no locks that threads share. Where the kernel cannot do that, it is only slower.
void useOwnFileTable()
{
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_UNSHARE);
}

/// The folders that are still to be listed, taken last in first out by every thread of one walk. A node stays
/// where it is once its folder's list is stored, so threads write into different parts of the one tree.
class Walk final
{
public:
    explicit Walk(const ListFolder& list)
        : m_list(list)
    {}

    void start(FileNode& root)
    {
        root.children = m_list(root.url, FollowLink::Yes);
        pushFolders(*root.children);
    }
    [[nodiscard]] bool isLarge() const { return m_waiting.size() >= foldersWorthThreads; }

    /// Lists folders until none is left and no other thread can find more.
    void work()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_mayHaveWork.wait(lock, [this] { return !m_waiting.empty() || m_busyThreads == 0; });
            if (m_waiting.empty())
                return;
            FileNode* folder = m_waiting.back();
            m_waiting.pop_back();
            ++m_busyThreads;
            lock.unlock();
            folder->children = m_list(folder->url, FollowLink::No);
            lock.lock();
            --m_busyThreads;
            pushFolders(*folder->children);
            m_mayHaveWork.notify_all();
        }
    }

private:
    void pushFolders(std::vector<FileNode>& nodes)
    {
        for (FileNode& node : nodes) {
            if (node.isDirectory)
                m_waiting.push_back(&node);
        }
    }

    const ListFolder& m_list;
    std::mutex m_mutex;
    std::condition_variable m_mayHaveWork;
    std::vector<FileNode*> m_waiting;
    int m_busyThreads = 0;
};

} // namespace

std::vector<FileNode> walkFolders(const FileURL& root, const ListFolder& list)
{
    FileNode top{root, true, {}};
    Walk walk(list);
    walk.start(top);
    if (!walk.isLarge()) {
        walk.work();
    } else {
        // The caller only waits: its open files are everyone's.
        std::vector<std::jthread> threads;
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 2U, maximumThreads);
        for (unsigned thread = 0; thread < count; ++thread) {
            threads.emplace_back([&walk] {
                useOwnFileTable();
                walk.work();
            });
        }
    }
    return std::move(*top.children);
}

} // namespace wendlore
