#include "Vault/FileTree.h"

#include "Vault/Collation.h"
#include "Vault/FileName.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/FolderListing.h"
#include "Vault/FolderWalk.h"

#include <algorithm>

namespace wendlore {

namespace {

/// The name that a user sees in the tree.
QByteArrayView displayName(const FolderEntry& entry)
{
    return entry.isDirectory ? QByteArrayView(entry.name) : withoutExtension(entry.name);
}

void sortForDisplay(std::vector<FolderEntry>& entries, const NameOrder& order)
{
    std::ranges::stable_sort(entries, [&](const FolderEntry& left, const FolderEntry& right) {
        if (left.isDirectory != right.isDirectory)
            return left.isDirectory;
        return order.compare(displayName(left), displayName(right)) < 0;
    });
}

std::vector<FileNode> nodesOf(const std::vector<FolderEntry>& entries, const FileURL& folder)
{
    std::vector<FileNode> nodes;
    nodes.reserve(entries.size());
    for (const FolderEntry& entry : entries) {
        FileNode& node = nodes.emplace_back(
            FileNode{folder.appendingBytes(entry.name, entry.isDirectory), entry.isDirectory, {}});
        if (entry.isDirectory)
            node.children.emplace();
    }
    return nodes;
}

void appendNotes(const std::vector<FileNode>& nodes, std::vector<FileURL>& notes)
{
    for (const FileNode& node : nodes) {
        if (isNoteName(node.url.bytes()))
            notes.push_back(node.url);
        if (node.children)
            appendNotes(*node.children, notes);
    }
}

std::optional<FileURL> findPath(const QByteArray& path, const std::vector<FileNode>& nodes)
{
    for (const FileNode& node : nodes) {
        if (node.url.bytes() == path)
            return node.url;
        if (!node.children)
            continue;
        if (auto found = findPath(path, *node.children))
            return found;
    }
    return std::nullopt;
}

} // namespace

std::vector<FileNode> buildTree(const FileURL& folder, const NameOrder& order)
{
    return walkFolders(folder, [&order](const FileURL& location, FollowLink followLink) {
        std::vector<FolderEntry> entries = visibleEntries(location, followLink);
        for (FolderEntry& entry : entries)
            entry.isDirectory = entry.isDirectory && !isPackageName(entry.name);
        sortForDisplay(entries, order);
        return nodesOf(entries, location);
    });
}

std::vector<FileNode> buildTree(const FileURL& folder)
{
    return buildTree(folder, NameOrder());
}

std::optional<FileURL> urlInTree(const QString& path, const std::vector<FileNode>& nodes)
{
    return findPath(path.toUtf8(), nodes);
}

std::vector<FileURL> allMarkdownFiles(const FileURL& root)
{
    const std::vector<FileNode> tree = walkFolders(root, [](const FileURL& location, FollowLink followLink) {
        return nodesOf(visibleEntries(location, followLink), location);
    });
    std::vector<FileURL> notes;
    appendNotes(tree, notes);
    return notes;
}

} // namespace wendlore
