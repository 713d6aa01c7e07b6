#include "Decoder/RasterPicture.h"

#include "Decoder/HeifPicture.h"
#include "Decoder/Picture.h"

#include <QBuffer>
#include <QImageReader>

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

/// An image that decoders fill without taking other memory, when they make that kind.
QImage imageIn(std::span<uchar> memory, const QImageReader& reader)
{
    const QSize size = reader.size();
    const bool fits = !size.isEmpty() && reader.imageFormat() == QImage::Format_RGB32;
    return fits ? QImage(memory.data(), size.width(), size.height(), bytesPerPixel * size.width(),
                         QImage::Format_RGB32)
                : QImage();
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
    QImageReader::setAllocationLimit(int(memory.size() >> 20) + 1); // 0 would be none at all
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

} // namespace wendlore
