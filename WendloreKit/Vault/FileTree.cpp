#include "Vault/FileTree.h"

#include "Vault/Collation.h"
#include "Vault/EntryURLs.h"
#include "Vault/FileName.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/FolderListing.h"
#include "Vault/FolderWalk.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <numeric>
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

std::size_t sizeOfNames(std::span<const Entry> entries)
{
    return std::transform_reduce(entries.begin(), entries.end(), std::size_t(0), std::plus(),
                                 [](const Entry& entry) { return entry.name.size(); });
}

FileNode nodeOf(const Entry& entry, EntryURLs& urls)
{
    FileNode node{urls.add(entry.name, entry.isDirectory), entry.isDirectory, {}};
    if (entry.isDirectory)
        node.children.emplace();
    return node;
}

/// Appends the nodes of `entries` in their order by display name, equal ones by the bytes of their names.
void appendSorted(std::vector<FileNode>& nodes, std::span<const Entry> entries, EntryURLs& urls,
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
        nodes.push_back(nodeOf(entries[place], urls));
}

/// Moves the notes out of `nodes` and of what lies below them.
void takeNotes(std::vector<FileNode>& nodes, std::vector<FileURL>& notes)
{
    for (FileNode& node : nodes) {
        if (!node.isDirectory || isNoteName(QByteArrayView(node.url.name())))
            notes.push_back(std::move(node.url));
        if (node.children)
            takeNotes(*node.children, notes);
    }
}

std::optional<FileURL> findPath(const FileURL& path, const std::vector<FileNode>& nodes)
{
    for (const FileNode& node : nodes) {
        if (node.url.hasPathOf(path))
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
    EntryURLs urls(folder.url, sizeOfNames(entries));
    std::vector<FileNode> nodes;
    nodes.reserve(entries.size());
    appendSorted(nodes, {entries.begin(), files.begin()}, urls, order);
    appendSorted(nodes, files, urls, order);
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
    const FileURL wanted = FileURL::file(path);
    return wanted.bytes() == path.toUtf8() ? findPath(wanted, nodes) : std::nullopt;
}

std::vector<FileURL> allMarkdownFiles(const FileURL& root)
{
    std::atomic<std::size_t> count = 0;
    std::vector<FileNode> tree = walkFolders(root, [&count](const FolderPlace& folder) {
        const FolderListing listing(folder);
        std::vector<Entry> entries;
        entries.reserve(listing.entries().size());
        std::ranges::copy_if(listing.entries(), std::back_inserter(entries), [](const Entry& entry) {
            return entry.isDirectory || isNoteName(QByteArrayView(entry.name));
        });
        std::ranges::sort(entries, {}, &Entry::name);
        EntryURLs urls(folder.url, sizeOfNames(entries));
        std::vector<FileNode> nodes;
        nodes.reserve(entries.size());
        for (const Entry& entry : entries)
            nodes.push_back(nodeOf(entry, urls));
        count.fetch_add(nodes.size(), std::memory_order_relaxed);
        return nodes;
    });
    std::vector<FileURL> notes;
    notes.reserve(count);
    takeNotes(tree, notes);
    return notes;
}

} // namespace wendlore
