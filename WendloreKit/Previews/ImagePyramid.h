#pragma once

#include <QImage>

#include <vector>

namespace wendlore {

/// An image, and smaller versions of it, each half as wide and high as the one before, so that it can be
/// drawn at any scale quickly and without losing fine lines.
class ImagePyramid final
{
public:
    ImagePyramid() = default;
    /// Makes the smaller versions: some tens of milliseconds for a large image.
    explicit ImagePyramid(QImage image);
    /// Of an image that stands for one that is `size` large.
    ImagePyramid(QImage image, QSize size);

    /// The size in which the image is drawn at scale 1.
    [[nodiscard]] QSize size() const { return m_size; }
    [[nodiscard]] bool isEmpty() const { return m_levels.empty(); }
    /// The smallest version that still has all that shows at `scale`.
    [[nodiscard]] const QImage& levelFor(double scale) const;

private:
    std::vector<QImage> m_levels;
    QSize m_size;
};

} // namespace wendlore
