#include "State/AppState.h"

#include "Vault/Blanks.h"
#include "Vault/Collation.h"
#include "Vault/FileTree.h"
#include "Vault/NoteSearch.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

void AppState::setSearchQuery(const QString& query)
{
    store(m_searchQuery, query, &AppState::searchQueryChanged);
}

void AppState::performSearch()
{
    const QString query = withoutOuterBlanks(m_searchQuery);
    const bool isEmpty = query.isEmpty() || !m_vaultURL;
    store(m_searchResults,
          isEmpty ? std::vector<SearchHit>()
                  : searchNotes(*m_vaultURL, query, NameOrder(), userFoldingRule()),
          &AppState::searchResultsChanged);
}

QStringList AppState::noteNames() const
{
    QSet<QString> names;
    for (const FileURL& note : m_vaultURL ? allMarkdownFiles(*m_vaultURL) : std::vector<FileURL>()) {
        if (note.pathExtension().toLower() == u"md"_s)
            names.insert(note.nameWithoutExtension());
    }
    QStringList sorted(names.begin(), names.end());
    // Names that the order holds for equal ("Plan" and "PLAN") stand in a fixed order all the same.
    std::ranges::sort(sorted);
    const NameOrder order;
    std::ranges::stable_sort(sorted, [&order](const QString& left, const QString& right) {
        return order.compare(left.toUtf8(), right.toUtf8()) < 0;
    });
    return sorted;
}

} // namespace wendlore
