#pragma once

#include <QByteArray>
#include <QHashFunctions>
#include <QString>

#include <compare>
#include <string_view>

namespace wendlore {

/// An absolute location in the file system: the path's bytes as the kernel gives them, and whether the
/// location was given as a directory. Equality compares both as written, without normalisation. Copying
/// shares the bytes, so trees of a hundred thousand locations are cheap. Names that are not UTF-8 stay usable
/// through `bytes()`.
class FileURL final
{
public:
    FileURL() = default;

    /// A location of a file or of anything that is not shown as a folder.
    [[nodiscard]] static FileURL file(const QString& path);
    /// A location of a directory; trailing separators of `path` are dropped.
    [[nodiscard]] static FileURL directory(const QString& path);
    /// A location from raw path bytes, as read from the file system.
    [[nodiscard]] static FileURL fromBytes(QByteArray path, bool isDirectory);

    /// The path decoded as UTF-8; bytes that are not UTF-8 show as U+FFFD. Never ends in "/" (but for the
    /// root).
    [[nodiscard]] QString path() const;
    /// The path's bytes, for system calls.
    [[nodiscard]] const QByteArray& bytes() const { return m_path; }
    [[nodiscard]] bool isDirectory() const { return m_isDirectory; }
    [[nodiscard]] bool isEmpty() const { return m_path.isEmpty(); }

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

    friend bool operator==(const FileURL&, const FileURL&) = default;
    friend std::strong_ordering operator<=>(const FileURL& left, const FileURL& right)
    {
        const int order = left.m_path.compare(right.m_path);
        return order != 0 ? order <=> 0 : left.m_isDirectory <=> right.m_isDirectory;
    }
    friend size_t qHash(const FileURL& url, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, url.m_path, url.m_isDirectory);
    }

private:
    FileURL(QByteArray path, bool isDirectory)
        : m_path(std::move(path))
        , m_isDirectory(isDirectory)
    {}

    QByteArray m_path;
    bool m_isDirectory = false;
};

} // namespace wendlore
