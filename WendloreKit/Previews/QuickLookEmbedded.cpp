#include "Previews/QuickLookEmbedded.h"

#include "Previews/QuickLookArchive.h"

#include <QDirIterator>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qint64 largestPicture = 20'000'000;
constexpr qint64 largestPages = 100'000'000;
constexpr auto pagesPlace = "QuickLook/Preview.pdf"_L1;

/// The best first.
const QStringList places{
    u"preview.jpg"_s,           u"QuickLook/Thumbnail.jpg"_s,  u"preview-web.jpg"_s,
    u"QuickLook/Preview.jpg"_s, u"Thumbnails/thumbnail.png"_s, u"docProps/thumbnail.jpeg"_s};

QHash<QString, QByteArray> picturesIn(const QString& folder)
{
    QHash<QString, QByteArray> pictures;
    for (const QString& place : places) {
        QFile file(folder + u'/' + place);
        if (QFileInfo(file).isFile() && file.size() <= largestPicture && file.open(QIODevice::ReadOnly))
            pictures.insert(place, file.readAll());
    }
    return pictures;
}

} // namespace

std::optional<QuickLookPage> embeddedPreview(const FileURL& file, const QuickLookLimits& limits)
{
    const QString path = QFile::decodeName(file.bytes());
    const auto pictures =
        QFileInfo(path).isDir()
            ? picturesIn(path)
            : readArchive(
                  file, [](const QString& name) { return places.contains(name); }, largestPicture, limits);
    for (const QString& place : places) {
        if (!pictures.contains(place))
            continue;
        QuickLookPage page;
        page.body = "<div class=\"centered\"><img src=\"r/bild\" alt=\"\"></div>";
        page.resources.insert(u"bild"_s,
                              {pictures.value(place), place.endsWith(u"png"_s) ? "image/png" : "image/jpeg"});
        return page;
    }
    return std::nullopt;
}

std::optional<QuickLookPdf> embeddedPages(const FileURL& file, const QuickLookLimits& limits,
                                          const QuickLookCache& cache)
{
    static const QStringList kinds{u"pages"_s, u"numbers"_s, u"key"_s};
    if (!kinds.contains(file.pathExtension().toLower()))
        return std::nullopt;
    const FileURL inPackage = file.appending(pagesPlace);
    if (QFileInfo(QFile::decodeName(inPackage.bytes())).isFile())
        return QuickLookPdf{inPackage};
    const FileURL place = cache.placeOf(file, u"medskickad.pdf"_s);
    if (cache.has(place))
        return QuickLookPdf{place};
    const auto pages = readArchive(
        file, [](const QString& name) { return name == pagesPlace; }, largestPages, limits);
    return pages.size() == 1 && cache.keep(place, *pages.begin()) ? std::optional(QuickLookPdf{place})
                                                                  : std::nullopt;
}

std::optional<QuickLookPage> packagePage(const FileURL& package, const QuickLookLimits& limits)
{
    const QString root = QFile::decodeName(package.bytes());
    ArchiveListing listing;
    QDirIterator files(root, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext() && listing.isWhole) {
        files.next();
        const QFileInfo info = files.fileInfo();
        listing.entries.append(
            {files.filePath().mid(root.size() + 1), info.size(), info.lastModified(), false});
        listing.isWhole = listing.entries.size() < shownEntries && !limits.areReached();
    }
    std::ranges::sort(listing.entries, {}, &ArchiveEntry::path);
    return listing.entries.isEmpty() ? std::nullopt : std::optional(listingPage(listing));
}

} // namespace wendlore
