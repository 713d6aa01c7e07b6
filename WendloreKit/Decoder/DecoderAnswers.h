#pragma once

#include "Decoder/MovingPicture.h"
#include "Decoder/PdfFile.h"

#include <QByteArray>
#include <QFile>

#include <optional>
#include <span>

class QDataStream;
class QImage;

namespace wendlore {

enum class DecoderTask : quint8;

/// Answers what is asked about one file, in the process that reads it.
class DecoderAnswers final
{
public:
    /// `file` is open already, and stays so; `memory` is where the pixels of pictures go.
    DecoderAnswers(int file, std::span<uchar> memory);

    /// The answer; empty where there is none.
    [[nodiscard]] QByteArray to(const QByteArray& question);

private:
    [[nodiscard]] QByteArray openPdf(QDataStream& question);
    [[nodiscard]] QByteArray drawPage(QDataStream& question);
    [[nodiscard]] QByteArray sizesOfPages(QDataStream& question);
    [[nodiscard]] QByteArray textOfPage(QDataStream& question);
    [[nodiscard]] QByteArray textBetween(QDataStream& question);
    [[nodiscard]] QByteArray findText(QDataStream& question);
    [[nodiscard]] QByteArray linksOfPage(QDataStream& question);
    [[nodiscard]] QByteArray decodePicture();
    [[nodiscard]] QByteArray sketchPicture();
    [[nodiscard]] QByteArray nextFrame();
    [[nodiscard]] QByteArray preview(DecoderTask task, QDataStream& question) const;

    /// The whole file. Previews do not need it, and are made of files that are too large for that.
    [[nodiscard]] const QByteArray& bytes();
    [[nodiscard]] PdfFile& pdf();

    template <typename... Values>
    [[nodiscard]] QByteArray picture(const QImage& picture, const Values&... values);

    int m_descriptor;
    std::span<uchar> m_memory;
    QFile m_file;
    QByteArray m_bytes;
    std::optional<PdfFile> m_pdf;
    std::optional<MovingPicture> m_movingPicture;
};

} // namespace wendlore
