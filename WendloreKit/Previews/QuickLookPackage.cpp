#include "Previews/QuickLookPackage.h"

#include "Decoder/QuickLookListing.h"
#include "Decoder/QuickLookPictures.h"

#include <QDirIterator>

#include <algorithm>

namespace wendlore {

namespace {

QHash<QString, QByteArray> picturesIn(const QString& folder)
{
    QHash<QString, QByteArray> pictures;
    for (const QString& place : picturePlaces()) {
        QFile file(folder + u'/' + place);
        if (QFileInfo(file).isFile() && file.size() <= largestPicture && file.open(QIODevice::ReadOnly))
            pictures.insert(place, file.readAll());
    }
    return pictures;
}

ArchiveListing filesIn(const QString& folder, const QuickLookLimits& limits)
{
    ArchiveListing listing;
    QDirIterator files(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext() && listing.isWhole) {
        files.next();
        const QFileInfo info = files.fileInfo();
        listing.entries.append(
            {files.filePath().mid(folder.size() + 1), info.size(), info.lastModified(), false});
        listing.isWhole = listing.entries.size() < shownEntries && !limits.areReached();
    }
    std::ranges::sort(listing.entries, {}, &ArchiveEntry::path);
    return listing;
}

} // namespace

QuickLookContent loadPackage(const FileURL& package, const QuickLookLimits& limits)
{
    const FileURL pages = package.appending(pagesPlace);
    if (QFileInfo(QFile::decodeName(pages.bytes())).isFile())
        return QuickLookPdf{pages};
    const QString folder = QFile::decodeName(package.bytes());
    if (auto picture = picturePage(picturesIn(folder)))
        return std::move(*picture);
    const ArchiveListing listing = filesIn(folder, limits);
    return listing.entries.isEmpty() ? QuickLookContent(QuickLookCard()) : listingPage(listing);
}

} // namespace wendlore
