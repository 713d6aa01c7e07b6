#include "Vault/TreeUpdate.h"

#include "Vault/Collation.h"
#include "Vault/FileTree.h"
#include "Vault/Relocation.h"

#include <QHash>

#include <algorithm>

namespace wendlore {

namespace {

using Nodes = std::vector<FileNode>;

/// A folder of a tree.
struct Place final
{
    FileURL folder;
    Nodes* nodes = nullptr;
};

bool isAtOrBelow(const FileURL& location, const FileURL& folder)
{
    return location.hasPathOf(folder) || location.isBelow(folder);
}

/// `folder` in `tree`, or the deepest folder there that lies above it.
Place nearestPlace(Nodes& tree, const FileURL& bucket, const FileURL& folder)
{
    Place place{bucket, &tree};
    for (;;) {
        const auto next = std::ranges::find_if(*place.nodes, [&folder](const FileNode& node) {
            return node.children && isAtOrBelow(folder, node.url);
        });
        if (next == place.nodes->end())
            return place;
        place = {next->url, &*next->children};
    }
}

void relocate(FileNode& node, const FileURL& from, const FileURL& to)
{
    node.url = relocated(node.url, from, to);
    if (!node.children)
        return;
    for (FileNode& child : *node.children)
        relocate(child, from, to);
}

/// Takes the node at `location` out of `tree` when it is a folder.
std::optional<FileNode> takeFolder(Nodes& tree, const FileURL& bucket, const FileURL& location)
{
    const Place parent = nearestPlace(tree, bucket, location.deletingLastPathComponent());
    const auto node = std::ranges::find_if(*parent.nodes, [&location](const FileNode& candidate) {
        return candidate.children && candidate.url.hasPathOf(location);
    });
    if (node == parent.nodes->end())
        return std::nullopt;
    std::optional<FileNode> taken({node->url, node->isDirectory, std::move(*node->children)});
    parent.nodes->erase(node);
    return taken;
}

} // namespace

bool updateFolder(Nodes& tree, const FileURL& bucket, const FileURL& folder)
{
    if (!isAtOrBelow(folder, bucket))
        return false;
    const Place place = nearestPlace(tree, bucket, folder);
    const NameOrder order;
    Nodes listed =
        nodesOfFolder({place.folder, place.nodes == &tree ? FollowLink::Yes : FollowLink::No}, order);
    const auto isSame = [](const FileNode& left, const FileNode& right) {
        return left.url == right.url && left.isDirectory == right.isDirectory;
    };
    if (std::ranges::equal(listed, *place.nodes, isSame))
        return false;

    QHash<FileURL, Nodes*> known;
    for (FileNode& node : *place.nodes) {
        if (node.children)
            known.insert(node.url, &*node.children);
    }
    for (FileNode& node : listed) {
        if (!node.children)
            continue;
        Nodes* const contents = known.value(node.url);
        node.children = contents != nullptr ? std::move(*contents) : buildTree(node.url, order);
    }
    *place.nodes = std::move(listed);
    return true;
}

bool updateMoved(Nodes& tree, const FileURL& bucket, const FileURL& from, const FileURL& to)
{
    bool isChanged = false;
    if (auto folder = takeFolder(tree, bucket, from)) {
        isChanged = true;
        relocate(*folder, from, to);
        const FileURL parent = to.deletingLastPathComponent();
        const Place place = nearestPlace(tree, bucket, parent);
        if (place.folder.hasPathOf(parent))
            place.nodes->push_back(std::move(*folder)); // the update finds its place among the others
    }
    isChanged |= updateFolder(tree, bucket, from.deletingLastPathComponent());
    isChanged |= updateFolder(tree, bucket, to.deletingLastPathComponent());
    return isChanged;
}

} // namespace wendlore
