#include "Decoder/QuickLookTable.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// More than anybody looks through; the engine lays a table out as a whole.
constexpr qsizetype shownCells = 50'000;

/// Goes over the text once.
class Reader final
{
public:
    Reader(QStringView text, QChar separator)
        : m_text(text)
        , m_separator(separator)
    {}

    [[nodiscard]] bool isAtEnd() const { return m_at >= m_text.size(); }

    QStringList row()
    {
        QStringList cells;
        do
            cells.append(cell());
        while (takeSeparator());
        if (!isAtEnd() && m_text[m_at] == u'\r')
            ++m_at;
        if (!isAtEnd() && m_text[m_at] == u'\n')
            ++m_at;
        return cells;
    }

private:
    bool takeSeparator()
    {
        if (isAtEnd() || m_text[m_at] != m_separator)
            return false;
        ++m_at;
        return true;
    }

    QString cell()
    {
        QString cell;
        if (!isAtEnd() && m_text[m_at] == u'"')
            cell = quoted();
        const qsizetype start = m_at;
        while (!isAtEnd() && m_text[m_at] != m_separator && m_text[m_at] != u'\n' && m_text[m_at] != u'\r')
            ++m_at;
        return cell.append(m_text.sliced(start, m_at - start));
    }

    QString quoted()
    {
        QString content;
        ++m_at;
        while (!isAtEnd()) {
            const qsizetype end = m_text.indexOf(u'"', m_at);
            content.append(m_text.sliced(m_at, (end < 0 ? m_text.size() : end) - m_at));
            m_at = end < 0 ? m_text.size() : end + 1;
            if (isAtEnd() || m_text[m_at] != u'"')
                break;
            content.append(u'"');
            ++m_at;
        }
        return content;
    }

    QStringView m_text;
    QChar m_separator;
    qsizetype m_at = 0;
};

bool isNumber(const QString& cell)
{
    return !cell.isEmpty() && std::ranges::all_of(cell, [](QChar c) {
        return c.isDigit() || c.isSpace() || QStringView(u".,-+%").contains(c);
    });
}

QByteArray rowMarkup(const QStringList& row, const char* element)
{
    QByteArray markup = "<tr>";
    for (const QString& cell : row) {
        const QByteArray kind = isNumber(cell) ? " class=\"number\">" : ">";
        markup += QByteArray("<") + element + kind + escaped(cell) + "</" + element + '>';
    }
    return markup + "</tr>";
}

} // namespace

QChar separatorOf(QStringView text)
{
    const QStringView line = text.first(std::max<qsizetype>(0, text.indexOf(u'\n')));
    const QStringView head = line.isEmpty() ? text.first(std::min<qsizetype>(text.size(), 4096)) : line;
    const QString separators = u",;\t|"_s;
    return *std::ranges::max_element(separators, {}, [&head](QChar c) { return head.count(c); });
}

QList<QStringList> tableRows(QStringView text, QChar separator, qsizetype limit)
{
    QList<QStringList> rows;
    Reader reader(text, separator);
    while (!reader.isAtEnd() && limit > 0) {
        rows.append(reader.row());
        limit -= rows.last().size();
    }
    return rows;
}

QuickLookPage tablePage(const TextBeginning& beginning)
{
    return tablePage(beginning, separatorOf(beginning.text));
}

QuickLookPage tablePage(const TextBeginning& beginning, QChar separator)
{
    const auto rows = tableRows(beginning.text, separator, shownCells);
    qsizetype cells = 0;
    QuickLookPage page;
    page.body = "<table>";
    for (const QStringList& row : rows) {
        page.body += cells == 0 ? "<thead>" + rowMarkup(row, "th") + "</thead>" : rowMarkup(row, "td");
        cells += row.size();
    }
    page.body += "</table>";
    const QString cut =
        cells >= shownCells ? u"Här visas de första %1 raderna."_s.arg(rows.size()) : QString();
    page.body.prepend(noticeMarkup(cut.isEmpty() ? beginning.notice() : cut));
    return page;
}

} // namespace wendlore
