#include "Previews/PdfLayout.h"

#include <algorithm>

namespace wendlore {

namespace {

double widest(const QList<QSizeF>& pages)
{
    double width = 0;
    for (const QSizeF& page : pages)
        width = std::max(width, page.width());
    return width;
}

} // namespace

PdfLayout::PdfLayout(const QList<QSizeF>& pages, double scale, double width)
    : m_scale(scale)
{
    const double across = std::max(width, widest(pages) * scale + 2 * margin);
    double top = margin;
    m_pages.reserve(pages.size());
    for (const QSizeF& page : pages) {
        const QSizeF drawn = page * scale;
        m_pages.append({QPointF((across - drawn.width()) / 2, top), drawn});
        top += drawn.height() + margin;
    }
    m_size = {across, top};
}

double PdfLayout::scaleToFit(const QList<QSizeF>& pages, double width)
{
    constexpr double smallest = 0.05;
    const double points = widest(pages);
    return points > 0 ? std::max((width - 2 * margin) / points, smallest) : 1;
}

int PdfLayout::pageAt(double y) const
{
    const auto below = std::ranges::upper_bound(m_pages, y, {}, &QRectF::top);
    return std::max(0, int(below - m_pages.begin()) - 1);
}

PdfPoint PdfLayout::pointAt(QPointF place) const
{
    const int page = pageAt(place.y());
    return {page, (place - m_pages.at(page).topLeft()) / m_scale};
}

QRectF PdfLayout::placeOf(int page, const QRectF& area) const
{
    return {m_pages.at(page).topLeft() + area.topLeft() * m_scale, area.size() * m_scale};
}

} // namespace wendlore
