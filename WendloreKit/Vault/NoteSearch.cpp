#include "Vault/NoteSearch.h"

#include "Vault/Collation.h"
#include "Vault/EntryURLs.h"
#include "Vault/FileName.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/FolderListing.h"
#include "Vault/FolderWalk.h"
#include "Vault/NoteReader.h"
#include "Vault/SearchNeedle.h"
#include "Vault/TextLines.h"
#include "Vault/Utf8Text.h"

#include <algorithm>
#include <mutex>
#include <string>

namespace wendlore {

namespace {

using Entry = FolderListing::Entry;

/// What was found in one folder, until all of it is known.
class Matches final
{
public:
    void add(const Entry& note, std::string_view snippet)
    {
        m_notes.push_back({&note, snippet.size()});
        m_size += note.name.size();
        m_snippets += snippet;
    }

    [[nodiscard]] std::vector<SearchHit> hits(const FileURL& folder) const
    {
        std::vector<SearchHit> hits;
        if (m_notes.empty())
            return hits;
        hits.reserve(m_notes.size());
        EntryURLs urls(folder, m_size + m_snippets.size());
        std::string_view snippets = m_snippets;
        for (const auto& [note, snippetSize] : m_notes) {
            hits.emplace_back(urls, note->name, note->isDirectory, snippets.substr(0, snippetSize));
            snippets.remove_prefix(snippetSize);
        }
        return hits;
    }

private:
    struct Match final
    {
        const Entry* note;
        std::size_t snippetSize;
    };

    std::vector<Match> m_notes;
    std::size_t m_size = 0;
    std::string m_snippets;
};

/// Searches the notes of folders; several threads at once.
class FolderSearch final
{
public:
    explicit FolderSearch(const SearchNeedle& needle)
        : m_needle(needle)
    {}

    /// The notes in `folder` that match, in any order. `listing` is its listing.
    [[nodiscard]] std::vector<SearchHit> hits(const FileURL& folder, const FolderListing& listing) const
    {
        thread_local NoteReader reader;
        const std::vector<Entry> notes = notesOf(listing);
        std::vector<bool> isFound(notes.size());
        Matches matches;
        reader.read(listing.descriptor(), notes, [&](std::size_t note, std::string_view text) {
            const auto line = m_needle.firstLine(text);
            // Text is checked only where it matters; a file that is not UTF-8 counts as empty.
            if (!line || !isUtf8(text))
                return;
            matches.add(notes[note], snippetOf(text.substr(line->start, line->end - line->start)));
            isFound[note] = true;
        });
        reader.shrink();
        for (std::size_t note = 0; note < notes.size(); ++note) {
            if (!isFound[note] && nameMatches(notes[note].name))
                matches.add(notes[note], {});
        }
        return matches.hits(folder);
    }

private:
    [[nodiscard]] static std::vector<Entry> notesOf(const FolderListing& listing)
    {
        std::vector<Entry> notes;
        notes.reserve(listing.entries().size());
        std::ranges::copy_if(listing.entries(), std::back_inserter(notes),
                             [](const Entry& entry) { return isNoteName(QByteArrayView(entry.name)); });
        return notes;
    }

    [[nodiscard]] bool nameMatches(std::string_view name) const
    {
        static_assert(FolderListing::padding >= ByteScanner::padding);
        const auto length = std::size_t(withoutExtension(QByteArrayView(name)).size());
        return m_needle.firstLine(name.substr(0, length)).has_value();
    }

    const SearchNeedle& m_needle;
};

std::vector<FileNode> subfoldersOf(const FileURL& folder, const FolderListing& listing)
{
    std::size_t size = 0;
    for (const Entry& entry : listing.entries())
        size += entry.isDirectory ? entry.name.size() : 0;
    std::vector<FileNode> subfolders;
    if (size == 0)
        return subfolders;
    EntryURLs urls(folder, size);
    for (const Entry& entry : listing.entries()) {
        if (entry.isDirectory)
            subfolders.push_back({urls.add(entry.name, true), true, std::vector<FileNode>()});
    }
    return subfolders;
}

/// The order in which a walk lists notes: a folder before its contents, names in one folder by their bytes.
bool isListedBefore(const FileURL& left, const FileURL& right)
{
    return std::ranges::lexicographical_compare(
        left.bytes(), right.bytes(), {},
        [](char byte) { return byte == '/' ? 0 : static_cast<unsigned char>(byte) + 1; },
        [](char byte) { return byte == '/' ? 0 : static_cast<unsigned char>(byte) + 1; });
}

/// Puts the element of place `places[i]` at place i, without a second list.
void reorder(std::vector<SearchHit>& hits, std::vector<std::uint32_t> places)
{
    for (std::uint32_t start = 0; start < hits.size(); ++start) {
        if (places[start] == start)
            continue;
        SearchHit first = std::move(hits[start]);
        std::uint32_t free = start;
        for (std::uint32_t next = places[free]; next != start; next = places[free]) {
            hits[free] = std::move(hits[next]);
            places[free] = free;
            free = next;
        }
        hits[free] = std::move(first);
        places[free] = free;
    }
}

void sortByName(std::vector<SearchHit>& hits, const NameOrder& order)
{
    std::vector<std::string_view> names;
    names.reserve(hits.size());
    for (const SearchHit& hit : hits)
        names.push_back(hit.url().name());
    const auto isBefore = [&](std::uint32_t left, std::uint32_t right) {
        return isListedBefore(hits[left].url(), hits[right].url());
    };
    reorder(hits, order.sorted(names, isBefore));
}

} // namespace

std::vector<SearchHit> searchNotes(const FileURL& root, const QString& query, const NameOrder& order,
                                   FoldingRule rule)
{
    const SearchNeedle needle(query.toStdString(), rule);
    const FolderSearch search(needle);
    std::mutex mutex;
    std::vector<SearchHit> hits;
    const auto searchFolder = [&](const FolderPlace& folder) {
        const FolderListing listing(folder);
        std::vector<SearchHit> found = search.hits(folder.url, listing);
        if (!found.empty()) {
            const std::lock_guard lock(mutex);
            std::ranges::move(found, std::back_inserter(hits));
        }
        return subfoldersOf(folder.url, listing);
    };
    (void)walkFolders(root, searchFolder);
    sortByName(hits, order);
    return hits;
}

} // namespace wendlore
