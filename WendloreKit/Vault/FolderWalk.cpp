#include "Vault/FolderWalk.h"

#include "Vault/FileSystemCalls.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <fcntl.h>
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
    Walk(const FileURL& root, const ListFolder& list)
        : m_root(root)
        , m_list(list)
    {}

    [[nodiscard]] std::vector<FileNode> run()
    {
        std::vector<FileNode> nodes = m_list({m_root, FollowLink::Yes});
        pushFolders(nodes);
        work();
        m_helpers.clear(); // waits for them
        return nodes;
    }

private:
    /// Lists folders until none is left and no other thread can find more.
    void work()
    {
        FileSystemCalls& calls = FileSystemCalls::real();
        const Descriptor root(calls,
                              calls.openAt(AT_FDCWD, m_root.bytes().constData(), O_PATH | O_DIRECTORY));
        // The root directory's path ends with its separator already.
        const std::size_t rootSize =
            m_root.folder().size() + (m_root.name().empty() ? 0 : m_root.name().size() + 1);
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_mayHaveWork.wait(lock, [this] { return !m_waiting.empty() || m_busyThreads == 0; });
            if (m_waiting.empty())
                return;
            callHelpers();
            FileNode* folder = m_waiting.back();
            m_waiting.pop_back();
            ++m_busyThreads;
            lock.unlock();
            folder->children = m_list({folder->url, FollowLink::No, root.get(), rootSize});
            lock.lock();
            --m_busyThreads;
            pushFolders(*folder->children);
            m_mayHaveWork.notify_all();
        }
    }

    /// Shares what has become too much for one thread.
    void callHelpers()
    {
        if (!m_helpers.empty() || m_waiting.size() < foldersWorthThreads)
            return;
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 2U, maximumThreads);
        for (unsigned helper = 1; helper < count; ++helper) {
            m_helpers.emplace_back([this] {
                useOwnFileTable();
                work();
            });
        }
    }

    void pushFolders(std::vector<FileNode>& nodes)
    {
        for (FileNode& node : nodes) {
            if (node.isDirectory)
                m_waiting.push_back(&node);
        }
    }

    const FileURL m_root;
    const ListFolder& m_list;
    std::mutex m_mutex;
    std::condition_variable m_mayHaveWork;
    std::vector<FileNode*> m_waiting;
    int m_busyThreads = 0;
    std::vector<std::jthread> m_helpers;
};

} // namespace

std::vector<FileNode> walkFolders(const FileURL& root, const ListFolder& list)
{
    return Walk(root, list).run();
}

} // namespace wendlore
