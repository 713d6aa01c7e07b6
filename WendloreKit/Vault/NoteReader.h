#pragma once

#include "Vault/FolderListing.h"

#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace wendlore {

/// Reads the files of one folder after another into one buffer, as fast as the disk gives them: what the
/// system remembers at once, and the rest of a batch after that, so that the disk can fetch it all meanwhile.
/// Only regular files are read; a file that vanishes or cannot be read is passed over.
class NoteReader final
{
public:
    /// Receives the place of a file in the list and its bytes, behind which `ByteScanner::padding` bytes are
    /// readable. The bytes last until the call returns.
    using Receive = std::function<void(std::size_t index, std::string_view bytes)>;

    NoteReader();

    /// Reads `files`, entries of the open folder `folder`, in any order.
    void read(int folder, std::span<const FolderListing::Entry> files, const Receive& receive);
    /// Gives back the memory that an unusually large file needed.
    void shrink();

private:
    enum class Patience { none, full };

    [[nodiscard]] int openFile(int folder, const FolderListing::Entry& file);
    [[nodiscard]] bool readOne(int descriptor, std::size_t index, Patience patience, const Receive& receive);
    void grow(std::size_t capacity, std::size_t kept);

    std::unique_ptr<char[]> m_buffer;
    std::size_t m_capacity = 0;
    /// Asks that a note's time of reading stays as it is, while the notes are the user's own.
    int m_traceless = 0;
    bool m_endsInsidePage = false; ///< a read that stops inside a page has met the end of its file
};

} // namespace wendlore
