#include "Previews/QuickLookLoading.h"

#include "Previews/QuickLookDecoding.h"
#include "Previews/QuickLookOffice.h"
#include "Previews/QuickLookPackage.h"

#include "Vault/FileCoordinator.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

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

bool mayHavePages(const FileURL& document)
{
    static const QStringList kinds{u"pages"_s, u"numbers"_s, u"key"_s};
    return kinds.contains(document.pathExtension().toLower());
}

QuickLookContent shown(std::optional<QuickLookPage> page)
{
    return page ? QuickLookContent(std::move(*page)) : QuickLookCard();
}

} // namespace

std::optional<QuickLookPdf> embeddedPages(const FileURL& document, const QuickLookLimits& limits,
                                          const QuickLookCache& cache)
{
    if (!mayHavePages(document))
        return std::nullopt;
    const FileURL place = cache.placeOf(document, u"medskickad.pdf"_s);
    if (cache.has(place))
        return QuickLookPdf{place};
    const QByteArray pages = decodeDocumentPages(document, limits);
    return !pages.isEmpty() && cache.keep(place, pages) ? std::optional(QuickLookPdf{place}) : std::nullopt;
}

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
    if (!isOfficeDocument(file))
        return shown(decodeFilePreview(file, limits));
    if (auto pages = embeddedPages(file, limits))
        return std::move(*pages);
    return shown(decodeDocumentPreview(file, limits));
}

} // namespace wendlore
