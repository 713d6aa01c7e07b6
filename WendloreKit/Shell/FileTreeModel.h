#pragma once

#include "Vault/FileNode.h"

#include <QAbstractItemModel>

#include <memory>
#include <optional>

namespace wendlore {

class AppState;

/// The open bucket's tree for item views. Folders that were never opened cost nothing; a rebuild of the tree
/// reports only what is new and what is gone, so views keep what is open, chosen and scrolled to.
class FileTreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        UrlRole = Qt::UserRole, ///< FileURL
        IsFolderRole,           ///< bool
        SymbolRole,             ///< name of the row's symbol while it is neither chosen nor open
    };

    explicit FileTreeModel(AppState& state, QObject* parent = nullptr);
    ~FileTreeModel() override;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// The location that a row stands for; nothing for an invalid index.
    [[nodiscard]] std::optional<FileURL> urlAt(const QModelIndex& index) const;
    [[nodiscard]] bool isFolder(const QModelIndex& index) const;
    /// The row of `url`; invalid when the tree does not hold it.
    [[nodiscard]] QModelIndex indexOf(const FileURL& url) const;

private:
    struct Item;
    struct Difference;

    [[nodiscard]] Item& itemAt(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOf(const Item& item) const;
    [[nodiscard]] const std::vector<FileNode>& nodesOf(const Item& folder) const;
    void open(Item& folder) const;
    void synchronise();
    void synchronise(Item& folder, const std::vector<FileNode>& nodes);
    [[nodiscard]] static Difference differenceOf(const Item& folder, const std::vector<FileNode>& nodes);
    void removeVanished(Item& folder, const std::vector<FileNode>& nodes, Difference& difference);
    void insertNew(Item& folder, const std::vector<FileNode>& nodes, Difference difference);

    AppState& m_state;
    std::optional<FileURL> m_bucket;
    bool m_isRead; ///< until the tree is read there are no rows, and nobody is made to wait for it
    std::unique_ptr<Item> m_root;
};

} // namespace wendlore
