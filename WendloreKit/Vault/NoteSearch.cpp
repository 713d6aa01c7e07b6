#include "Vault/NoteSearch.h"

#include "Vault/Collation.h"
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

namespace wendlore {

namespace {

using Entry = FolderListing::Entry;

/// Searches the notes of folders; several threads at once.
class FolderSearch final
{
public:
    explicit FolderSearch(const SearchNeedle& needle)
        : m_needle(needle)
    {}

    /// Appends the notes in `folder` that match, in any order. `listing` is its listing.
    void appendHits(std::vector<SearchHit>& hits, const FileURL& folder, const FolderListing& listing) const
    {
        thread_local NoteReader reader;
        const std::vector<Entry> notes = notesOf(listing);
        std::vector<bool> isFound(notes.size());
        const auto append = [&](const Entry& note, std::string_view snippet) {
            hits.emplace_back(folder, note.name, note.isDirectory, snippet);
        };
        reader.read(listing.descriptor(), notes, [&](std::size_t note, std::string_view text) {
            const auto line = m_needle.firstLine(text);
            // Text is checked only where it matters; a file that is not UTF-8 counts as empty.
            if (!line || !isUtf8(text))
                return;
            append(notes[note], snippetOf(text.substr(line->start, line->end - line->start)));
            isFound[note] = true;
        });
        reader.shrink();
        for (std::size_t note = 0; note < notes.size(); ++note) {
            if (!isFound[note] && nameMatches(notes[note].name))
                append(notes[note], {});
        }
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
        names.push_back(hit.name());
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
        std::vector<FileNode> subfolders;
        for (const Entry& entry : listing.entries()) {
            if (entry.isDirectory)
                subfolders.push_back({folder.url.entry(entry.name, true), true, std::vector<FileNode>()});
        }
        std::vector<SearchHit> found;
        search.appendHits(found, folder.url, listing);
        const std::lock_guard lock(mutex);
        std::ranges::move(found, std::back_inserter(hits));
        return subfolders;
    };
    (void)walkFolders(root, searchFolder);
    sortByName(hits, order);
    return hits;
}

} // namespace wendlore
