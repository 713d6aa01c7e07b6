#pragma once

#include "Previews/QuickLookLimits.h"

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

/// The image in `bytes`, whose format is found by content; a process of its own decodes it. Null when it is
/// none that is shown as an image, is damaged, or would take too much memory or time. Blocks: to be called in
/// the background.
[[nodiscard]] DecodedImage decodeImage(const QByteArray& bytes, const QuickLookLimits& limits);

} // namespace wendlore
