#pragma once

#include "Decoder/MovingPicture.h"
#include "Decoder/PdfFile.h"

#include <QByteArray>

#include <optional>
#include <span>

class QDataStream;
class QImage;

namespace wendlore {

/// Answers what is asked about one file, in the process that reads it.
class DecoderAnswers final
{
public:
    /// `memory` is where the pixels of pictures go.
    DecoderAnswers(QByteArray file, std::span<uchar> memory);

    /// The answer; empty where there is none.
    [[nodiscard]] QByteArray to(const QByteArray& question);

private:
    [[nodiscard]] QByteArray openPdf(QDataStream& question);
    [[nodiscard]] QByteArray drawPage(QDataStream& question);
    [[nodiscard]] QByteArray textOfPage(QDataStream& question);
    [[nodiscard]] QByteArray textBetween(QDataStream& question);
    [[nodiscard]] QByteArray findText(QDataStream& question);
    [[nodiscard]] QByteArray linksOfPage(QDataStream& question);
    [[nodiscard]] QByteArray decodePicture();
    [[nodiscard]] QByteArray sketchPicture();
    [[nodiscard]] QByteArray nextFrame();

    template <typename... Values>
    [[nodiscard]] QByteArray picture(const QImage& picture, const Values&... values);

    QByteArray m_file;
    std::span<uchar> m_memory;
    PdfFile m_pdf;
    std::optional<MovingPicture> m_movingPicture;
};

} // namespace wendlore
