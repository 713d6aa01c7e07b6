#pragma once

#include "Previews/DecoderProcess.h"
#include "Previews/ImagePyramid.h"

#include "Editor/Scheduler.h"

#include <QByteArray>
#include <QObject>

#include <optional>

namespace wendlore {

/// One picture of a moving image, and how long it is shown.
struct ImageFrame final
{
    ImagePyramid image;
    std::chrono::milliseconds duration{0};
};

/// The pictures of a moving image, which a process of its own decodes one after the other, over and over as
/// often as the file says. Belongs to one thread at a time.
class ImageFrames final
{
public:
    explicit ImageFrames(QByteArray bytes);

    /// The next picture; nothing when all have been shown as often as the file says, or at damage. Blocks.
    [[nodiscard]] std::optional<ImageFrame> next();
    /// Ends what goes on, from any thread; there are no pictures any more.
    void close() { m_limits.stop(); }

private:
    QByteArray m_bytes;
    QuickLookLimits m_limits;
    std::optional<DecoderProcess> m_process;
};

/// Plays a moving image: decodes each picture in the background while the one before it is shown.
class ImageAnimation final : public QObject
{
    Q_OBJECT

public:
    ImageAnimation(Scheduler& scheduler, const QByteArray& bytes, QObject* parent = nullptr);
    ~ImageAnimation() override;

    /// A paused animation goes on where it was.
    void setPaused(bool isPaused);

Q_SIGNALS:
    void frameChanged(const wendlore::ImagePyramid& image);

private:
    void decodeNext();
    void showIfDue();

    Scheduler& m_scheduler;
    std::shared_ptr<ImageFrames> m_frames;
    std::unique_ptr<ScheduledTask> m_decoding;
    std::unique_ptr<ScheduledTask> m_pause;
    std::optional<ImageFrame> m_next;
    bool m_isDue = true;
    bool m_isPaused = false;
};

} // namespace wendlore
