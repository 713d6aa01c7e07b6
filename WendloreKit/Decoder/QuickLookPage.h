#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QString>

#include <optional>

namespace wendlore {

/// What a page shows beside its text: the bytes of a picture, for instance, and their type.
struct QuickLookResource final
{
    QByteArray bytes;
    QByteArray mimeType;
};

/// A preview as a web page: markup made by this program from what a file holds, without scripts and without
/// addresses of others. Resources are named by "r/NAME", the previewed file itself by "file".
struct QuickLookPage final
{
    QByteArray body;
    QHash<QString, QuickLookResource> resources;
    /// The file that "file" stands for, with its type; it is read as the page asks for it.
    std::optional<FileURL> streamed;
    QByteArray streamedType;
    /// What the page gets in place of as many bytes of that file's beginning.
    QByteArray streamedBeginning;
    /// The page's own width in pixels, to be scaled to the width of the view; 0 for a page that flows.
    int width = 0;
};

inline QDataStream& operator<<(QDataStream& stream, const QuickLookResource& resource)
{
    return stream << resource.bytes << resource.mimeType;
}
inline QDataStream& operator>>(QDataStream& stream, QuickLookResource& resource)
{
    return stream >> resource.bytes >> resource.mimeType;
}

/// As a page is sent by a process that does not know where its file lies.
inline QDataStream& operator<<(QDataStream& stream, const QuickLookPage& page)
{
    return stream << page.body << page.resources << page.streamedType << page.streamedBeginning << page.width;
}
inline QDataStream& operator>>(QDataStream& stream, QuickLookPage& page)
{
    return stream >> page.body >> page.resources >> page.streamedType >> page.streamedBeginning >> page.width;
}

/// A document as the pages of a PDF file, which belongs to the cache or to the document.
struct QuickLookPdf final
{
    FileURL file;
};

/// `text` as it stands in markup, also inside of quoted attributes.
[[nodiscard]] inline QByteArray escaped(const QString& text)
{
    return text.toHtmlEscaped().toUtf8();
}

/// A line above the preview, for what the user has to know about it.
[[nodiscard]] inline QByteArray noticeMarkup(const QString& text)
{
    return text.isEmpty() ? QByteArray() : "<p class=\"notice\">" + escaped(text) + "</p>";
}

} // namespace wendlore
