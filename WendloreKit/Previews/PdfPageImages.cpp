#include "Previews/PdfPageImages.h"

#include "Previews/PdfDocument.h"

#include "Editor/Scheduler.h"

#include <algorithm>
#include <cmath>

namespace wendlore {

namespace {

qint64 pixels(QSize size)
{
    return qint64(size.width()) * size.height();
}

bool isTooLarge(QSize whole)
{
    return pixels(whole) > PdfPageImages::maximumPixels;
}

/// How a page that is to be `whole` large is drawn as a whole.
PdfWanted asWhole(const PdfWanted& wanted)
{
    QSize size = wanted.whole;
    if (isTooLarge(size))
        size = QSizeF(QSizeF(size) * std::sqrt(double(PdfPageImages::maximumPixels) / double(pixels(size))))
                   .toSize();
    size = size.expandedTo({1, 1});
    return {wanted.page, size, QRect(QPoint(), size)};
}

bool isMissing(const QHash<int, PdfPageImage>& store, const PdfWanted& wanted)
{
    const auto there = store.constFind(wanted.page);
    return there == store.constEnd() || there->whole != wanted.whole || !there->part.contains(wanted.part);
}

} // namespace

PdfPageImages::PdfPageImages(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, QObject* parent)
    : QObject(parent)
    , m_scheduler(scheduler)
    , m_document(std::move(document))
{}

PdfPageImages::~PdfPageImages() = default;

void PdfPageImages::want(const QList<PdfWanted>& pages)
{
    m_wanted = pages;
    const auto isForgotten = [&pages](const auto& entry) {
        return std::ranges::none_of(pages,
                                    [&](const PdfWanted& wanted) { return wanted.page == entry.key(); });
    };
    m_whole.removeIf(isForgotten);
    m_parts.removeIf(isForgotten);
    if (!m_drawing)
        drawNext();
}

QList<PdfPageImage> PdfPageImages::imagesOf(int page) const
{
    QList<PdfPageImage> images;
    for (const auto* store : {&m_whole, &m_parts}) {
        if (const auto there = store->constFind(page); there != store->constEnd())
            images.append(*there);
    }
    return images;
}

void PdfPageImages::drawNext()
{
    m_drawing.reset();
    for (const PdfWanted& wanted : std::as_const(m_wanted)) {
        if (const PdfWanted whole = asWhole(wanted); isMissing(m_whole, whole)) {
            draw(whole, m_whole);
            return;
        }
    }
    for (const PdfWanted& wanted : std::as_const(m_wanted)) {
        if (!isTooLarge(wanted.whole))
            m_parts.remove(wanted.page);
        else if (!wanted.part.isEmpty() && isMissing(m_parts, wanted)) {
            draw(wanted, m_parts);
            return;
        }
    }
}

void PdfPageImages::draw(const PdfWanted& wanted, QHash<int, PdfPageImage>& store)
{
    m_drawing =
        m_scheduler.inBackground([this, &store, wanted, document = m_document]() -> std::function<void()> {
            const QImage image = document->render(wanted.page, wanted.whole, wanted.part);
            return [this, &store, wanted, image] {
                store.insert(wanted.page, {image, wanted.whole, wanted.part});
                drawNext();
                Q_EMIT drawn(wanted.page);
            };
        });
}

} // namespace wendlore
