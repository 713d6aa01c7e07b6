#pragma once

#include <QHash>
#include <QImage>
#include <QObject>

#include <memory>

namespace wendlore {

class PdfDocument;
class ScheduledTask;
class Scheduler;

/// A drawing of a page, or of a part of it.
struct PdfPageImage final
{
    QImage image;
    QSize whole; ///< the size of the whole page in that drawing
    QRect part;
};

/// One page that is seen: how large, in device pixels, and which part of it.
struct PdfWanted final
{
    int page = 0;
    QSize whole;
    QRect part;
};

/// The drawings of the pages that are seen, made one after the other in the background. A page too large to
/// be drawn as a whole is drawn coarsely, and the part of it that is seen finely.
class PdfPageImages final : public QObject
{
    Q_OBJECT

public:
    /// The pixels of a drawing of a whole page, at most.
    static constexpr qint64 maximumPixels = 8'000'000;

    PdfPageImages(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, QObject* parent = nullptr);
    ~PdfPageImages() override;

    /// Draws what is missing of `pages`, in their order, and forgets the others.
    void want(const QList<PdfWanted>& pages);
    /// What there is of a page, coarse before fine; perhaps in another size than wanted.
    [[nodiscard]] QList<PdfPageImage> imagesOf(int page) const;

Q_SIGNALS:
    void drawn(int page);

private:
    void drawNext();
    void draw(const PdfWanted& wanted, QHash<int, PdfPageImage>& store);

    Scheduler& m_scheduler;
    std::shared_ptr<PdfDocument> m_document;
    QList<PdfWanted> m_wanted;
    QHash<int, PdfPageImage> m_whole;
    QHash<int, PdfPageImage> m_parts;
    std::unique_ptr<ScheduledTask> m_drawing;
};

} // namespace wendlore
