#include "Previews/ImagePyramid.h"

namespace wendlore {

namespace {

/// Below this there is nothing to be won.
constexpr int smallestExtent = 256;

} // namespace

ImagePyramid::ImagePyramid(QImage image)
    : ImagePyramid(image, image.size())
{}

ImagePyramid::ImagePyramid(QImage image, QSize size)
{
    if (image.isNull())
        return;
    m_size = size;
    m_levels.push_back(std::move(image));
    for (QSize half = m_levels.front().size() / 2;
         half.width() >= smallestExtent && half.height() >= smallestExtent; half /= 2)
        m_levels.push_back(m_levels.back().scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

const QImage& ImagePyramid::levelFor(double scale) const
{
    const double wanted = size().width() * scale;
    size_t level = 0;
    while (level + 1 < m_levels.size() && m_levels[level + 1].width() >= wanted)
        ++level;
    return m_levels[level];
}

} // namespace wendlore
