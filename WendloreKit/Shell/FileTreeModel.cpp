#include "Shell/FileTreeModel.h"

#include "Look/FileSymbol.h"
#include "Look/ToolTip.h"

#include "State/AppState.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

/// The rows of a folder that may differ from its nodes: those between its first and its last ones.
struct FileTreeModel::Difference final
{
    std::size_t first = 0;
    std::size_t rowsEnd = 0;
    std::size_t nodesEnd = 0;

    [[nodiscard]] bool isEmpty() const { return first == rowsEnd && first == nodesEnd; }
};

/// One row. A folder's rows are made when they are first asked for.
struct FileTreeModel::Item final
{
    Item() = default;
    Item(const FileNode& node, Item& folder)
        : url(node.url)
        , isFolder(node.isDirectory)
        , parent(&folder)
    {}

    FileURL url;
    bool isFolder = true;
    Item* parent = nullptr;
    int row = 0;
    bool isOpened = false;
    std::vector<std::unique_ptr<Item>> children;

    void renumberFrom(std::size_t first)
    {
        for (std::size_t i = first; i < children.size(); ++i)
            children[i]->row = static_cast<int>(i);
    }
};

namespace {

const std::vector<FileNode> noNodes;

const std::vector<FileNode>& childrenOf(const FileNode& node)
{
    return node.children ? *node.children : noNodes;
}

} // namespace

FileTreeModel::FileTreeModel(AppState& state, QObject* parent)
    : QAbstractItemModel(parent)
    , m_state(state)
    , m_bucket(state.vaultURL())
    , m_isRead(state.isFileTreeRead())
    , m_root(std::make_unique<Item>())
{
    connect(&state, &AppState::fileTreeChanged, this, [this] { synchronise(); });
    connect(&state, &AppState::vaultURLChanged, this, [this] { synchronise(); });
}

FileTreeModel::~FileTreeModel() = default;

QModelIndex FileTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent)
               ? createIndex(row, column, itemAt(parent).children[static_cast<std::size_t>(row)].get())
               : QModelIndex();
}

QModelIndex FileTreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(*itemAt(child).parent) : QModelIndex();
}

int FileTreeModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    Item& item = itemAt(parent);
    open(item);
    return static_cast<int>(item.children.size());
}

int FileTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool FileTreeModel::hasChildren(const QModelIndex& parent) const
{
    // An empty folder can be opened as well, and opening decides; asking for rows here would open them all.
    return parent.column() <= 0 && itemAt(parent).isFolder;
}

QVariant FileTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Item& item = itemAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return item.isFolder ? item.url.lastPathComponent() : item.url.nameWithoutExtension();
    case Qt::ToolTipRole:
        return plainToolTip(item.url.lastPathComponent());
    case Qt::AccessibleTextRole:
        return item.isFolder ? u"%1, mapp"_s.arg(item.url.lastPathComponent()) : item.url.lastPathComponent();
    case UrlRole:
        return QVariant::fromValue(item.url);
    case IsFolderRole:
        return item.isFolder;
    case SymbolRole:
        return item.isFolder ? folderSymbol : symbolOf(item.url);
    default:
        return {};
    }
}

Qt::ItemFlags FileTreeModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}

std::optional<FileURL> FileTreeModel::urlAt(const QModelIndex& index) const
{
    return index.isValid() ? std::optional(itemAt(index).url) : std::nullopt;
}

bool FileTreeModel::isFolder(const QModelIndex& index) const
{
    return index.isValid() && itemAt(index).isFolder;
}

QModelIndex FileTreeModel::indexOf(const FileURL& url) const
{
    Item* folder = m_root.get();
    for (;;) {
        open(*folder);
        const auto next = std::ranges::find_if(folder->children, [&url](const auto& child) {
            return child->url.hasPathOf(url) || (child->isFolder && url.isBelow(child->url));
        });
        if (next == folder->children.end())
            return {};
        if ((*next)->url.hasPathOf(url))
            return indexOf(**next);
        folder = next->get();
    }
}

FileTreeModel::Item& FileTreeModel::itemAt(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<Item*>(index.internalPointer()) : *m_root;
}

QModelIndex FileTreeModel::indexOf(const Item& item) const
{
    return &item == m_root.get() ? QModelIndex() : createIndex(item.row, 0, &item);
}

/// The nodes of `folder` in the tree as it is now; none when it has gone from there.
const std::vector<FileNode>& FileTreeModel::nodesOf(const Item& folder) const
{
    if (!folder.parent)
        return m_state.fileTree();
    const std::vector<FileNode>& siblings = nodesOf(*folder.parent);
    const auto node = std::ranges::find(siblings, folder.url, &FileNode::url);
    return node == siblings.end() ? noNodes : childrenOf(*node);
}

void FileTreeModel::open(Item& folder) const
{
    if (folder.isOpened || !folder.isFolder || !m_isRead)
        return;
    folder.isOpened = true;
    for (const FileNode& node : nodesOf(folder))
        folder.children.push_back(std::make_unique<Item>(node, folder));
    folder.renumberFrom(0);
}

void FileTreeModel::synchronise()
{
    if (m_isRead && m_bucket == m_state.vaultURL()) {
        synchronise(*m_root, m_state.fileTree());
        return;
    }
    beginResetModel();
    m_bucket = m_state.vaultURL();
    m_isRead = m_state.isFileTreeRead();
    m_root = std::make_unique<Item>();
    endResetModel();
}

void FileTreeModel::synchronise(Item& folder, const std::vector<FileNode>& nodes)
{
    if (!folder.isOpened)
        return;
    if (Difference difference = differenceOf(folder, nodes); !difference.isEmpty()) {
        removeVanished(folder, nodes, difference);
        insertNew(folder, nodes, difference);
    }
    for (std::size_t i = 0; i < nodes.size(); ++i)
        synchronise(*folder.children[i], childrenOf(nodes[i]));
}

FileTreeModel::Difference FileTreeModel::differenceOf(const Item& folder, const std::vector<FileNode>& nodes)
{
    const auto isSame = [](const std::unique_ptr<Item>& child, const FileNode& node) {
        return child->url == node.url && child->isFolder == node.isDirectory;
    };
    Difference difference{0, folder.children.size(), nodes.size()};
    const std::size_t common = std::min(difference.rowsEnd, difference.nodesEnd);
    while (difference.first < common && isSame(folder.children[difference.first], nodes[difference.first]))
        ++difference.first;
    while (std::min(difference.rowsEnd, difference.nodesEnd) > difference.first &&
           isSame(folder.children[difference.rowsEnd - 1], nodes[difference.nodesEnd - 1])) {
        --difference.rowsEnd;
        --difference.nodesEnd;
    }
    return difference;
}

/// Removes the rows that `nodes` does not have, and those that come in another order there.
void FileTreeModel::removeVanished(Item& folder, const std::vector<FileNode>& nodes, Difference& difference)
{
    QHash<FileURL, std::size_t> places;
    for (std::size_t place = difference.first; place < difference.nodesEnd; ++place)
        places.insert(nodes[place].url, place);
    std::vector<bool> stays(difference.rowsEnd);
    std::size_t next = difference.first;
    for (std::size_t row = difference.first; row < difference.rowsEnd; ++row) {
        const Item& child = *folder.children[row];
        const auto place = places.constFind(child.url);
        stays[row] =
            place != places.constEnd() && *place >= next && nodes[*place].isDirectory == child.isFolder;
        if (stays[row])
            next = *place + 1;
    }

    for (std::size_t end = difference.rowsEnd; end > difference.first;) {
        if (stays[end - 1]) {
            --end;
            continue;
        }
        std::size_t first = end;
        while (first > difference.first && !stays[first - 1])
            --first;
        beginRemoveRows(indexOf(folder), static_cast<int>(first), static_cast<int>(end) - 1);
        folder.children.erase(folder.children.begin() + static_cast<std::ptrdiff_t>(first),
                              folder.children.begin() + static_cast<std::ptrdiff_t>(end));
        folder.renumberFrom(first);
        endRemoveRows();
        difference.rowsEnd -= end - first;
        end = first;
    }
}

/// Inserts the rows that are missing. What `folder` holds is a part of `nodes`, in their order.
void FileTreeModel::insertNew(Item& folder, const std::vector<FileNode>& nodes, Difference difference)
{
    for (std::size_t first = difference.first; first < difference.nodesEnd;) {
        const FileURL* next = first < difference.rowsEnd ? &folder.children[first]->url : nullptr;
        if (next && nodes[first].url == *next) {
            ++first;
            continue;
        }
        std::size_t end = first;
        std::vector<std::unique_ptr<Item>> added;
        for (; end < difference.nodesEnd && !(next && nodes[end].url == *next); ++end)
            added.push_back(std::make_unique<Item>(nodes[end], folder));
        beginInsertRows(indexOf(folder), static_cast<int>(first), static_cast<int>(end) - 1);
        folder.children.insert(folder.children.begin() + static_cast<std::ptrdiff_t>(first),
                               std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
        folder.renumberFrom(first);
        endInsertRows();
        difference.rowsEnd += end - first;
        first = end;
    }
}

} // namespace wendlore
