#include "Vault/FilePreviewKind.h"

#include "Vault/FileName.h"

#include <algorithm>
#include <span>

#include <sys/stat.h>

namespace wendlore {

namespace {

/// Directories with these extensions are documents, programs or libraries of one program: one file to a user.
constexpr auto packageExtensions = std::to_array<std::string_view>(
    {"app",        "band",       "bundle",       "component",     "dsym",        "dtbase2", "epub",
     "fcpbundle",  "framework",  "graffle",      "imovielibrary", "key",         "kext",    "logicx",
     "mdimporter", "mpkg",       "numbers",      "oo3",           "ooutline",    "pages",   "photoslibrary",
     "pkg",        "playground", "plugin",       "prefpane",      "qlgenerator", "rtfd",    "saver",
     "scptd",      "scriv",      "sparsebundle", "textbundle",    "theater",     "vst",     "vst3",
     "wdgt",       "workflow",   "xcodeproj",    "xcworkspace"});

bool isOneOf(QByteArrayView extension, std::span<const std::string_view> extensions)
{
    return std::ranges::any_of(extensions, [&](std::string_view known) {
        return extension.size() == qsizetype(known.size()) &&
               extension.compare(QByteArrayView(known.data(), known.size()), Qt::CaseInsensitive) == 0;
    });
}

} // namespace

FilePreviewKind FilePreviewKind::of(const FileURL& url)
{
    const QByteArray name = url.lastPathComponent().toUtf8();
    const QByteArrayView extension = extensionOf(name);
    if (isOneOf(extension, editorExtensions))
        return editor;
    if (isOneOf(extension, imageExtensions))
        return image;
    if (isOneOf(extension, pdfExtensions))
        return pdf;
    if (isOneOf(extension, htmlExtensions))
        return html;
    return isOneOf(extension, googleExtensions) ? google : other;
}

bool isNoteName(QByteArrayView name)
{
    return isOneOf(extensionOf(name), textExtensions);
}

bool isPackageName(QByteArrayView name)
{
    return isOneOf(extensionOf(name), packageExtensions);
}

bool isViewableFile(const FileURL& url)
{
    struct stat status;
    if (::lstat(url.bytes().constData(), &status) != 0 || !S_ISDIR(status.st_mode))
        return true;
    return isPackageName(url.lastPathComponent().toUtf8());
}

} // namespace wendlore
