#include "Decoder/QuickLookText.h"

#include "Decoder/QuickLookHighlighting.h"

#include <QLocale>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Where bytes that no text has are looked for.
constexpr qsizetype probeSize = 8192;
/// Lines that are laid out together; the engine leaves out those that are not on screen.
constexpr int chunkLines = 100;

std::optional<QStringConverter::Encoding> markedEncoding(const QByteArray& bytes)
{
    const auto encoding = QStringConverter::encodingForData(bytes);
    return encoding && *encoding != QStringConverter::Utf8 ? encoding : std::nullopt;
}

/// Cuts off what an end in the middle of a line, or of a letter, leaves.
void dropUnfinishedLine(QByteArray& bytes)
{
    const qsizetype end = bytes.lastIndexOf('\n');
    if (end > 0)
        bytes.truncate(end + 1);
    while (!bytes.isEmpty() && (bytes.back() & 0x80) != 0)
        bytes.chop(1);
}

} // namespace

QString TextBeginning::notice() const
{
    if (isWhole)
        return {};
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    return u"Filen är %1. Här visas de första %2."_s.arg(
        swedish.formattedDataSize(fileSize, 1, QLocale::DataSizeSIFormat),
        swedish.formattedDataSize(shownTextSize, 0, QLocale::DataSizeSIFormat));
}

std::optional<QString> decodedText(const QByteArray& bytes)
{
    if (const auto encoding = markedEncoding(bytes))
        return QStringDecoder(*encoding)(bytes);
    if (QByteArrayView(bytes).first(std::min(probeSize, bytes.size())).contains('\0'))
        return std::nullopt;
    QStringDecoder decoder(QStringConverter::Utf8);
    QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

std::optional<TextBeginning> readTextBeginning(const QuickLookFile& file, qint64 limit)
{
    if (!file.isOpen())
        return std::nullopt;
    TextBeginning beginning;
    QByteArray bytes = file.contents().read(limit);
    beginning.fileSize = std::max(file.contents().size(), qint64(bytes.size()));
    beginning.isWhole = beginning.fileSize <= bytes.size();
    if (!beginning.isWhole && !markedEncoding(bytes))
        dropUnfinishedLine(bytes);
    auto text = decodedText(bytes);
    if (!text)
        return std::nullopt;
    beginning.text = std::move(*text);
    return beginning;
}

QuickLookPage textPage(const TextBeginning& beginning, const QString& extension)
{
    QuickLookPage page;
    page.body = noticeMarkup(beginning.notice()) + "<pre>";
    int lines = 0;
    page.body += "<div>";
    highlight(beginning.text, extension, [&](QByteArrayView markup) {
        page.body += markup;
        if (markup == "\n" && ++lines % chunkLines == 0)
            page.body += "</div><div>";
    });
    page.body += "</div></pre>";
    return page;
}

} // namespace wendlore
