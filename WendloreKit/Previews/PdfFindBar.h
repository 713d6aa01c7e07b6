#pragma once

#include "Previews/FindBar.h"
#include "Previews/PdfDocument.h"

#include <memory>

namespace wendlore {

class ScheduledTask;
class Scheduler;

/// Searches a PDF document for what is typed, page by page in the background, and goes from match to match.
class PdfFindBar final : public FindBar
{
    Q_OBJECT

public:
    PdfFindBar(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, int pageCount,
               QWidget* parent = nullptr);
    ~PdfFindBar() override;

    void step(int way) override;

Q_SIGNALS:
    /// What was found so far, and which of it is the current one (-1: none).
    void matchesChanged(const QList<wendlore::PdfMatch>& matches, int current);

private:
    void search(const QString& words) override;
    void searchFrom(int page, const QString& words);
    void report();

    Scheduler& m_scheduler;
    std::shared_ptr<PdfDocument> m_document;
    int m_pageCount;
    QList<PdfMatch> m_matches;
    int m_current = -1;
    std::unique_ptr<ScheduledTask> m_searching;
};

} // namespace wendlore
