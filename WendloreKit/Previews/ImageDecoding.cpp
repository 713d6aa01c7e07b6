#include "Previews/ImageDecoding.h"

#include "Decoder/Picture.h"
#include "Previews/ImageHeif.h"

#include <QImageReader>
#include <QIODevice>

#include <algorithm>
#include <array>
#include <mutex>

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

constexpr qint64 maximumImageBytes = qint64(maximumImageMegabytes) << 20;

/// The bytes of a file, which come to an end when the time is over. No QBuffer: decoders look into that one's
/// bytes past the device.
class TimedBytes final : public QIODevice
{
public:
    TimedBytes(QByteArray bytes, QDeadlineTimer deadline)
        : m_bytes(std::move(bytes))
        , m_deadline(deadline)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }

protected:
    qint64 readData(char* data, qint64 size) override
    {
        if (m_deadline.hasExpired())
            return -1;
        const qint64 count = std::clamp<qint64>(m_bytes.size() - pos(), 0, size);
        std::copy_n(m_bytes.constData() + pos(), count, data);
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    QDeadlineTimer m_deadline;
};

/// Whether an image of that size can be drawn within the limit; unknown sizes are left to the decoder's own.
bool canBeDrawn(QSize size)
{
    constexpr qint64 bytesPerPixel = 4;
    return size.isEmpty() || size.width() <= maximumImageBytes / bytesPerPixel / size.height();
}

} // namespace

QByteArray imageFormatOf(const QByteArray& bytes)
{
    for (const Beginning& beginning : beginnings) {
        if (bytes.startsWith(beginning.bytes))
            return beginning.format;
    }
    if (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP")
        return "webp";
    return isHeif(bytes) ? "heif" : QByteArray();
}

QImage decodeImage(const QByteArray& bytes, QDeadlineTimer deadline)
{
    static std::once_flag isLimited;
    std::call_once(isLimited, [] { QImageReader::setAllocationLimit(maximumImageMegabytes); });
    const QByteArray format = imageFormatOf(bytes);
    if (format.isEmpty())
        return {};
    if (format == "heif")
        return decodeHeif(bytes, maximumImageBytes, deadline);
    TimedBytes device(bytes, deadline);
    QImageReader reader(&device, format);
    reader.setAutoTransform(true);
    // A file of few bits a pixel grows when it is made ready for the screen.
    if (!canBeDrawn(reader.size()))
        return {};
    QImage image = reader.read();
    return canBeDrawn(image.size()) ? readyToDraw(std::move(image)) : QImage();
}

} // namespace wendlore
