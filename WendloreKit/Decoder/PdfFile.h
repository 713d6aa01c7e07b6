#pragma once

#include "Decoder/PdfParts.h"

#include <QByteArray>
#include <QImage>

#include <memory>
#include <span>

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

    [[nodiscard]] int pageCount() const;
    /// The sizes in points of some pages from `first` on: of the first hundred of them. It takes a while for
    /// many, as each page has to be read.
    [[nodiscard]] QList<QSizeF> pageSizes(int first);
    /// The part `clip` of a page that is `whole` pixels large; its pixels lie in `memory` when there is some,
    /// and there is no drawing when they do not fit.
    [[nodiscard]] QImage render(int page, QSize whole, const QRect& clip, std::span<uchar> memory = {});
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
