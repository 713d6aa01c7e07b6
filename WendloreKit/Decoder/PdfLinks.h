#pragma once

#include "Decoder/PdfParts.h"

#include <QByteArray>

#include <memory>

namespace Poppler {
class Document;
}

namespace wendlore {

/// The links of a PDF file, which the library that draws the pages does not tell of.
class PdfLinks final
{
public:
    PdfLinks(const QByteArray& bytes, const QString& password);
    ~PdfLinks();
    Q_DISABLE_COPY_MOVE(PdfLinks)

    /// The links of a page that lead to an address or to a page.
    [[nodiscard]] QList<PdfLink> of(int page) const;

private:
    std::unique_ptr<Poppler::Document> m_document;
};

} // namespace wendlore
