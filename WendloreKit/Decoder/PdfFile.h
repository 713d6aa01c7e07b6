#pragma once

#include "Decoder/PdfParts.h"

#include <QByteArray>
#include <QImage>

#include <memory>

class QBuffer;
class QPdfDocument;

namespace wendlore {

class PdfLinks;

/// The document in the bytes of a PDF file.
class PdfFile final
{
public:
    explicit PdfFile(QByteArray bytes);
    ~PdfFile();
    Q_DISABLE_COPY_MOVE(PdfFile)

    /// Opens the document; `locked` when `password` does not.
    PdfState open(const QString& password);
    /// Whether there is a document to be asked for what follows.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

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

    /// Where the areas of a page lead that can be clicked.
    [[nodiscard]] QList<PdfLink> links(int page);

private:
    [[nodiscard]] PdfText selection(int page, QPointF from, QPointF to);

    QByteArray m_bytes;
    QString m_password;
    bool m_isOpen = false;
    std::unique_ptr<QBuffer> m_buffer;
    std::unique_ptr<QPdfDocument> m_document;
    std::unique_ptr<PdfLinks> m_links;
};

/// The point of `areas` that is nearest to `point`: for pointers beside a line of text. Unchanged without
/// areas.
[[nodiscard]] QPointF nearestPoint(const QList<QRectF>& areas, QPointF point);

} // namespace wendlore
