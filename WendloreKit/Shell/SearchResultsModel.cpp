#include "Shell/SearchResultsModel.h"

#include "Look/ToolTip.h"
#include "State/AppState.h"

using namespace Qt::StringLiterals;

namespace wendlore {

SearchResultsModel::SearchResultsModel(AppState& state, QObject* parent)
    : QAbstractListModel(parent)
    , m_state(state)
    , m_count(static_cast<int>(state.searchResults().size()))
{
    connect(&state, &AppState::searchResultsChanged, this, [this] {
        beginResetModel();
        m_count = static_cast<int>(m_state.searchResults().size());
        endResetModel();
    });
}

int SearchResultsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant SearchResultsModel::data(const QModelIndex& index, int role) const
{
    // The state may hold other results already, of which the views hear in a moment.
    if (!index.isValid() || static_cast<std::size_t>(index.row()) >= m_state.searchResults().size())
        return {};
    const SearchHit& hit = m_state.searchResults()[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return hit.url().nameWithoutExtension();
    case Qt::ToolTipRole:
        return plainToolTip(hit.url().path());
    case Qt::AccessibleTextRole:
        return hit.snippet().isEmpty()
                   ? hit.url().nameWithoutExtension()
                   : u"%1: %2"_s.arg(hit.url().nameWithoutExtension(), QString::fromUtf8(hit.snippet()));
    case SnippetRole:
        return QString::fromUtf8(hit.snippet());
    case IsSelectedFileRole:
        return m_state.selectedFile() && hit.url().hasPathOf(*m_state.selectedFile());
    default:
        return {};
    }
}

FileURL SearchResultsModel::noteAt(const QModelIndex& index) const
{
    return m_state.searchResults().at(static_cast<std::size_t>(index.row())).url();
}

} // namespace wendlore
