#pragma once

#include <QDataStream>
#include <QIODevice>

namespace wendlore {

/// What a decoder can be asked for. The question begins with the task; what follows it, and what the answer
/// holds, stands beside each. A picture is its size (empty: there is none) and whether parts of it can be
/// seen through; its pixels are in the memory for them until the next question.
enum class DecoderTask : quint8 {
    openPdf,         ///< password; gives the state, how many pages there are, and the sizes of the first
    drawPage,        ///< page, size of the whole page, part of it; gives a picture
    sizesOfPages,    ///< page; gives the sizes of some pages from there on
    textOfPage,      ///< page; gives a PdfText
    textBetween,     ///< two points; gives the text and its places
    findText,        ///< page, words; gives the places
    linksOfPage,     ///< page; gives the links
    decodePicture,   ///< gives a picture, and whether it moves
    sketchPicture,   ///< of a large photograph: gives a picture, coarser than it, and the photograph's size
    nextFrame,       ///< of a moving picture; gives a picture and how many milliseconds it is shown
    previewFile,     ///< the file's name, milliseconds that it may take; gives a QuickLookPage
    previewDocument, ///< the same, of a document of an office program
    pagesOfDocument, ///< the same; gives the PDF file that the document brings along
};

/// `values` as they are sent: a question when the first of them is its task, or an answer.
template <typename... Values>
[[nodiscard]] QByteArray decoderValues(const Values&... values)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    (stream << ... << values);
    return bytes;
}

/// Reads the values of an answer; false when it does not hold them.
template <typename... Values>
[[nodiscard]] bool readAnswer(const QByteArray& answer, Values&... values)
{
    QDataStream stream(answer);
    (stream >> ... >> values);
    return stream.status() == QDataStream::Ok;
}

} // namespace wendlore
