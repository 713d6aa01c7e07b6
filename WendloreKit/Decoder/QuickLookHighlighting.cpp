#include "Decoder/QuickLookHighlighting.h"

#include "Decoder/QuickLookLanguage.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

using Write = std::function<void(QByteArrayView)>;

bool isWordStart(QChar c)
{
    return c.isLetter() || c == u'_' || c == u'@' || c == u'#';
}

bool isWordPart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'-';
}

/// Goes over a text once, piece by piece.
class Highlighter final
{
public:
    Highlighter(QStringView text, const QuickLookLanguage& language, const Write& write)
        : m_text(text)
        , m_language(language)
        , m_write(write)
    {}

    void run()
    {
        while (m_at < m_text.size())
            next();
        flush();
    }

private:
    void next()
    {
        const QChar c = m_text[m_at];
        for (const auto& [start, end] : m_language.blockComments) {
            if (m_text.sliced(m_at).startsWith(start))
                return mark("c", endOf(end, m_at + start.size()));
        }
        if (startsLineComment())
            return mark("c", lineEnd());
        if (m_language.quotes.contains(c))
            return mark(isFollowedByColon(stringEnd()) ? "p" : "s", stringEnd());
        if (c.isDigit() && m_language.hasNumbers)
            return mark("n", wordEnd());
        if (m_language.tags && c == u'<')
            return mark("k", endOf(u">"_s, m_at + 1));
        if (isWordStart(c))
            return word();
        ++m_at;
    }

    void word()
    {
        const qsizetype end = wordEnd();
        const QString word = m_text.sliced(m_at, end - m_at).toString();
        if (m_language.words.contains(m_language.isCaseSensitive ? word : word.toUpper()))
            mark("k", end);
        else if (m_language.keys && isFollowedByColon(end))
            mark("p", end);
        else
            m_at = end;
    }

    [[nodiscard]] bool startsLineComment() const
    {
        for (const QString& start : m_language.lineComments) {
            const bool isFree = start != u"#"_s || m_at == 0 || m_text[m_at - 1].isSpace();
            if (isFree && m_text.sliced(m_at).startsWith(start))
                return true;
        }
        return false;
    }

    [[nodiscard]] qsizetype lineEnd() const { return endOf(u"\n"_s, m_at) - (m_endIsFound ? 1 : 0); }

    [[nodiscard]] qsizetype endOf(const QString& mark, qsizetype from) const
    {
        const qsizetype found = m_text.indexOf(mark, from);
        m_endIsFound = found >= 0;
        return m_endIsFound ? found + mark.size() : m_text.size();
    }

    /// A string ends with its line at the latest.
    [[nodiscard]] qsizetype stringEnd() const
    {
        qsizetype end = m_at + 1;
        while (end < m_text.size() && m_text[end] != u'\n') {
            if (m_text[end] == u'\\' && end + 1 < m_text.size() && m_text[end + 1] != u'\n')
                ++end;
            else if (m_text[end] == m_text[m_at])
                return end + 1;
            ++end;
        }
        return std::min(end, m_text.size());
    }

    [[nodiscard]] qsizetype wordEnd() const
    {
        qsizetype end = m_at + 1;
        while (end < m_text.size() &&
               (isWordPart(m_text[end]) || (m_text[end] == u'.' && m_text[m_at].isDigit())))
            ++end;
        return end;
    }

    [[nodiscard]] bool isFollowedByColon(qsizetype end) const
    {
        return m_language.keys && end < m_text.size() && (m_text[end] == u':' || m_text[end] == u'=');
    }

    /// Everything up to `end` belongs to the class.
    void mark(const char* name, qsizetype end)
    {
        flush();
        write(m_text.sliced(m_at, end - m_at), name);
        m_at = m_plainFrom = end;
    }

    void flush()
    {
        write(m_text.sliced(m_plainFrom, m_at - m_plainFrom), nullptr);
        m_plainFrom = m_at;
    }

    void write(QStringView piece, const char* name)
    {
        while (!piece.isEmpty()) {
            const qsizetype end = piece.indexOf(u'\n');
            const QStringView line = end < 0 ? piece : piece.first(end);
            const QByteArray markup = line.toString().toHtmlEscaped().toUtf8();
            if (!markup.isEmpty())
                m_write(name ? QByteArray("<i class=") + name + '>' + markup + "</i>" : markup);
            if (end < 0)
                return;
            m_write("\n");
            piece = piece.sliced(end + 1);
        }
    }

    QStringView m_text;
    const QuickLookLanguage& m_language;
    const Write& m_write;
    qsizetype m_at = 0;
    qsizetype m_plainFrom = 0;
    mutable bool m_endIsFound = false;
};

} // namespace

void highlight(QStringView text, const QString& extension, const Write& write)
{
    Highlighter(text, QuickLookLanguage::of(extension), write).run();
}

} // namespace wendlore
