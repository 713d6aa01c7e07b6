#pragma once

#include "Previews/DecoderProcess.h"

#include <QByteArray>
#include <QImage>

namespace wendlore {

/// An image as it is shown.
struct DecodedImage final
{
    /// Upright, in the screen's colours and a format that is drawn quickly; of a moving one the first
    /// picture.
    QImage image;
    bool moves = false;
};

/// An image that is coarser than the one it stands for, which is `size` large.
struct ImageSketch final
{
    QImage image;
    QSize size;
};

/// One image file, whose format is found by content; a process of its own decodes it. Images are null when
/// the file holds none that is shown as an image, is damaged, or would take too much memory or time. Blocks:
/// for the background, and one caller at a time.
class ImageDecoder final
{
public:
    explicit ImageDecoder(const QByteArray& bytes);

    /// Of a large photograph something to look at until it is decoded; nothing for other images.
    [[nodiscard]] ImageSketch sketch(const QuickLookLimits& limits);
    /// The whole; the last that is asked.
    [[nodiscard]] DecodedImage decode(const QuickLookLimits& limits);

private:
    DecoderProcess m_process;
};

} // namespace wendlore
