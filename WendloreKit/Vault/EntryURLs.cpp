#include "Vault/EntryURLs.h"

#include <algorithm>

namespace wendlore {

namespace {

/// Far below what a place in it can say.
constexpr std::size_t largestPiece = std::size_t(1) << 30;

PathMemory memoryOf(const FileURL& folder, std::size_t room)
{
    // The root directory's path ends with its separator already.
    return PathMemory({folder.folder(), folder.name(), folder.name().empty() ? "" : "/"}, room);
}

} // namespace

EntryURLs::EntryURLs(const FileURL& folder, std::size_t size)
    : m_room(std::min(size, largestPiece))
    , m_memory(memoryOf(folder, m_room))
{}

FileURL EntryURLs::add(std::string_view name, bool isDirectory, std::string_view kept)
{
    const std::size_t size = name.size() + kept.size();
    if (m_room - m_used < size) {
        m_room = std::max(largestPiece, size);
        m_memory = PathMemory({m_memory.folder()}, m_room);
        m_used = 0;
    }
    char* const place = m_memory.room() + m_used;
    kept.copy(place + name.copy(place, name.size()), kept.size());
    FileURL url(m_memory, std::uint32_t(m_used), std::uint32_t(name.size()), isDirectory);
    m_used += size;
    return url;
}

} // namespace wendlore
