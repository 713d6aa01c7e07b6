#include "Editor/NoteText.h"

#include <QStringDecoder>
#include <QTextBoundaryFinder>

namespace wendlore {

std::optional<QString> noteText(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    // What would not come back byte for byte must not be written over: that is the question here.
    if (text.toUtf8() != bytes)
        return std::nullopt;
    return text;
}

qsizetype characterCount(const QString& text)
{
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (boundaries.toNextBoundary() != -1)
        ++count;
    return count;
}

} // namespace wendlore
