#include "Vault/SearchHit.h"

namespace wendlore {

SearchHit::SearchHit(const FileURL& folder, std::string_view name, bool isDirectory, std::string_view snippet)
    : m_folder(folder)
    , m_text(qsizetype(name.size() + snippet.size()), Qt::Uninitialized)
    , m_nameSize(std::uint32_t(name.size()))
    , m_isDirectory(isDirectory)
{
    snippet.copy(m_text.data() + name.copy(m_text.data(), name.size()), snippet.size());
}

} // namespace wendlore
