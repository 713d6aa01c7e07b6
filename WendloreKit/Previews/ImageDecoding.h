#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QImage>

namespace wendlore {

/// How much memory one decoded image may take, in megabytes: a photograph of 150 megapixels.
inline constexpr int maximumImageMegabytes = 600;
/// How long decoding one image may take: many times what the largest one needs.
inline constexpr std::chrono::seconds maximumImageTime{30};

/// The image (the first frame of a moving one) in `bytes`, upright, in the screen's colours and a format that
/// is drawn quickly. The format is found by content. Null when it is none that is shown as an image, is
/// damaged, or would take too much memory or time. Blocks: to be called in the background.
[[nodiscard]] QImage decodeImage(const QByteArray& bytes,
                                 QDeadlineTimer deadline = QDeadlineTimer(maximumImageTime));

/// The format of `bytes` among those that are shown as images ("gif"); empty for others.
[[nodiscard]] QByteArray imageFormatOf(const QByteArray& bytes);

} // namespace wendlore
