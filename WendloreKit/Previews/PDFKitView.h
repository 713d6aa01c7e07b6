#pragma once

#include "Previews/PdfLayout.h"
#include "Previews/ZoomableView.h"

#include <QAbstractScrollArea>

#include <memory>
#include <optional>

namespace wendlore {

struct PdfPageImage;
class PdfPageImages;
class PdfPageLinks;
class ScheduledTask;
class Scheduler;

/// Shows the pages of a PDF document below each other, as wide as the view until the user zooms. Text can be
/// selected and copied, and links clicked.
class PDFKitView final : public QAbstractScrollArea, public ZoomableView
{
    Q_OBJECT

public:
    static constexpr double minimumScale = 0.1; ///< pixels a point
    static constexpr double maximumScale = 16;

    PDFKitView(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, QList<QSizeF> pages,
               QWidget* parent = nullptr);
    ~PDFKitView() override;

    [[nodiscard]] int pageCount() const { return int(m_pages.size()); }
    /// The page that takes the middle of the view, from 0.
    [[nodiscard]] int currentPage() const;
    /// Pixels a point.
    [[nodiscard]] double scale() const { return m_layout.scale(); }
    /// Makes the pages as wide as the view, and keeps them so when it is resized.
    void fitWidth();
    /// Zooms, with the same place of the document below `anchor`, a point of the view.
    void zoomBy(double factor, QPointF anchor);
    void zoomIn() override;
    void zoomOut() override;
    void resetZoom() override { fitWidth(); }
    void showPage(int page);
    /// Brings a point of a page to the top.
    void showPlace(const PdfPoint& place);

    /// Marks `matches`, `current` of them most clearly (-1: none), and brings that one into sight.
    void showMatches(const QList<PdfMatch>& matches, int current);

    /// The text that is selected; empty without a selection.
    [[nodiscard]] const QString& selectedText() const { return m_selectedText; }
    void select(PdfPoint from, PdfPoint to);
    void selectAll();
    void copy() const;

Q_SIGNALS:
    /// Another page is current, or the zoom changed.
    void placeChanged();
    void selectionChanged();
    /// A link was clicked that leads out of the document.
    void linkClicked(const QUrl& address);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// Lays the pages out, with `place` of the document (of the old layout) at `anchor` of the view.
    void layOut(double scale, QPointF place, QPointF anchor);
    void wantVisiblePages();
    /// Reads the sizes of the pages that are not known yet, and lays the pages out by them.
    void readSizes();
    void setSizes(const QList<QSizeF>& pages);
    [[nodiscard]] QPointF scrolled() const;
    [[nodiscard]] QRectF visibleArea() const;
    void paintPage(QPainter& painter, int page) const;
    void paintDrawing(QPainter& painter, const QRectF& area, const PdfPageImage& drawing) const;
    bool actOnKey(const QKeyEvent& event, bool isForReal);
    /// Shows by the pointer whether there is a link at that place of the view.
    void hover(QPointF position);
    void follow(const PdfLink& link);
    [[nodiscard]] std::optional<PdfLink> linkAt(QPointF position) const;

    Scheduler& m_scheduler;
    std::shared_ptr<PdfDocument> m_document;
    QList<QSizeF> m_pages;
    PdfLayout m_layout;
    PdfPageImages* m_images;
    PdfPageLinks* m_links;
    std::unique_ptr<ScheduledTask> m_readingSizes;
    bool m_isFitted = true;
    QList<PdfMatch> m_matches;
    int m_currentMatch = -1;
    std::optional<PdfPoint> m_dragged;
    /// The link that the button went down on.
    std::optional<PdfLink> m_pressed;
    QList<PdfMatch> m_selection;
    QString m_selectedText;
    std::unique_ptr<ScheduledTask> m_selecting;
};

} // namespace wendlore
