#include "Vault/NoteSearch.h"

#include "Vault/Collation.h"
#include "Vault/FileName.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/FolderListing.h"
#include "Vault/FolderWalk.h"
#include "Vault/NoteReader.h"
#include "Vault/SearchNeedle.h"
#include "Vault/TextLines.h"

#include <QUtf8StringView>

#include <algorithm>
#include <mutex>

namespace wendlore {

namespace {

std::string_view view(QByteArrayView bytes)
{
    return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

bool isUtf8(std::string_view text)
{
    return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

/// The search through one folder: which of its notes match, and by which line.
class FolderSearch final
{
public:
    FolderSearch(const SearchNeedle& needle, const FileURL& folder)
        : m_needle(needle)
        , m_folder(folder)
    {}

    void addNote(FolderEntry entry)
    {
        m_names.push_back(std::move(entry.name));
        m_isDirectory.push_back(entry.isDirectory);
    }

    [[nodiscard]] std::vector<SearchHit> hits(NoteReader& reader)
    {
        std::vector<QString> snippets(m_names.size());
        std::vector<bool> matches(m_names.size());
        reader.read(m_folder, m_names, [&](std::size_t note, std::string_view text) {
            const auto line = m_needle.firstLine(text);
            // Text is checked only where it matters; a file that is not UTF-8 counts as empty.
            if (!line || !isUtf8(text))
                return;
            matches[note] = true;
            const std::string_view snippet = snippetOf(text.substr(line->start, line->end - line->start));
            snippets[note] = QString::fromUtf8(snippet.data(), static_cast<qsizetype>(snippet.size()));
        });
        std::vector<SearchHit> hits;
        for (std::size_t note = 0; note < m_names.size(); ++note) {
            if (matches[note] || m_needle.isIn(view(withoutExtension(m_names[note]))))
                hits.push_back(
                    {m_folder.appendingBytes(m_names[note], m_isDirectory[note]), std::move(snippets[note])});
        }
        return hits;
    }

private:
    const SearchNeedle& m_needle;
    const FileURL& m_folder;
    std::vector<QByteArray> m_names;
    std::vector<bool> m_isDirectory; ///< folders can bear a note's name; their text counts as empty
};

/// The order in which a walk lists notes: a folder before its contents, names in one folder by their bytes.
bool isListedBefore(const FileURL& left, const FileURL& right)
{
    return std::ranges::lexicographical_compare(
        left.bytes(), right.bytes(), {},
        [](char byte) { return byte == '/' ? 0 : static_cast<unsigned char>(byte) + 1; },
        [](char byte) { return byte == '/' ? 0 : static_cast<unsigned char>(byte) + 1; });
}

QByteArrayView fileName(const FileURL& url)
{
    return QByteArrayView(url.bytes()).sliced(url.bytes().lastIndexOf('/') + 1);
}

void sortByName(std::vector<SearchHit>& hits, const NameOrder& order)
{
    std::ranges::sort(hits, isListedBefore, &SearchHit::url);
    std::vector<std::pair<QByteArray, std::size_t>> keys;
    keys.reserve(hits.size());
    for (std::size_t i = 0; i < hits.size(); ++i)
        keys.emplace_back(order.sortKey(fileName(hits[i].url)), i);
    std::ranges::sort(keys);
    std::vector<SearchHit> sorted;
    sorted.reserve(hits.size());
    for (const auto& [key, i] : keys)
        sorted.push_back(std::move(hits[i]));
    hits = std::move(sorted);
}

} // namespace

std::vector<SearchHit> searchNotes(const FileURL& root, const QString& query, const NameOrder& order,
                                   FoldingRule rule)
{
    const SearchNeedle needle(query.toStdString(), rule);
    std::mutex mutex;
    std::vector<SearchHit> hits;
    const auto searchFolder = [&](const FileURL& folder, FollowLink followLink) {
        thread_local NoteReader reader;
        FolderSearch search(needle, folder);
        std::vector<FileNode> subfolders;
        for (FolderEntry& entry : visibleEntries(folder, followLink)) {
            if (entry.isDirectory)
                subfolders.push_back(
                    {folder.appendingBytes(entry.name, true), true, std::vector<FileNode>()});
            if (isNoteName(entry.name))
                search.addNote(std::move(entry));
        }
        std::vector<SearchHit> found = search.hits(reader);
        reader.shrink();
        const std::lock_guard lock(mutex);
        std::ranges::move(found, std::back_inserter(hits));
        return subfolders;
    };
    (void)walkFolders(root, searchFolder);
    sortByName(hits, order);
    return hits;
}

} // namespace wendlore
