#include "Decoder/MovingPicture.h"

#include "Decoder/Picture.h"
#include "Decoder/RasterPicture.h"

#include <QBuffer>
#include <QImageReader>

namespace wendlore {

namespace {

/// Files that ask for less are shown in this pace everywhere.
constexpr int shortest = 20;
constexpr int usual = 100;

} // namespace

MovingPicture::MovingPicture(QByteArray bytes)
    : m_bytes(std::move(bytes))
{
    startOver();
    const int repetitions = m_reader->loopCount();
    m_roundsLeft = repetitions < 0 ? -1 : repetitions;
}

MovingPicture::~MovingPicture() = default;

bool MovingPicture::isIn(const QByteArray& bytes)
{
    const QByteArray format = pictureFormatOf(bytes);
    if (format != "gif" && format != "webp")
        return false;
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer, format);
    return reader.supportsAnimation() && reader.imageCount() > 1;
}

void MovingPicture::startOver()
{
    m_framesOfRound = 0;
    m_reader.reset();
    m_buffer = std::make_unique<QBuffer>();
    m_buffer->setData(m_bytes);
    m_reader = std::make_unique<QImageReader>(m_buffer.get(), pictureFormatOf(m_bytes));
}

std::optional<MovingPicture::Frame> MovingPicture::next()
{
    QImage image = m_reader->read();
    if (image.isNull() && m_framesOfRound > 1 && m_roundsLeft != 0) {
        if (m_roundsLeft > 0)
            --m_roundsLeft;
        startOver();
        image = m_reader->read();
    }
    if (image.isNull())
        return std::nullopt;
    ++m_framesOfRound;
    const int asked = m_reader->nextImageDelay();
    return Frame{readyToDraw(std::move(image)), asked < shortest ? usual : asked};
}

} // namespace wendlore
