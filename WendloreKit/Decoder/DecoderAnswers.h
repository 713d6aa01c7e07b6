#pragma once

#include "Decoder/DecoderWire.h"
#include "Decoder/PdfFile.h"

#include <QImage>

class QDataStream;

namespace wendlore {

/// Answers what is asked about one file, in the process that reads it.
class DecoderAnswers final
{
public:
    explicit DecoderAnswers(QByteArray file);

    /// The answer, valid until the next question; empty where there is none.
    [[nodiscard]] DecoderMessage to(const QByteArray& question);

private:
    [[nodiscard]] DecoderMessage openPdf(QDataStream& question);
    [[nodiscard]] DecoderMessage drawPage(QDataStream& question);
    [[nodiscard]] DecoderMessage textOfPage(QDataStream& question);
    [[nodiscard]] DecoderMessage textBetween(QDataStream& question);
    [[nodiscard]] DecoderMessage findText(QDataStream& question);
    [[nodiscard]] DecoderMessage linksOfPage(QDataStream& question);
    [[nodiscard]] DecoderMessage decodePicture(QDataStream& question);

    QByteArray m_file;
    PdfFile m_pdf;
    QImage m_picture;
};

} // namespace wendlore
