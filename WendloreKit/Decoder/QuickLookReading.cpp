#include "Decoder/QuickLookReading.h"

#include "Decoder/QuickLookArchive.h"
#include "Decoder/QuickLookBook.h"
#include "Decoder/QuickLookDocument.h"
#include "Decoder/QuickLookMail.h"
#include "Decoder/QuickLookMedia.h"
#include "Decoder/QuickLookPictures.h"
#include "Decoder/QuickLookTable.h"
#include "Decoder/QuickLookText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// As large as the answer about a file may be.
constexpr qint64 largestPages = 100'000'000;

std::optional<QuickLookPage> readText(const QuickLookFile& file)
{
    const auto beginning = readTextBeginning(file);
    if (!beginning || beginning->text.isEmpty())
        return std::nullopt;
    const QString extension = file.extension();
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
std::optional<QuickLookPage> readMail(const QuickLookFile& file)
{
    constexpr qint64 limit = 8'000'000;
    return mailPage(file.contents().read(limit));
}

/// The page of those kinds that say by their name what they are; nothing for others, and for what is not what
/// its name says.
std::optional<QuickLookPage> readKnownKind(const QuickLookFile& file, const QuickLookLimits& limits)
{
    const QString extension = file.extension();
    if (extension == "epub"_L1)
        return bookPage(file, limits);
    if (extension == "eml"_L1)
        return readMail(file);
    if (!isArchive(file.name()))
        return mediaPage(file);
    const auto listing = listArchive(file, limits);
    return listing ? std::optional(listingPage(*listing)) : std::nullopt;
}

} // namespace

std::optional<QuickLookPage> readFilePreview(const QuickLookFile& file, const QuickLookLimits& limits)
{
    if (!file.isOpen())
        return std::nullopt;
    auto page = readKnownKind(file, limits);
    return page ? std::move(page) : readText(file);
}

std::optional<QuickLookPage> readDocumentPreview(const QuickLookFile& file, const QuickLookLimits& limits)
{
    if (auto text = documentTextPage(file, limits))
        return text;
    return picturePage(readArchive(
        file, [](const QString& name) { return picturePlaces().contains(name); }, largestPicture, limits));
}

QByteArray readDocumentPages(const QuickLookFile& file, const QuickLookLimits& limits)
{
    return readArchive(
               file, [](const QString& name) { return name == pagesPlace; }, largestPages, limits)
        .value(pagesPlace);
}

} // namespace wendlore
