#pragma once

#include "Vault/FileURL.h"

#include <memory>
#include <string_view>
#include <vector>

namespace wendlore {

/// Whether a location that is a symbolic link may be listed as the folder that it leads to.
enum class FollowLink { Yes, No };

/// The entries of one folder whose names do not begin with a full stop, in no particular order. Empty when
/// the folder cannot be read. Made for walks through many folders: names are not copied.
class FolderListing final
{
public:
    struct Entry final
    {
        std::string_view name;      ///< as long as the listing lives; ends with a zero byte
        bool isDirectory = false;   ///< a directory itself, no link to one
        bool isRegularFile = false; ///< false for links, and for whatever else is no plain file
        quint64 inode = 0; ///< as the folder lists it; of a mount point it is the covered directory's
    };

    /// How many bytes behind a name are readable (their values do not matter).
    static constexpr std::size_t padding = 64;

    FolderListing(const FileURL& folder, FollowLink followLink);
    ~FolderListing();
    FolderListing(const FolderListing&) = delete;
    FolderListing& operator=(const FolderListing&) = delete;

    [[nodiscard]] const std::vector<Entry>& entries() const { return m_entries; }
    /// The open folder, for calls that take names in it; -1 when it cannot be read.
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    [[nodiscard]] std::size_t readBatches();
    void addEntries(std::size_t size);

    int m_descriptor;
    std::size_t m_capacity = 0;
    std::unique_ptr<char[]> m_batches;
    std::vector<Entry> m_entries;
};

/// One visible entry of a folder.
struct FolderEntry final
{
    QByteArray name;
    bool isDirectory = false; ///< a directory itself, no link to one
    quint64 inode = 0;        ///< as the folder lists it; of a mount point it is the covered directory's
};

/// The same as a list that lives on its own, in the order of the names' bytes.
[[nodiscard]] std::vector<FolderEntry> visibleEntries(const FileURL& folder, FollowLink followLink);

} // namespace wendlore
