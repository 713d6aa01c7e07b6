#include "Decoder/QuickLookMarkup.h"

#include "Decoder/QuickLookPage.h"

#include <QSet>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// More than a document has; the web engine lays elements out recursively.
constexpr qsizetype maximumDepth = 100;

const QSet<QString> kept{u"p"_s,          u"h1"_s,     u"h2"_s,         u"h3"_s,   u"h4"_s,    u"h5"_s,
                         u"h6"_s,         u"em"_s,     u"strong"_s,     u"i"_s,    u"b"_s,     u"u"_s,
                         u"s"_s,          u"sub"_s,    u"sup"_s,        u"ul"_s,   u"ol"_s,    u"li"_s,
                         u"blockquote"_s, u"pre"_s,    u"code"_s,       u"div"_s,  u"table"_s, u"thead"_s,
                         u"tbody"_s,      u"tr"_s,     u"td"_s,         u"th"_s,   u"dl"_s,    u"dt"_s,
                         u"dd"_s,         u"figure"_s, u"figcaption"_s, u"small"_s};
const QSet<QString> dropped{u"script"_s, u"style"_s, u"iframe"_s, u"object"_s, u"form"_s, u"template"_s};

/// The names of characters that XHTML knows and XML does not. Others are rare enough to be left out.
class Entities final : public QXmlStreamEntityResolver
{
public:
    QString resolveUndeclaredEntity(const QString& name) override
    {
        static const QHash<QString, QString> known{
            {u"nbsp"_s, u"\u00a0"_s}, {u"shy"_s, u"\u00ad"_s}, {u"ndash"_s, u"–"_s}, {u"mdash"_s, u"—"_s},
            {u"hellip"_s, u"…"_s},    {u"lsquo"_s, u"‘"_s},    {u"rsquo"_s, u"’"_s}, {u"ldquo"_s, u"“"_s},
            {u"rdquo"_s, u"”"_s},     {u"laquo"_s, u"«"_s},    {u"raquo"_s, u"»"_s}, {u"aring"_s, u"å"_s},
            {u"auml"_s, u"ä"_s},      {u"ouml"_s, u"ö"_s},     {u"Aring"_s, u"Å"_s}, {u"Auml"_s, u"Ä"_s},
            {u"Ouml"_s, u"Ö"_s},      {u"eacute"_s, u"é"_s},   {u"uuml"_s, u"ü"_s},  {u"copy"_s, u"©"_s},
            {u"middot"_s, u"·"_s},    {u"times"_s, u"×"_s},    {u"deg"_s, u"°"_s},   {u"euro"_s, u"€"_s},
        };
        return known.value(name, u" "_s);
    }
};

class Cleaner final
{
public:
    Cleaner(const QByteArray& xhtml, const std::function<QString(const QString&)>& imageAddress)
        : m_reader(xhtml)
        , m_imageAddress(imageAddress)
    {
        m_reader.setNamespaceProcessing(false); // names without a declaration are fine
        m_reader.setEntityResolver(&m_entities);
    }

    SafeMarkup run(const QuickLookLimits& limits)
    {
        while (!m_reader.atEnd() && !limits.areReached()) {
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement:
                start(m_reader.name().toString().toLower());
                break;
            case QXmlStreamReader::EndElement:
                end();
                break;
            case QXmlStreamReader::Characters:
                text(m_reader.text().toString());
                break;
            default:
                break;
            }
        }
        while (!m_open.isEmpty())
            end();
        m_result.title = m_result.title.simplified();
        if (m_result.title.isEmpty())
            m_result.title = m_documentTitle.simplified();
        return std::move(m_result);
    }

private:
    void start(const QString& name)
    {
        if (m_droppedDepth > 0 || dropped.contains(name)) {
            ++m_droppedDepth;
            return;
        }
        const bool isShown = kept.contains(name) && m_open.size() < maximumDepth;
        if (name == "br"_L1 || name == "hr"_L1)
            m_result.body += '<' + name.toLatin1() + '>';
        else if (name == "img"_L1 || name == "image"_L1)
            image();
        else if (isShown)
            m_result.body += '<' + name.toLatin1() + '>';
        m_open.append(isShown || name == "title"_L1 ? name : QString());
    }

    void image()
    {
        QString source;
        for (const QXmlStreamAttribute& attribute : m_reader.attributes()) {
            const QStringView name = attribute.qualifiedName();
            if (name == u"src" || name == u"href" || name == u"xlink:href")
                source = attribute.value().toString();
        }
        const QString address = m_imageAddress(source);
        if (!address.isEmpty())
            m_result.body += "<img src=\"" + escaped(address) + "\" alt=\"\">";
    }

    void end()
    {
        if (m_droppedDepth > 0) {
            --m_droppedDepth;
            return;
        }
        if (m_open.isEmpty())
            return;
        const QString name = m_open.takeLast();
        if (!kept.contains(name))
            return;
        m_result.body += "</" + name.toLatin1() + '>';
        m_hasTitle = m_hasTitle || (isHeading(name) && !m_result.title.trimmed().isEmpty());
    }

    void text(const QString& text)
    {
        if (m_droppedDepth > 0)
            return;
        if (m_open.contains(u"title"_s)) {
            m_documentTitle += text;
            return;
        }
        m_result.body += escaped(text);
        if (!m_hasTitle && std::ranges::any_of(m_open, isHeading))
            m_result.title += text;
    }

    static bool isHeading(const QString& name)
    {
        return name.size() == 2 && name[0] == u'h' && name[1] >= u'1' && name[1] <= u'3';
    }

    Entities m_entities;
    QXmlStreamReader m_reader;
    const std::function<QString(const QString&)>& m_imageAddress;
    SafeMarkup m_result;
    QString m_documentTitle;
    bool m_hasTitle = false;
    /// The elements that the text stands in; empty names for those that are not shown.
    QStringList m_open;
    /// How deep within an element that is left out with all it holds.
    int m_droppedDepth = 0;
};

} // namespace

SafeMarkup safeMarkup(const QByteArray& xhtml, const std::function<QString(const QString&)>& imageAddress,
                      const QuickLookLimits& limits)
{
    return Cleaner(xhtml, imageAddress).run(limits);
}

} // namespace wendlore
