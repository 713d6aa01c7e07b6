#pragma once

#include "Decoder/PdfParts.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>

namespace wendlore {

class PdfDocument;
class ScheduledTask;
class Scheduler;

/// The links of the pages that were seen, found in the background, one page after the other.
class PdfPageLinks final : public QObject
{
    Q_OBJECT

public:
    PdfPageLinks(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, QObject* parent = nullptr);
    ~PdfPageLinks() override;

    /// Finds the links of `page`, once.
    void want(int page);
    /// The link at a place, as far as links are found.
    [[nodiscard]] std::optional<PdfLink> at(const PdfPoint& place) const;

private:
    void findNext();

    Scheduler& m_scheduler;
    std::shared_ptr<PdfDocument> m_document;
    QList<int> m_wanted;
    QHash<int, QList<PdfLink>> m_links;
    std::unique_ptr<ScheduledTask> m_finding;
};

} // namespace wendlore
