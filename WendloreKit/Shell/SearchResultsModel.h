#pragma once

#include <QAbstractListModel>

namespace wendlore {

class AppState;
class FileURL;

/// The notes that the search found.
class SearchResultsModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        SnippetRole = Qt::UserRole, ///< the line that holds the query; empty when only the name does
        IsSelectedFileRole,         ///< bool: the note is the one that the window shows
    };

    explicit SearchResultsModel(AppState& state, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// The note of a valid row.
    [[nodiscard]] FileURL noteAt(const QModelIndex& index) const;

private:
    AppState& m_state;
    int m_count;
};

} // namespace wendlore
