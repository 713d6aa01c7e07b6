#pragma once

#include <QByteArray>
#include <QImage>

#include <span>

namespace wendlore {

/// The format of `bytes` among those that are shown as images ("gif"); empty for others.
[[nodiscard]] QByteArray pictureFormatOf(const QByteArray& bytes);

/// The image (the first frame of a moving one) in `bytes`, upright and ready to be drawn, in `memory` where
/// it could be decoded there. The format is found by content. Null when it is none that is shown as an image,
/// is damaged, or would not fit into `memory`.
[[nodiscard]] QImage rasterPicture(const QByteArray& bytes, std::span<uchar> memory);

} // namespace wendlore
