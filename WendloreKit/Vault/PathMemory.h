#pragma once

#include <atomic>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace wendlore {

/// A folder's path and the names of what it holds, in one piece of memory that the locations of all of them
/// share. It is filled by its first owner and does not change after that. Copies may be used by several
/// threads.
class PathMemory final
{
public:
    PathMemory() = default;
    /// The parts of the folder's path are copied; behind them lie `room` bytes to be filled.
    PathMemory(std::initializer_list<std::string_view> folder, std::size_t room);
    ~PathMemory()
    {
        if (m_head != nullptr && m_head->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
            ::operator delete(m_head);
    }
    PathMemory(const PathMemory& other)
        : m_head(other.m_head)
    {
        if (m_head != nullptr)
            m_head->owners.fetch_add(1, std::memory_order_relaxed);
    }
    PathMemory(PathMemory&& other) noexcept
        : m_head(std::exchange(other.m_head, nullptr))
    {}
    PathMemory& operator=(PathMemory other) noexcept
    {
        std::swap(m_head, other.m_head);
        return *this;
    }

    [[nodiscard]] std::string_view folder() const
    {
        return m_head == nullptr ? std::string_view() : std::string_view(behind(m_head), m_head->folderSize);
    }
    /// The `size` bytes from `start` on in what lies behind the folder's path.
    [[nodiscard]] std::string_view bytes(std::size_t start, std::size_t size) const
    {
        return m_head == nullptr ? std::string_view() : std::string_view(room() + start, size);
    }
    /// What lies behind the folder's path, to be filled.
    [[nodiscard]] char* room() const { return behind(m_head) + m_head->folderSize; }
    /// True when both are the same piece.
    [[nodiscard]] bool isSame(const PathMemory& other) const { return m_head == other.m_head; }

private:
    struct Head final
    {
        std::atomic<std::uint32_t> owners;
        std::uint32_t folderSize;
    };

    [[nodiscard]] static char* behind(Head* head) { return reinterpret_cast<char*>(head + 1); }

    Head* m_head = nullptr;
};

} // namespace wendlore
