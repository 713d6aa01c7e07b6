#pragma once

#include "Previews/PdfDocument.h"

#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;

namespace wendlore {

class ScheduledTask;
class Scheduler;

/// Searches a PDF document for what is typed, page by page in the background, and goes from match to match.
class PdfFindBar final : public QWidget
{
    Q_OBJECT

public:
    PdfFindBar(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, int pageCount,
               QWidget* parent = nullptr);
    ~PdfFindBar() override;

    /// Shows the bar, ready to type in.
    void open();

Q_SIGNALS:
    /// What was found so far, and which of it is the current one (-1: none).
    void matchesChanged(const QList<wendlore::PdfMatch>& matches, int current);
    void closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void search();
    void searchFrom(int page);
    void step(int way);
    void close();
    void report();

    Scheduler& m_scheduler;
    std::shared_ptr<PdfDocument> m_document;
    int m_pageCount;
    QLineEdit* m_field;
    QLabel* m_count;
    QList<PdfMatch> m_matches;
    int m_current = -1;
    std::unique_ptr<ScheduledTask> m_searching;
};

} // namespace wendlore
