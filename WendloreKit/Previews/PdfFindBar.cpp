#include "Previews/PdfFindBar.h"

#include "Editor/Scheduler.h"

#include <algorithm>

namespace wendlore {

namespace {

/// Few enough that the first matches show at once.
constexpr int pagesAtATime = 8;
/// Nobody steps through more, and all of them are drawn.
constexpr int maximumMatches = 5000;

} // namespace

PdfFindBar::PdfFindBar(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, int pageCount,
                       QWidget* parent)
    : FindBar(parent)
    , m_scheduler(scheduler)
    , m_document(std::move(document))
    , m_pageCount(pageCount)
{}

PdfFindBar::~PdfFindBar() = default;

void PdfFindBar::search(const QString& words)
{
    m_searching.reset();
    m_matches.clear();
    m_current = -1;
    if (words.isEmpty())
        report();
    else
        searchFrom(0, words);
}

void PdfFindBar::searchFrom(int page, const QString& words)
{
    const int end = std::min(page + pagesAtATime, m_pageCount);
    m_searching =
        m_scheduler.inBackground([this, document = m_document, page, end, words]() -> std::function<void()> {
            QList<PdfMatch> found;
            for (int each = page; each < end; ++each)
                found += document->find(each, words);
            return [this, found, end, words] {
                m_matches += found;
                if (m_current < 0 && !m_matches.isEmpty())
                    m_current = 0;
                if (end < m_pageCount && m_matches.size() < maximumMatches)
                    searchFrom(end, words);
                else
                    m_searching.reset();
                report();
            };
        });
}

void PdfFindBar::step(int way)
{
    if (m_matches.isEmpty())
        return;
    const int count = int(m_matches.size());
    m_current = (m_current + way + count) % count;
    report();
}

void PdfFindBar::report()
{
    showPlace(m_current + 1, int(m_matches.size()), !m_searching);
    Q_EMIT matchesChanged(m_matches, m_current);
}

} // namespace wendlore
