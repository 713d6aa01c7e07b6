#pragma once

#include "Decoder/DecoderWire.h"
#include "Decoder/MovingPicture.h"
#include "Decoder/PdfFile.h"

#include <QImage>

#include <optional>
#include <span>

class QDataStream;

namespace wendlore {

/// Answers what is asked about one file, in the process that reads it.
class DecoderAnswers final
{
public:
    /// `memory` is where the pixels of a picture go, if it is asked for.
    explicit DecoderAnswers(QByteArray file, std::span<uchar> memory = {});

    /// The answer, valid until the next question; empty where there is none.
    [[nodiscard]] DecoderMessage to(const QByteArray& question);

private:
    [[nodiscard]] DecoderMessage openPdf(QDataStream& question);
    [[nodiscard]] DecoderMessage drawPage(QDataStream& question);
    [[nodiscard]] DecoderMessage textOfPage(QDataStream& question);
    [[nodiscard]] DecoderMessage textBetween(QDataStream& question);
    [[nodiscard]] DecoderMessage findText(QDataStream& question);
    [[nodiscard]] DecoderMessage linksOfPage(QDataStream& question);
    [[nodiscard]] DecoderMessage decodePicture();
    [[nodiscard]] DecoderMessage sketchPicture();
    [[nodiscard]] DecoderMessage nextFrame();

    QByteArray m_file;
    std::span<uchar> m_memory;
    PdfFile m_pdf;
    std::optional<MovingPicture> m_movingPicture;
    QImage m_picture;
};

} // namespace wendlore
