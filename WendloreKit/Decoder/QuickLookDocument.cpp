#include "Decoder/QuickLookDocument.h"

#include "Decoder/QuickLookArchive.h"

#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qint64 largestText = 32'000'000;
/// In bytes of markup: what the engine can lay out at once.
constexpr qsizetype shownText = 4'000'000;
/// Tables in tables beyond this are text.
constexpr int deepestTable = 8;

const QString wordText = u"word/document.xml"_s;
const QString openText = u"content.xml"_s;

/// Goes over the document once. The names of the elements that matter are the same in both formats or do not
/// clash.
class Reader final
{
public:
    explicit Reader(const QByteArray& xml)
        : m_reader(xml)
    {}

    QByteArray run(const QuickLookLimits& limits)
    {
        while (!m_reader.atEnd() && m_markup.size() < shownText && !limits.areReached()) {
            const auto token = m_reader.readNext();
            if (token == QXmlStreamReader::StartElement)
                start(m_reader.name());
            else if (token == QXmlStreamReader::EndElement)
                end(m_reader.name());
            else if (token == QXmlStreamReader::Characters && m_isText)
                m_text += m_reader.text();
        }
        flush();
        return m_markup;
    }

private:
    void start(QStringView name)
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        if (name == u"p" || name == u"h") {
            flush();
            m_heading = name == u"h" ? 1 : 0;
            m_isText = !isWord();
            for (const QXmlStreamAttribute& attribute : attributes) {
                if (attribute.name() == u"outline-level")
                    m_heading = attribute.value().toInt();
            }
        } else if (name == u"pStyle") {
            m_heading = headingOf(attributes.isEmpty() ? QStringView() : attributes.first().value());
        } else if (name == u"t") {
            m_isText = true;
        } else if (name == u"tab") {
            m_text += u'\t';
        } else if (name == u"s") {
            m_text += u' ';
        } else if (name == u"br" || name == u"line-break") {
            m_text += u'\n';
        } else {
            table(name);
        }
    }

    void table(QStringView name)
    {
        if (name == u"tbl" || name == u"table") {
            flush();
            if (++m_tables <= deepestTable)
                m_markup += "<table>";
        } else if (m_tables > 0 && m_tables <= deepestTable) {
            if (name == u"tr" || name == u"table-row")
                m_markup += "<tr>";
            else if (name == u"tc" || name == u"table-cell")
                m_markup += "<td>";
        }
    }

    void end(QStringView name)
    {
        if (name == u"p" || name == u"h") {
            flush();
            m_isText = false;
        } else if (name == u"t") {
            m_isText = false;
        } else if (name == u"tbl" || name == u"table") {
            flush();
            if (m_tables-- <= deepestTable)
                m_markup += "</table>";
        }
    }

    /// Ends the paragraph.
    void flush()
    {
        const QString text = std::exchange(m_text, QString());
        if (text.trimmed().isEmpty())
            return;
        const QByteArray element = m_heading > 0 ? "h" + QByteArray::number(std::min(m_heading, 6)) : "p";
        m_markup += '<' + element + '>' + escaped(text).replace('\n', "<br>") + "</" + element + '>';
    }

    [[nodiscard]] bool isWord() const { return m_reader.namespaceUri().contains(u"wordprocessingml"_s); }

    /// 2 for the style "Heading2" or "Rubrik2"; 0 for other styles.
    [[nodiscard]] static int headingOf(QStringView style)
    {
        const bool isHeading =
            style.startsWith(u"Heading", Qt::CaseInsensitive) || style.startsWith(u"Rubrik");
        return isHeading && style.back().isDigit() ? style.back().digitValue() : style == u"Title" ? 1 : 0;
    }

    QXmlStreamReader m_reader;
    QByteArray m_markup;
    QString m_text;
    int m_heading = 0;
    int m_tables = 0;
    bool m_isText = false;
};

} // namespace

std::optional<QuickLookPage> documentTextPage(const QuickLookFile& file, const QuickLookLimits& limits)
{
    const QString extension = file.extension();
    if (extension != "docx"_L1 && extension != "odt"_L1)
        return std::nullopt;
    const QString& wanted = extension == "docx"_L1 ? wordText : openText;
    const auto files = readArchive(
        file, [&wanted](const QString& path) { return path == wanted; }, largestText, limits);
    const QByteArray markup = Reader(files.value(wanted)).run(limits);
    if (markup.isEmpty())
        return std::nullopt;
    QuickLookPage page;
    page.body =
        noticeMarkup(u"Dokumentets text, utan dess utseende."_s) + "<article>" + markup + "</article>";
    return page;
}

} // namespace wendlore
