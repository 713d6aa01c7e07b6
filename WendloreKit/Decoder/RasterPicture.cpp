#include "Decoder/RasterPicture.h"

#include "Decoder/HeifPicture.h"
#include "Decoder/Picture.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace wendlore {

namespace {

/// What each format begins with. The toolkit's own guess would also try formats that are no images to a user,
/// with decoders that nobody needs here.
struct Beginning final
{
    QByteArrayView bytes;
    const char* format;
};

constexpr std::array beginnings{
    Beginning{"\x89PNG\r\n\x1a\n", "png"},
    Beginning{"\xff\xd8\xff", "jpeg"},
    Beginning{"GIF8", "gif"},
    Beginning{"BM", "bmp"},
    Beginning{QByteArrayView("II*\0", 4), "tiff"},
    Beginning{QByteArrayView("MM\0*", 4), "tiff"},
    Beginning{QByteArrayView("II+\0", 4), "tiff"},
    Beginning{QByteArrayView("MM\0+", 4), "tiff"},
};

/// Whether an image of that size can be drawn within `memory`; unknown sizes are left to the decoder's own
/// limit. A file of few bits a pixel grows when it is made ready for the screen.
bool canBeDrawn(QSize size, std::span<uchar> memory)
{
    return size.isEmpty() || size.width() <= qint64(memory.size()) / bytesPerPixel / size.height();
}

/// Keeps decoders from taking more for an image than `memory` has.
void limitDecoders(std::span<uchar> memory)
{
    QImageReader::setAllocationLimit(int(memory.size() >> 20) + 1); // 0 would be no limit
}

/// An image that decoders fill without taking other memory, when they make that kind.
QImage imageIn(std::span<uchar> memory, const QImageReader& reader)
{
    return reader.imageFormat() == QImage::Format_RGB32 ? pictureIn(memory, reader.size()) : QImage();
}

/// By how much a photograph of that size can be reduced and still fill a window; 1 when it is small.
int reductionOf(QSize size)
{
    constexpr qint64 largePixels = 6'000'000;
    constexpr int windowExtent = 1400;
    const int extent = std::max(size.width(), size.height());
    int reduction = 1; // the format knows halves, quarters and eighths
    while (reduction < 8 && extent / (2 * reduction) >= windowExtent)
        reduction *= 2;
    return qint64(size.width()) * size.height() >= largePixels ? reduction : 1;
}

} // namespace

QByteArray pictureFormatOf(const QByteArray& bytes)
{
    for (const Beginning& beginning : beginnings) {
        if (bytes.startsWith(beginning.bytes))
            return beginning.format;
    }
    if (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP")
        return "webp";
    return isHeif(bytes) ? "heif" : QByteArray();
}

QImage rasterPicture(const QByteArray& bytes, std::span<uchar> memory)
{
    const QByteArray format = pictureFormatOf(bytes);
    if (format.isEmpty())
        return {};
    if (format == "heif")
        return readyToDraw(heifPicture(bytes, qint64(memory.size())));
    limitDecoders(memory);
    QBuffer device;
    device.setData(bytes);
    QImageReader reader(&device, format);
    reader.setAutoTransform(true);
    if (!canBeDrawn(reader.size(), memory))
        return {};
    QImage image = imageIn(memory, reader);
    if (!reader.read(&image) || !canBeDrawn(image.size(), memory))
        return {};
    return readyToDraw(std::move(image));
}

PictureSketch rasterSketch(const QByteArray& bytes, std::span<uchar> memory)
{
    if (pictureFormatOf(bytes) != "jpeg")
        return {};
    limitDecoders(memory);
    QBuffer device;
    device.setData(bytes);
    QImageReader reader(&device, "jpeg");
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    const int reduction = reductionOf(size);
    if (reduction == 1 || !canBeDrawn(size, memory))
        return {};
    reader.setScaledSize(size / reduction);
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    return {readyToDraw(reader.read()), isTurned ? size.transposed() : size};
}

} // namespace wendlore
