#include "Previews/ImageHeif.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/Picture.h"
#include "Previews/DecoderProcess.h"

#include <array>

namespace wendlore {

bool isHeif(const QByteArray& bytes)
{
    // What the file is, and what it can be read as, in the box that it begins with.
    constexpr std::array brands{"heic", "heix", "heim", "heis", "hevc",
                                "hevx", "mif1", "msf1", "avif", "avis"};
    constexpr qsizetype brandSize = 4;
    constexpr qsizetype firstBrand = 8;
    constexpr qsizetype mostBrands = 64;
    if (bytes.mid(brandSize, brandSize) != "ftyp")
        return false;
    for (qsizetype at = firstBrand; at + brandSize <= std::min(bytes.size(), mostBrands); at += brandSize) {
        const QByteArray brand = bytes.mid(at, brandSize);
        if (std::ranges::any_of(brands, [&brand](const char* known) { return brand == known; }))
            return true;
    }
    return false;
}

QImage decodeHeif(const QByteArray& bytes, qint64 limit, QDeadlineTimer deadline)
{
    const Descriptor file = memoryFile(bytes);
    if (!file.isOpen())
        return {};
    const QuickLookLimits limits(deadline.isForever() ? std::chrono::milliseconds::max()
                                                      : std::chrono::milliseconds(deadline.remainingTime()));
    auto answer = DecoderProcess(file.get()).ask(decoderValues(DecoderTask::decodePicture, limit), limits);
    return answer ? pictureOf(std::move(*answer)) : QImage();
}

} // namespace wendlore
