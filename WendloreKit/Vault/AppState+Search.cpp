#include "State/AppState.h"

#include "Vault/Blanks.h"
#include "Vault/Collation.h"
#include "Vault/NoteNames.h"
#include "Vault/NoteSearch.h"

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
    return m_vaultURL ? namesOfNotes(*m_vaultURL) : QStringList();
}

} // namespace wendlore
