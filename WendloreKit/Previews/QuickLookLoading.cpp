#include "Previews/QuickLookLoading.h"

#include "Previews/QuickLookArchive.h"
#include "Previews/QuickLookBook.h"
#include "Previews/QuickLookDocument.h"
#include "Previews/QuickLookEmbedded.h"
#include "Previews/QuickLookMail.h"
#include "Previews/QuickLookMedia.h"
#include "Previews/QuickLookOffice.h"
#include "Previews/QuickLookTable.h"
#include "Previews/QuickLookText.h"

#include "Vault/FileCoordinator.h"
#include "Vault/FilePreviewKind.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

QuickLookContent loadText(const FileURL& file, const QString& extension)
{
    const auto beginning = readTextBeginning(file);
    if (!beginning || beginning->text.isEmpty())
        return QuickLookCard();
    const bool isTable = extension == "csv"_L1 || extension == "tsv"_L1;
    return isTable ? tablePage(*beginning) : textPage(*beginning, extension);
}

bool isArchive(const QString& name)
{
    static const QStringList endings{u".zip"_s,     u".tar"_s,     u".tgz"_s,    u".tbz2"_s,    u".txz"_s,
                                     u".7z"_s,      u".rar"_s,     u".jar"_s,    u".iso"_s,     u".cab"_s,
                                     u".deb"_s,     u".rpm"_s,     u".cpio"_s,   u".lzh"_s,     u".lha"_s,
                                     u".xar"_s,     u".apk"_s,     u".tar.gz"_s, u".tar.bz2"_s, u".tar.xz"_s,
                                     u".tar.zst"_s, u".tar.lzma"_s};
    return std::ranges::any_of(
        endings, [&name](const QString& ending) { return name.endsWith(ending, Qt::CaseInsensitive); });
}

/// The mail's beginning is enough: attachments come last.
std::optional<QuickLookPage> loadMail(const FileURL& url)
{
    constexpr qint64 limit = 8'000'000;
    QFile file(QFile::decodeName(url.bytes()));
    return file.open(QIODevice::ReadOnly) ? mailPage(file.read(limit)) : std::nullopt;
}

/// Waits until the file is on this disk and nobody is writing it: that takes as long as it takes, and is no
/// part of the time that the preview has.
QuickLookLimits whenArrived(FileCoordinator& coordinator, const FileURL& file, const QuickLookLimits& limits)
{
    constexpr qint64 largestRead = 32'000'000;
    coordinator.startDownloading(file);
    QFile opened(QFile::decodeName(file.bytes()));
    const QFileInfo info(opened);
    if (info.isFile() && info.size() <= largestRead)
        static_cast<void>(coordinator.readWhole(file));
    else if (info.isFile() && opened.open(QIODevice::ReadOnly))
        opened.peek(1);
    return limits.withTime(QuickLookLimits::usualTime);
}

/// The first page that can be made.
QuickLookContent loadDocument(const FileURL& file, const QuickLookLimits& limits)
{
    if (auto pages = embeddedPages(file, limits))
        return std::move(*pages);
    for (const auto load : {&documentTextPage, &embeddedPreview}) {
        if (auto page = load(file, limits))
            return std::move(*page);
    }
    return QuickLookCard();
}

QuickLookContent loadPackage(const FileURL& package, const QuickLookLimits& limits)
{
    if (auto pages = embeddedPages(package, limits))
        return std::move(*pages);
    for (const auto load : {&embeddedPreview, &packagePage}) {
        if (auto page = load(package, limits))
            return std::move(*page);
    }
    return QuickLookCard();
}

/// The page of those kinds that say by their name what they are; nothing for others, and for what is not what
/// its name says.
std::optional<QuickLookPage> loadPage(const FileURL& file, const QString& extension,
                                      const QuickLookLimits& limits)
{
    if (extension == "epub"_L1)
        return bookPage(file, limits);
    if (extension == "eml"_L1)
        return loadMail(file);
    if (!isArchive(file.lastPathComponent()))
        return mediaPage(file);
    const auto listing = listArchive(file, limits);
    return listing ? std::optional(listingPage(*listing)) : std::nullopt;
}

} // namespace

QuickLookContent loadQuickLook(FileCoordinator& coordinator, const FileURL& file,
                               const QuickLookLimits& wanted)
{
    const QuickLookLimits limits = whenArrived(coordinator, file, wanted);
    const QFileInfo info(QFile::decodeName(file.bytes()));
    if (limits.areReached())
        return QuickLookCard();
    if (info.isDir())
        return loadPackage(file, limits);
    if (!info.isFile())
        return QuickLookCard();
    const QString extension = file.pathExtension().toLower();
    if (auto page = loadPage(file, extension, limits))
        return std::move(*page);
    if (isOfficeDocument(file)) // no text, whatever its bytes are
        return loadDocument(file, limits);
    return loadText(file, extension);
}

} // namespace wendlore
