#include "Previews/PdfPageLinks.h"

#include "Previews/PdfDocument.h"

#include "Editor/Scheduler.h"

#include <algorithm>

namespace wendlore {

PdfPageLinks::PdfPageLinks(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, QObject* parent)
    : QObject(parent)
    , m_scheduler(scheduler)
    , m_document(std::move(document))
{}

PdfPageLinks::~PdfPageLinks() = default;

void PdfPageLinks::want(int page)
{
    if (m_links.contains(page) || m_wanted.contains(page))
        return;
    m_wanted.append(page);
    if (!m_finding)
        findNext();
}

std::optional<PdfLink> PdfPageLinks::at(const PdfPoint& place) const
{
    const QList<PdfLink> links = m_links.value(place.page);
    const auto link = std::ranges::find_if(
        links, [&place](const PdfLink& each) { return each.area.contains(place.point); });
    return link == links.end() ? std::nullopt : std::optional(*link);
}

void PdfPageLinks::findNext()
{
    m_finding.reset();
    if (m_wanted.isEmpty())
        return;
    m_finding = m_scheduler.inBackground(
        [this, document = m_document, page = m_wanted.takeFirst()]() -> std::function<void()> {
            return [this, page, links = document->links(page)] {
                m_links.insert(page, links);
                findNext();
            };
        });
}

} // namespace wendlore
