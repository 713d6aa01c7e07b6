#pragma once

#include "Vault/PathMemory.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QString>

#include <compare>
#include <string_view>

namespace wendlore {

/// An absolute location in the file system: the path's bytes as the kernel gives them, and whether the
/// location was given as a directory. Equality compares both as written, without normalisation. Copies share
/// the bytes, and what one folder holds can share the folder's (`EntryURLs`), so trees of a hundred thousand
/// locations are cheap. Names that are not UTF-8 stay usable through `bytes()`.
class FileURL final
{
public:
    FileURL() = default;

    /// A location of a file or of anything that is not shown as a folder.
    [[nodiscard]] static FileURL file(const QString& path);
    /// A location of a directory; trailing separators of `path` are dropped.
    [[nodiscard]] static FileURL directory(const QString& path);
    /// A location from raw path bytes, as read from the file system.
    [[nodiscard]] static FileURL fromBytes(const QByteArray& path, bool isDirectory);

    /// The path decoded as UTF-8; bytes that are not UTF-8 show as U+FFFD. Never ends in "/" (but for the
    /// root).
    [[nodiscard]] QString path() const;
    /// The path's bytes, for system calls.
    [[nodiscard]] QByteArray bytes() const;
    [[nodiscard]] bool isDirectory() const { return m_isDirectory; }
    [[nodiscard]] bool isEmpty() const { return name().empty() && folder().empty(); }

    /// The path up to the last component, with the separator: "/b/" of "/b/a.md". Lasts as long as the
    /// location.
    [[nodiscard]] std::string_view folder() const { return m_memory.folder(); }
    /// What `bytes()` has behind `folder()`: "a.md"; nothing for the root. Lasts as long as the location.
    [[nodiscard]] std::string_view name() const { return m_memory.bytes(m_nameStart, m_nameSize); }

    /// The last path component ("a.md" of "/b/a.md"; "/" for the root).
    [[nodiscard]] QString lastPathComponent() const;
    /// The bytes of the last path component.
    [[nodiscard]] QByteArray nameBytes() const;
    /// The text after the last full stop of the last component, without it: "md" of "a.b.md", empty for
    /// "README", for ".profile" and for a name that ends in a full stop.
    [[nodiscard]] QString pathExtension() const;
    /// The last component without its extension and the full stop before it.
    [[nodiscard]] QString nameWithoutExtension() const;

    /// The folder that holds this location (the root's folder is the root).
    [[nodiscard]] FileURL deletingLastPathComponent() const;
    /// This location with `component` (which may hold "/") joined by one separator.
    [[nodiscard]] FileURL appending(const QString& component, bool isDirectory = false) const;
    [[nodiscard]] FileURL appendingBytes(const QByteArray& component, bool isDirectory) const;
    /// What the folder at this location holds under `name`, which is a single name as a folder lists it.
    [[nodiscard]] FileURL entry(std::string_view name, bool isDirectory) const;
    /// The same location with ".", ".." and repeated separators resolved in the text of the path (no disk
    /// access).
    [[nodiscard]] FileURL standardized() const;
    /// True when this path is `folder`'s path followed by "/" and more.
    [[nodiscard]] bool isBelow(const FileURL& folder) const;
    /// True when the paths are the same, whatever they were given as.
    [[nodiscard]] bool hasPathOf(const FileURL& other) const
    {
        const bool isSameFolder = m_memory.isSame(other.m_memory);
        if (isSameFolder && m_nameStart == other.m_nameStart)
            return m_nameSize == other.m_nameSize;
        return name() == other.name() && (isSameFolder || folder() == other.folder());
    }

    friend bool operator==(const FileURL& left, const FileURL& right)
    {
        return left.m_isDirectory == right.m_isDirectory && left.hasPathOf(right);
    }
    friend std::strong_ordering operator<=>(const FileURL& left, const FileURL& right)
    {
        const int order = left.bytes().compare(right.bytes());
        return order != 0 ? order <=> 0 : left.isDirectory() <=> right.isDirectory();
    }
    friend size_t qHash(const FileURL& url, size_t seed = 0) noexcept
    {
        const auto view = [](std::string_view text) {
            return QByteArrayView(text.data(), qsizetype(text.size()));
        };
        return qHashMulti(seed, view(url.folder()), view(url.name()), url.isDirectory());
    }

private:
    friend class EntryURLs;
    friend class SearchHit;

    FileURL(PathMemory memory, std::uint32_t nameStart, std::uint32_t nameSize, bool isDirectory)
        : m_memory(std::move(memory))
        , m_nameStart(nameStart)
        , m_nameSize(nameSize)
        , m_isDirectory(isDirectory)
    {}
    [[nodiscard]] static FileURL ofPath(std::string_view path, bool isDirectory);
    /// The `size` bytes that `EntryURLs` keeps behind the name.
    [[nodiscard]] std::string_view kept(std::size_t size) const
    {
        return m_memory.bytes(std::size_t(m_nameStart) + m_nameSize, size);
    }

    PathMemory m_memory;
    std::uint32_t m_nameStart = 0;
    std::uint32_t m_nameSize : 31 = 0;
    std::uint32_t m_isDirectory : 1 = 0;
};

} // namespace wendlore
