#include "State/AppState.h"

#include "Editor/Scheduler.h"
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
