#include "Vault/FileTree.h"

#include "Vault/Collation.h"
#include "Vault/FileName.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/FolderListing.h"
#include "Vault/FolderWalk.h"

#include <algorithm>
#include <span>

namespace wendlore {

namespace {

using Entry = FolderListing::Entry;

/// The name that a user sees in the tree.
std::string_view displayName(const Entry& entry)
{
    const QByteArrayView name(entry.name.data(), qsizetype(entry.name.size()));
    return entry.isDirectory ? entry.name : entry.name.substr(0, std::size_t(withoutExtension(name).size()));
}

FileNode nodeOf(const Entry& entry, const FileURL& folder)
{
    FileNode node{folder.entry(entry.name, entry.isDirectory), entry.isDirectory, {}};
    if (entry.isDirectory)
        node.children.emplace();
    return node;
}

/// Appends the nodes of `entries` in their order by display name, equal ones by the bytes of their names.
void appendSorted(std::vector<FileNode>& nodes, std::span<const Entry> entries, const FileURL& folder,
                  const NameOrder& order)
{
    std::vector<std::string_view> names;
    names.reserve(entries.size());
    for (const Entry& entry : entries)
        names.push_back(displayName(entry));
    const auto isBefore = [entries](std::uint32_t left, std::uint32_t right) {
        return entries[left].name < entries[right].name;
    };
    for (const std::uint32_t place : order.sorted(names, isBefore))
        nodes.push_back(nodeOf(entries[place], folder));
}

/// Moves the notes out of `nodes` and of what lies below them.
void takeNotes(std::vector<FileNode>& nodes, std::vector<FileURL>& notes)
{
    for (FileNode& node : nodes) {
        if (!node.isDirectory || isNoteName(node.url.bytes()))
            notes.push_back(std::move(node.url));
        if (node.children)
            takeNotes(*node.children, notes);
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

std::vector<FileNode> nodesOfFolder(const FolderPlace& folder, const NameOrder& order)
{
    const FolderListing listing(folder);
    std::vector<Entry> entries = listing.entries();
    for (Entry& entry : entries)
        entry.isDirectory = entry.isDirectory && !isPackageName(QByteArrayView(entry.name));
    const auto files = std::ranges::partition(entries, &Entry::isDirectory);
    std::vector<FileNode> nodes;
    nodes.reserve(entries.size());
    appendSorted(nodes, {entries.begin(), files.begin()}, folder.url, order);
    appendSorted(nodes, files, folder.url, order);
    return nodes;
}

std::vector<FileNode> buildTree(const FileURL& folder, const NameOrder& order)
{
    return walkFolders(folder, [&order](const FolderPlace& place) { return nodesOfFolder(place, order); });
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
    std::vector<FileNode> tree = walkFolders(root, [](const FolderPlace& folder) {
        const FolderListing listing(folder);
        std::vector<Entry> entries;
        entries.reserve(listing.entries().size());
        std::ranges::copy_if(listing.entries(), std::back_inserter(entries), [](const Entry& entry) {
            return entry.isDirectory || isNoteName(QByteArrayView(entry.name));
        });
        std::ranges::sort(entries, {}, &Entry::name);
        std::vector<FileNode> nodes;
        nodes.reserve(entries.size());
        for (const Entry& entry : entries)
            nodes.push_back(nodeOf(entry, folder.url));
        return nodes;
    });
    std::vector<FileURL> notes;
    takeNotes(tree, notes);
    return notes;
}

} // namespace wendlore
