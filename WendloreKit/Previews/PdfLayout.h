#pragma once

#include "Previews/PdfDocument.h"

#include <QList>
#include <QRectF>
#include <QSizeF>

namespace wendlore {

/// Where the pages of a document lie when they stand below each other, each in the middle.
class PdfLayout final
{
public:
    static constexpr double margin = 12; ///< around and between the pages, in pixels

    PdfLayout() = default;
    /// Pages of the sizes `pages` (in points), `scale` pixels a point, in a view that is `width` wide.
    PdfLayout(const QList<QSizeF>& pages, double scale, double width);

    /// The scale at which the widest page fills a view that is `width` wide.
    [[nodiscard]] static double scaleToFit(const QList<QSizeF>& pages, double width);

    [[nodiscard]] double scale() const { return m_scale; }
    [[nodiscard]] int pageCount() const { return int(m_pages.size()); }
    /// Everything, with its margins.
    [[nodiscard]] QSizeF size() const { return m_size; }
    [[nodiscard]] QRectF page(int page) const { return m_pages.at(page); }
    /// The page at the height `y`, or the one above when there is a gap.
    [[nodiscard]] int pageAt(double y) const;
    /// The point of a page at a place of the layout: of the page nearest to it.
    [[nodiscard]] PdfPoint pointAt(QPointF place) const;
    /// The place of a page's area in the layout.
    [[nodiscard]] QRectF placeOf(int page, const QRectF& area) const;

private:
    QList<QRectF> m_pages;
    QSizeF m_size;
    double m_scale = 1;
};

} // namespace wendlore
