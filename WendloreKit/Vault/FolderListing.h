#pragma once

#include "Vault/FileURL.h"

#include <memory>
#include <string_view>
#include <vector>

namespace wendlore {

/// Whether a location that is a symbolic link may be listed as the folder that it leads to.
enum class FollowLink { Yes, No };

/// A folder to be listed.
struct FolderPlace final
{
    const FileURL& url;
    FollowLink followLink;
    /// An open folder above it, where the system then begins to look for it, and the size of that folder's
    /// path with its separator; -1 for none.
    int ancestor = -1;
    std::size_t ancestorSize = 0;
};

/// The entries of one folder whose names do not begin with a full stop, in no particular order. Empty when
/// the folder cannot be read. Made for walks through many folders: names are not copied, and one listing of a
/// thread takes over the memory of the one before.
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

    explicit FolderListing(const FolderPlace& place);
    FolderListing(const FileURL& folder, FollowLink followLink)
        : FolderListing(FolderPlace{folder, followLink})
    {}
    ~FolderListing();
    FolderListing(const FolderListing&) = delete;
    FolderListing& operator=(const FolderListing&) = delete;

    [[nodiscard]] const std::vector<Entry>& entries() const { return m_memory.entries; }
    /// The open folder, for calls that take names in it; -1 when it cannot be read.
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    struct Memory final
    {
        std::size_t capacity = 0;
        std::unique_ptr<char[]> batches;
        std::vector<Entry> entries;
    };

    [[nodiscard]] std::size_t readBatches();
    void grow(std::size_t kept);
    void addEntries(std::size_t size);

    static thread_local Memory s_spare;

    int m_descriptor;
    Memory m_memory;
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
