#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

#include <string_view>

namespace wendlore {

class EntryURLs;

/// One search result. There can be a hundred thousand of them, so those of one folder share their memory.
class SearchHit final
{
public:
    /// What the folder of `urls` holds under `name`; `snippet` is UTF-8.
    SearchHit(EntryURLs& urls, std::string_view name, bool isDirectory, std::string_view snippet);

    /// Where the note lies.
    [[nodiscard]] const FileURL& url() const { return m_url; }
    /// The first line that holds the query, trimmed, at most 120 characters of UTF-8; empty when only the
    /// name does.
    [[nodiscard]] QByteArray snippet() const;

    friend bool operator==(const SearchHit& left, const SearchHit& right)
    {
        return left.url() == right.url() && left.snippet() == right.snippet();
    }

private:
    FileURL m_url;
    std::uint32_t m_snippetSize; ///< of what is kept behind the name
};

} // namespace wendlore
