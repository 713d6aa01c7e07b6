#include "Previews/ImageAnimation.h"

#include "Decoder/Picture.h"
#include "Previews/ImageDecoding.h"

#include <QBuffer>
#include <QImageReader>

#include <utility>

using namespace std::chrono_literals;

namespace wendlore {

namespace {

/// Files that ask for less are shown in this pace everywhere.
constexpr auto shortest = 20ms;
constexpr auto usual = 100ms;

std::chrono::milliseconds durationOf(int asked)
{
    return std::chrono::milliseconds(asked) < shortest ? usual : std::chrono::milliseconds(asked);
}

} // namespace

ImageFrames::ImageFrames(QByteArray bytes)
    : m_bytes(std::move(bytes))
{
    startOver();
    const int repetitions = m_reader->loopCount();
    m_roundsLeft = repetitions < 0 ? -1 : repetitions;
}

ImageFrames::~ImageFrames() = default;

bool ImageFrames::areIn(const QByteArray& bytes)
{
    const QByteArray format = imageFormatOf(bytes);
    if (format != "gif" && format != "webp")
        return false;
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer, format);
    return reader.supportsAnimation() && reader.imageCount() > 1;
}

void ImageFrames::startOver()
{
    m_framesOfRound = 0;
    m_reader.reset();
    m_buffer = std::make_unique<QBuffer>();
    m_buffer->setData(m_bytes);
    m_reader = std::make_unique<QImageReader>(m_buffer.get(), imageFormatOf(m_bytes));
}

std::optional<ImageFrame> ImageFrames::next()
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
    return ImageFrame{ImagePyramid(readyToDraw(std::move(image))), durationOf(m_reader->nextImageDelay())};
}

ImageAnimation::ImageAnimation(Scheduler& scheduler, const QByteArray& bytes, QObject* parent)
    : QObject(parent)
    , m_scheduler(scheduler)
    , m_frames(std::make_shared<ImageFrames>(bytes))
{
    decodeNext();
}

void ImageAnimation::setPaused(bool isPaused)
{
    m_isPaused = isPaused;
    showIfDue();
}

void ImageAnimation::decodeNext()
{
    m_decoding = m_scheduler.inBackground([this, frames = m_frames]() -> std::function<void()> {
        return [this, frame = frames->next()] {
            m_next = frame;
            showIfDue();
        };
    });
}

void ImageAnimation::showIfDue()
{
    if (!m_next || !m_isDue || m_isPaused)
        return;
    const ImageFrame frame = *std::exchange(m_next, std::nullopt);
    m_isDue = false;
    m_pause = m_scheduler.after(frame.duration, [this] {
        m_isDue = true;
        showIfDue();
    });
    decodeNext();
    Q_EMIT frameChanged(frame.image);
}

} // namespace wendlore
