#include "Previews/QuickLookLoading.h"

#include "Previews/FileStatus.h"
#include "Previews/QuickLookDecoding.h"
#include "Previews/QuickLookOffice.h"
#include "Previews/QuickLookPackage.h"

#include "Vault/FileCoordinator.h"
#include "Vault/ReadFile.h"

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

void readFirstByte(const FileURL& file)
{
    const Descriptor opened = openRegularFile(file);
    char first = 0;
    static_cast<void>(::pread(opened.get(), &first, sizeof(first), 0));
}

/// Waits until the file is on this disk and nobody is writing it: that takes as long as it takes, and is no
/// part of the time that the preview has.
QuickLookLimits whenArrived(FileCoordinator& coordinator, const FileURL& file, const QuickLookLimits& limits)
{
    constexpr qint64 largestRead = 32'000'000;
    coordinator.startDownloading(file);
    const auto status = statusOf(file);
    if (isOrdinaryFile(status) && status->st_size <= largestRead)
        static_cast<void>(coordinator.readWhole(file));
    else if (isOrdinaryFile(status))
        readFirstByte(file);
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
    const auto status = statusOf(file);
    if (limits.areReached())
        return QuickLookCard();
    if (status && S_ISDIR(status->st_mode))
        return loadPackage(file, limits);
    if (!isOrdinaryFile(status))
        return QuickLookCard();
    if (!isOfficeDocument(file))
        return shown(decodeFilePreview(file, limits));
    if (auto pages = embeddedPages(file, limits))
        return std::move(*pages);
    return shown(decodeDocumentPreview(file, limits));
}

} // namespace wendlore
