#include "Previews/ImageAnimation.h"

#include "Decoder/DecoderTask.h"

#include <utility>

namespace wendlore {

ImageFrames::ImageFrames(QByteArray bytes)
    : m_bytes(std::move(bytes))
{}

std::optional<ImageFrame> ImageFrames::next()
{
    if (!m_process)
        m_process.emplace(memoryFile(std::exchange(m_bytes, {})).get());
    const auto answer =
        m_process->ask(decoderValues(DecoderTask::nextFrame), m_limits.withTime(maximumDecodingTime()));
    QSize size;
    bool hasAlpha = false;
    int milliseconds = 0;
    if (!answer || !readAnswer(*answer, size, hasAlpha, milliseconds))
        return std::nullopt;
    ImagePyramid picture(m_process->picture(size, hasAlpha).copy());
    if (picture.isEmpty())
        return std::nullopt;
    return ImageFrame{std::move(picture), std::chrono::milliseconds(milliseconds)};
}

ImageAnimation::ImageAnimation(Scheduler& scheduler, const QByteArray& bytes, QObject* parent)
    : QObject(parent)
    , m_scheduler(scheduler)
    , m_frames(std::make_shared<ImageFrames>(bytes))
{
    decodeNext();
}

ImageAnimation::~ImageAnimation()
{
    // What goes on in the background would only keep others from their turn.
    m_frames->close();
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
