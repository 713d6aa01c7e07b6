#include "Decoder/PdfLinks.h"

#include <poppler-link.h>
#include <poppler-qt6.h>

namespace wendlore {

namespace {

/// The area of a link in points; the library tells it in parts of the page, at times upside down.
QRectF areaOf(const Poppler::Link& link, QSizeF page)
{
    const QRectF area = link.linkArea().normalized();
    return {area.x() * page.width(), area.y() * page.height(), area.width() * page.width(),
            area.height() * page.height()};
}

} // namespace

PdfLinks::PdfLinks(const QByteArray& bytes, const QString& password)
    : m_document(Poppler::Document::loadFromData(bytes, password.toUtf8(), password.toUtf8()))
{}

PdfLinks::~PdfLinks() = default;

QList<PdfLink> PdfLinks::of(int page) const
{
    QList<PdfLink> links;
    const std::unique_ptr<Poppler::Page> drawn(m_document ? m_document->page(page) : nullptr);
    if (!drawn)
        return links;
    for (const auto& link : drawn->links()) {
        const QRectF area = areaOf(*link, drawn->pageSizeF());
        if (const auto* browse = dynamic_cast<const Poppler::LinkBrowse*>(link.get())) {
            links.append({area, QUrl(browse->url()), {}});
        } else if (const auto* inside = dynamic_cast<const Poppler::LinkGoto*>(link.get());
                   inside && !inside->isExternal()) {
            const Poppler::LinkDestination place = inside->destination();
            const std::unique_ptr<Poppler::Page> target(m_document->page(place.pageNumber() - 1));
            if (!target)
                continue;
            const QSizeF size = target->pageSizeF();
            const QPointF point(place.isChangeLeft() ? place.left() * size.width() : 0,
                                place.isChangeTop() ? place.top() * size.height() : 0);
            links.append({area, {}, {place.pageNumber() - 1, point}});
        }
    }
    return links;
}

} // namespace wendlore
