#include "State/AppState.h"

#include "Editor/Scheduler.h"
#include "Vault/Blanks.h"
#include "Vault/Collation.h"
#include "Vault/NoteNames.h"
#include "Vault/NoteSearch.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

void AppState::setSearchQuery(const QString& query)
{
    store(m_searchQuery, query, &AppState::searchQueryChanged);
}

QString AppState::wantedText() const
{
    return m_vaultURL ? withoutOuterBlanks(m_searchQuery) : QString();
}

void AppState::performSearch()
{
    const Operation operation(*this);
    store(m_search, nullptr, &AppState::isSearchingChanged);
    const QString text = wantedText();
    store(m_searchResults,
          text.isEmpty() ? std::vector<SearchHit>()
                         : searchNotes(*m_vaultURL, text, NameOrder(), userFoldingRule()),
          &AppState::searchResultsChanged);
}

void AppState::performSearchInBackground()
{
    const QString text = wantedText();
    if (text.isEmpty()) {
        performSearch();
        return;
    }
    if (isSearching())
        return; // when that one ends, it sees that something else is wanted now
    const auto find = [this, text, bucket = *m_vaultURL]() -> std::function<void()> {
        return [this, text, bucket, hits = searchNotes(bucket, text, NameOrder(), userFoldingRule())] {
            const Operation operation(*this);
            store(m_search, nullptr, &AppState::isSearchingChanged);
            if (text == wantedText() && bucket == m_vaultURL)
                store(m_searchResults, hits, &AppState::searchResultsChanged);
            else
                performSearchInBackground();
        };
    };
    store(m_search, m_services.scheduler.inBackground(find), &AppState::isSearchingChanged);
}

void AppState::openSearchHit(const FileURL& note)
{
    m_openedHit = {note, wantedText()};
    setSelectedFile(note);
    Q_EMIT searchHitOpened();
}

QString AppState::takeSoughtText(const FileURL& note)
{
    const auto hit = std::exchange(m_openedHit, std::nullopt);
    return hit && hit->first == note ? hit->second : QString();
}

QStringList AppState::noteNames() const
{
    return m_vaultURL ? namesOfNotes(*m_vaultURL) : QStringList();
}

} // namespace wendlore
