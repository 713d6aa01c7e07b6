#include "Decoder/QuickLookMail.h"

#include "Decoder/QuickLookText.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int maximumDepth = 8;

QString inCharset(const QByteArray& bytes, const QByteArray& charset)
{
    QStringDecoder decoder(charset.isEmpty() ? "utf-8" : charset.constData());
    if (!decoder.isValid())
        return decodedText(bytes).value_or(QString::fromLatin1(bytes));
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

int hexValue(char c)
{
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                  : -1;
}

QByteArray fromQuotedPrintable(const QByteArray& bytes)
{
    QByteArray decoded;
    decoded.reserve(bytes.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '=') {
            decoded += bytes[i];
            continue;
        }
        const QByteArray next = bytes.mid(i + 1, 2);
        if (next.startsWith('\n')) {
            i += 1;
        } else if (next.startsWith("\r\n")) {
            i += 2;
        } else if (next.size() == 2 && hexValue(next[0]) >= 0 && hexValue(next[1]) >= 0) {
            decoded += static_cast<char>(hexValue(next[0]) * 16 + hexValue(next[1]));
            i += 2;
        } else {
            decoded += '=';
        }
    }
    return decoded;
}

/// One part of a message: headers, an empty line, and the body.
struct Part final
{
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;

    explicit Part(const QByteArray& bytes)
    {
        qsizetype at = 0;
        while (at < bytes.size()) {
            qsizetype end = bytes.indexOf('\n', at);
            end = end < 0 ? bytes.size() : end;
            const QByteArray line = bytes.mid(at, end - at);
            at = end + 1;
            const QByteArray trimmed = line.trimmed();
            if (trimmed.isEmpty())
                break;
            const qsizetype colon = line.indexOf(':');
            if ((line[0] == ' ' || line[0] == '\t') && !headers.isEmpty())
                headers.last().second += ' ' + trimmed;
            else if (colon > 0)
                headers.append({line.first(colon).trimmed().toLower(), line.mid(colon + 1).trimmed()});
        }
        body = bytes.mid(at);
    }

    [[nodiscard]] QByteArray header(QByteArrayView name) const
    {
        for (const auto& [key, value] : headers) {
            if (key == name)
                return value;
        }
        return {};
    }

    /// "text/plain" of "text/plain; charset=utf-8".
    [[nodiscard]] QByteArray type() const
    {
        const QByteArray type = header("content-type").split(';').first().trimmed().toLower();
        return type.isEmpty() ? QByteArray("text/plain") : type;
    }

    [[nodiscard]] static QByteArray parameter(const QByteArray& value, const QByteArray& name)
    {
        const QRegularExpression pattern(
            u"(?:^|;)\\s*%1\\*?\\s*=\\s*(?:\"([^\"]*)\"|([^;\\s]+))"_s.arg(QString::fromLatin1(name)),
            QRegularExpression::CaseInsensitiveOption);
        const auto match = pattern.match(QString::fromUtf8(value));
        return (match.captured(1) + match.captured(2)).toUtf8();
    }

    [[nodiscard]] QString text() const
    {
        const QByteArray encoding = header("content-transfer-encoding").toLower();
        const QByteArray bytes = encoding == "base64"             ? QByteArray::fromBase64(body)
                                 : encoding == "quoted-printable" ? fromQuotedPrintable(body)
                                                                  : body;
        return inCharset(bytes, parameter(header("content-type"), "charset"));
    }
};

/// Takes in what a part, and the parts in it, give to the message.
void collect(const Part& part, MailMessage& message, QString& html, int depth)
{
    const QByteArray name = Part::parameter(part.header("content-disposition"), "filename");
    if (part.type().startsWith("multipart/") && depth < maximumDepth) {
        const QByteArray boundary = Part::parameter(part.header("content-type"), "boundary");
        if (boundary.isEmpty())
            return;
        const QByteArray mark = "\n--" + boundary;
        const QByteArray body = '\n' + part.body;
        qsizetype at = body.indexOf(mark);
        while (at >= 0) {
            const qsizetype start = body.indexOf('\n', at + 1) + 1;
            const qsizetype end = start > 0 ? body.indexOf(mark, start - 1) : -1;
            if (end < 0)
                break;
            collect(Part(body.mid(start, end - start)), message, html, depth + 1);
            at = end;
        }
    } else if (!name.isEmpty() || !part.type().startsWith("text/")) {
        message.attachments.append(name.isEmpty() ? QString::fromLatin1(part.type()) : decodedHeader(name));
    } else if (part.type() == "text/html") {
        html += part.text();
    } else {
        message.text += part.text();
    }
}

/// When the mail was sent, as it is said here and in this place's time; as it stands when it is no date.
QString shownDate(const QString& value)
{
    const QDateTime time = QDateTime::fromString(value.section(u'(', 0, 0).trimmed(), Qt::RFC2822Date);
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    return time.isValid() ? swedish.toString(time.toLocalTime(), u"d MMMM yyyy HH:mm"_s) : value;
}

} // namespace

QString decodedHeader(const QByteArray& value)
{
    static const QRegularExpression word(u"=\\?([^?\\s]+)\\?([bBqQ])\\?([^?]*)\\?="_s);
    static const QRegularExpression between(u"\\?=\\s+=\\?"_s);
    const QString source = inCharset(value, {}).replace(between, u"?==?"_s);
    QString decoded;
    qsizetype at = 0;
    for (auto matches = word.globalMatch(source); matches.hasNext();) {
        const auto match = matches.next();
        const QByteArray content = match.captured(3).toLatin1();
        const bool isBase64 = match.captured(2).toLower() == u"b"_s;
        decoded += QStringView(source).sliced(at, match.capturedStart() - at);
        decoded += inCharset(isBase64 ? QByteArray::fromBase64(content)
                                      : fromQuotedPrintable(QByteArray(content).replace('_', ' ')),
                             match.captured(1).section(u'*', 0, 0).toLatin1());
        at = match.capturedEnd();
    }
    return decoded.append(QStringView(source).sliced(at));
}

QString textOfHtml(const QString& html)
{
    static const QRegularExpression hidden(u"<(script|style|head)\\b.*?</\\1\\s*>|<!--.*?-->"_s,
                                           QRegularExpression::CaseInsensitiveOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression breaks(u"<(?:br|/p|/div|/tr|/li|/h[1-6])\\b[^>]*>"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tags(u"<[a-zA-Z/!?][^>]*>?"_s);
    static const QRegularExpression blankLines(u"\\n[ \\t\\x{a0}]*(?:\\n[ \\t\\x{a0}]*)+"_s);
    static const std::pair<QString, QString> entities[] = {
        {u"&nbsp;"_s, u"\u00a0"_s}, {u"&lt;"_s, u"<"_s},   {u"&gt;"_s, u">"_s},   {u"&quot;"_s, u"\""_s},
        {u"&aring;"_s, u"å"_s},     {u"&auml;"_s, u"ä"_s}, {u"&ouml;"_s, u"ö"_s}, {u"&Aring;"_s, u"Å"_s},
        {u"&Auml;"_s, u"Ä"_s},      {u"&Ouml;"_s, u"Ö"_s}, {u"&#39;"_s, u"'"_s},  {u"&amp;"_s, u"&"_s}};
    QString text = html;
    text.remove(hidden);
    text.replace(u'\n', u' ').replace(u'\r', u' ');
    text.replace(breaks, u"\n"_s).remove(tags);
    for (const auto& [entity, letter] : entities)
        text.replace(entity, letter);
    return text.replace(blankLines, u"\n\n"_s).trimmed();
}

MailMessage MailMessage::parse(const QByteArray& bytes)
{
    MailMessage message;
    const Part whole(bytes);
    for (const auto& [name, value] : whole.headers)
        message.headers.append({name, decodedHeader(value)});
    QString html;
    collect(whole, message, html, 0);
    if (message.text.trimmed().isEmpty())
        message.text = textOfHtml(html);
    return message;
}

QString MailMessage::header(QByteArrayView name) const
{
    for (const auto& [key, value] : headers) {
        if (key == name)
            return value;
    }
    return {};
}

std::optional<QuickLookPage> mailPage(const QByteArray& bytes)
{
    const MailMessage message = MailMessage::parse(bytes);
    if (message.header("from").isEmpty() && message.header("subject").isEmpty())
        return std::nullopt;
    const QString subject = message.header("subject");
    QuickLookPage page;
    page.body = "<article><h1>" + escaped(subject.isEmpty() ? u"(Utan ämne)"_s : subject) +
                "</h1><table class=\"headers\">";
    for (const auto& [name, title] : {std::pair<QByteArray, QString>("from", u"Från"_s),
                                      {"to", u"Till"_s},
                                      {"cc", u"Kopia"_s},
                                      {"date", u"Datum"_s}}) {
        const QString header = message.header(name);
        const QString value = name == "date" ? shownDate(header) : header;
        if (!value.isEmpty())
            page.body += "<tr><td>" + escaped(title) + "</td><td>" + escaped(value) + "</td></tr>";
    }
    if (!message.attachments.isEmpty())
        page.body += "<tr><td>Bilagor</td><td>" + escaped(message.attachments.join(u", "_s)) + "</td></tr>";
    page.body += "</table><div class=\"letter\">" + escaped(message.text) + "</div></article>";
    return page;
}

} // namespace wendlore
