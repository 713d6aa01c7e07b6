#include "Vault/LinkResolution.h"

#include "Vault/Blanks.h"
#include "Vault/CaselessText.h"
#include "Vault/DiskEntry.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString noteEnding = u".md"_s;

bool isHexDigit(char letter)
{
    return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'f') ||
           (letter >= 'A' && letter <= 'F');
}

/// `text` with its percent escapes resolved; as it is when an escape is malformed or gives no UTF-8.
QString percentDecoded(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    for (qsizetype at = bytes.indexOf('%'); at >= 0; at = bytes.indexOf('%', at + 1)) {
        if (at + 2 >= bytes.size() || !isHexDigit(bytes[at + 1]) || !isHexDigit(bytes[at + 2]))
            return text;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(QByteArray::fromPercentEncoding(bytes));
    return decoder.hasError() ? text : decoded;
}

const FileURL* findNote(const CaselessText& name, const std::vector<FileNode>& nodes)
{
    for (const FileNode& node : nodes) {
        if (!node.isDirectory && name.equals(node.url.nameWithoutExtension()))
            return &node.url;
        if (const FileURL* found = node.children ? findNote(name, *node.children) : nullptr)
            return found;
    }
    return nullptr;
}

} // namespace

QString linkedPath(const QString& linkText)
{
    const QStringList parts = percentDecoded(linkText).split(u'#', Qt::SkipEmptyParts);
    return parts.isEmpty() ? QString() : withoutOuterBlanks(parts.first());
}

QString linkedNoteName(const QString& path)
{
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    return name.endsWith(noteEnding, Qt::CaseInsensitive) ? name.chopped(noteEnding.size()) : name;
}

std::vector<FileURL> pathCandidates(const QString& path, const FileURL& folder)
{
    std::vector<FileURL> candidates{folder.appending(path).standardized()};
    if (!path.endsWith(noteEnding, Qt::CaseInsensitive))
        candidates.push_back(folder.appending(path + noteEnding).standardized());
    return candidates;
}

std::optional<FileURL> existingCandidate(const QString& path, const std::vector<FileURL>& folders)
{
    for (const FileURL& folder : folders) {
        for (const FileURL& candidate : pathCandidates(path, folder)) {
            if (existsOnDisk(candidate))
                return candidate;
        }
    }
    return std::nullopt;
}

std::optional<FileURL> resolveBundleAbsolute(const QString& path, const std::optional<FileURL>& linkingNote,
                                             const FileURL& root)
{
    const QByteArray top = root.standardized().bytes();
    FileURL folder = (linkingNote ? linkingNote->deletingLastPathComponent() : root).standardized();
    while (folder.bytes().startsWith(top)) {
        if (const auto found = existingCandidate(path, {folder}))
            return found;
        const FileURL parent = folder.deletingLastPathComponent();
        if (folder.bytes() == top || parent.hasPathOf(folder))
            break;
        folder = parent;
    }
    return std::nullopt;
}

std::optional<FileURL> findNote(const QString& name, const std::vector<FileNode>& nodes)
{
    const FileURL* const found = findNote(CaselessText(name), nodes);
    return found == nullptr ? std::nullopt : std::optional(*found);
}

} // namespace wendlore
