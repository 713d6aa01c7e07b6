#include "Vault/PathMemory.h"

#include <new>

namespace wendlore {

PathMemory::PathMemory(std::initializer_list<std::string_view> folder, std::size_t room)
{
    std::size_t size = 0;
    for (const std::string_view part : folder)
        size += part.size();
    m_head = new (::operator new(sizeof(Head) + size + room)) Head{1, std::uint32_t(size)};
    char* end = behind(m_head);
    for (const std::string_view part : folder)
        end += part.copy(end, part.size());
}

} // namespace wendlore
