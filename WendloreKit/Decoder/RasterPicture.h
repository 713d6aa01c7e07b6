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

/// A picture that is coarser than the one it stands for, which is `size` large.
struct PictureSketch final
{
    QImage picture;
    QSize size;
};

/// A sketch of a large photograph, which takes a fraction of the time of the whole and has enough pixels for
/// a window. No picture for other images, and for one that would not fit into `memory`.
[[nodiscard]] PictureSketch rasterSketch(const QByteArray& bytes, std::span<uchar> memory);

} // namespace wendlore
