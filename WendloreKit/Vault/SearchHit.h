#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>

#include <string_view>

namespace wendlore {

/// One search result. There can be a hundred thousand of them, so those of one folder share its path.
class SearchHit final
{
public:
    /// What `folder` holds under `name`; `snippet` is UTF-8.
    SearchHit(const FileURL& folder, std::string_view name, bool isDirectory, std::string_view snippet);

    /// Where the note lies.
    [[nodiscard]] FileURL url() const { return m_folder.entry(name(), m_isDirectory); }
    /// The bytes of its name, as long as the hit lives.
    [[nodiscard]] std::string_view name() const { return {m_text.constData(), m_nameSize}; }
    /// The first line that holds the query, trimmed, at most 120 characters of UTF-8; empty when only the
    /// name does.
    [[nodiscard]] QByteArray snippet() const { return m_text.mid(qsizetype(m_nameSize)); }

    friend bool operator==(const SearchHit& left, const SearchHit& right)
    {
        return left.url() == right.url() && left.snippet() == right.snippet();
    }

private:
    FileURL m_folder;
    QByteArray m_text; ///< the name, and the snippet behind it
    std::uint32_t m_nameSize;
    bool m_isDirectory;
};

} // namespace wendlore
