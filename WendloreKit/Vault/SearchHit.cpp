#include "Vault/SearchHit.h"

#include "Vault/EntryURLs.h"

namespace wendlore {

SearchHit::SearchHit(EntryURLs& urls, std::string_view name, bool isDirectory, std::string_view snippet)
    : m_url(urls.add(name, isDirectory, snippet))
    , m_snippetSize(std::uint32_t(snippet.size()))
{}

QByteArray SearchHit::snippet() const
{
    const std::string_view text = m_url.kept(m_snippetSize);
    return QByteArray(text.data(), qsizetype(text.size()));
}

} // namespace wendlore
