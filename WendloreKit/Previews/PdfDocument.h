#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QMutex>
#include <QPolygonF>

#include <memory>

class QBuffer;
class QPdfDocument;

namespace wendlore {

/// A part of a page's text: what it says, and the areas that it covers, in points from the page's top left.
struct PdfText final
{
    QString text;
    QList<QRectF> areas;
};

/// A point of a page, in points from its top left corner.
struct PdfPoint final
{
    int page = 0;
    QPointF point;
};

/// A place where a searched text was found.
struct PdfMatch final
{
    int page = 0;
    QList<QRectF> areas;
};

/// An open PDF file. All of it may take long and is meant for the background; calls from several threads wait
/// for each other.
class PdfDocument final
{
public:
    enum class State { ready, locked, damaged };

    PdfDocument();
    ~PdfDocument();

    /// Opens the document in `bytes`. `locked` when `password` does not open it.
    State open(const QByteArray& bytes, const QString& password);
    /// Opens the file itself, for one that cannot be read as a whole.
    State open(const FileURL& file, const QString& password);

    /// The pages' sizes in points.
    [[nodiscard]] QList<QSizeF> pageSizes();
    /// The part `clip` of a page that is `whole` pixels large.
    [[nodiscard]] QImage render(int page, QSize whole, const QRect& clip);
    /// All text of a page.
    [[nodiscard]] PdfText text(int page);
    /// The text between two points, which may lie on different pages.
    [[nodiscard]] QList<PdfMatch> textBetween(PdfPoint from, PdfPoint to, QString* text);
    /// Where `words` stand on a page, whatever their case and wherever the lines break.
    [[nodiscard]] QList<PdfMatch> find(int page, const QString& words);

private:
    [[nodiscard]] State state() const;
    [[nodiscard]] PdfText selection(int page, QPointF from, QPointF to);

    QMutex m_mutex;
    std::unique_ptr<QBuffer> m_buffer;
    std::unique_ptr<QPdfDocument> m_document;
};

/// The point of `areas` that is nearest to `point`: for pointers beside a line of text. Unchanged without
/// areas.
[[nodiscard]] QPointF nearestPoint(const QList<QRectF>& areas, QPointF point);

} // namespace wendlore
