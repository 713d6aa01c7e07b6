#include "Vault/SearchNeedle.h"

#include <QRandomGenerator>
#include <QTest>

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>

#include <memory>
#include <string>

using namespace wendlore;

namespace {

/// The rule in its plainest form, on whole strings: slow and obviously correct. Gives the first line that
/// holds the query.
class Model final
{
public:
    static std::optional<std::string> firstLine(const std::string& text, const std::string& query)
    {
        const icu::UnicodeString form = folded(icu::UnicodeString::fromUTF8(query));
        icu::UnicodeString rest = icu::UnicodeString::fromUTF8(text);
        if (rest.startsWith(u"\uFEFF"))
            rest.remove(0, 1);
        icu::UnicodeString line;
        for (int i = 0; i <= rest.length(); ++i) {
            const char16_t unit = i < rest.length() ? rest[i] : u'\n';
            const bool isEnd =
                (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
            if (!isEnd) {
                line.append(unit);
                continue;
            }
            if (holds(line, form)) {
                std::string bytes;
                return line.toUTF8String(bytes);
            }
            line.remove();
        }
        return std::nullopt;
    }

private:
    static icu::UnicodeString folded(const icu::UnicodeString& text)
    {
        UErrorCode status = U_ZERO_ERROR;
        const auto& nfd = *icu::Normalizer2::getNFDInstance(status);
        icu::UnicodeString form = nfd.normalize(text, status);
        return nfd.normalize(form.foldCase(), status);
    }

    /// Tries every pair of places between characters.
    static bool holds(const icu::UnicodeString& line, const icu::UnicodeString& form)
    {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::BreakIterator> breaks(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        breaks->setText(line);
        std::vector<int> places;
        for (int place = breaks->first(); place != icu::BreakIterator::DONE; place = breaks->next())
            places.push_back(place);
        for (std::size_t from = 0; from < places.size(); ++from) {
            for (std::size_t to = from + 1; to < places.size(); ++to) {
                if (folded(icu::UnicodeString(line, places[from], places[to] - places[from])) == form)
                    return true;
            }
        }
        return false;
    }
};

std::optional<std::string> found(const SearchNeedle& needle, std::string text)
{
    const std::size_t size = text.size();
    text.resize(size + ByteScanner::padding, 'x');
    const auto line = needle.firstLine(std::string_view(text).substr(0, size));
    return line ? std::optional(text.substr(line->start, line->end - line->start)) : std::nullopt;
}

} // namespace

class SearchNeedleTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatReadersCallTheSame_data();
    void findsWhatReadersCallTheSame();
    void turkishKeepsItsOwnI();
    void givesTheFirstLineThatMatches_data();
    void givesTheFirstLineThatMatches();
    void findsAtEveryDistanceFromTheTextsEnds_data();
    void findsAtEveryDistanceFromTheTextsEnds();
    void agreesWithThePlainRuleOnRandomTexts_data();
    void agreesWithThePlainRuleOnRandomTexts();
};

void SearchNeedleTests::findsWhatReadersCallTheSame_data()
{
    QTest::addColumn<QByteArray>("query");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char* name, const char* query, const char* text, bool isFound) {
        QTest::newRow(name) << QByteArray(query) << QByteArray(text) << isFound;
    };
    row("case", "möte", "Ett MÖTE till", true);
    row("accents count", "möte", "ett mote till", false);
    row("decomposed text", "möte", "ett mo\u0308te", true);
    row("decomposed query", "mo\u0308te", "ett Möte", true);
    row("angstrom sign", "å", "\u212B", true);
    row("kelvin sign", "k", "\u212A", true);
    row("ohm sign", "ω", "\u2126", true);
    row("base letter is not its accented one", "a", "a\u030A", false);
    row("cafe is not café", "cafe", "café", false);
    row("cafe is not decomposed café", "cafe", "cafe\u0301", false);
    row("sharp s is ss", "straße", "STRASSE", true);
    row("ss is sharp s", "strasse", "Straße", true);
    row("capital sharp s", "straße", "STRA\u1E9EE", true);
    row("one s is not half a sharp s", "s", "ß", false);
    row("sharp s within", "assa", "aßa", true);
    row("ligature", "fin", "ﬁn", true);
    row("half a ligature", "f", "ﬁn", false);
    row("final sigma", "σοφος", "ΣΟΦΟΣ", true);
    row("dotted capital I", "i", "\u0130", false);
    row("dotted capital I decomposed", "\u0130", "i\u0307", true);
    row("dotless i", "i", "\u0131", false);
    row("two marks in either order", "e\u0301\u0327", "e\u0327\u0301", true);
    row("hangul syllable in parts", "가", "\u1100\u1161", true);
    row("hangul part is not the syllable", "\u1100", "가", false);
    row("query that begins with a mark", "\u0301a", "e\u0301a", false);
    row("one person is not a family", "👨", "👨‍👩‍👧", false);
    row("a family", "👨‍👩‍👧", "en 👨‍👩‍👧 här", true);
    row("letter beside an emoji", "här", "👨‍👩‍👧här", true);
    row("dash", "–", "a – b", true);
    row("across lines", "ab", "a\nb", false);
    row("a query with a line end", "a\nb", "xa\nbx", true);
    row("absent", "zebra", "en häst", false);
    row("empty text", "a", "", false);
}

void SearchNeedleTests::findsWhatReadersCallTheSame()
{
    QFETCH(QByteArray, query);
    QFETCH(QByteArray, text);
    QFETCH(bool, isFound);

    const SearchNeedle widest(query.toStdString());
    const SearchNeedle base(query.toStdString(), FoldingRule::standard, ByteScanner::Width::base);

    QCOMPARE(widest.isIn(text.toStdString()), isFound);
    QCOMPARE(base.isIn(text.toStdString()), isFound);
}

void SearchNeedleTests::turkishKeepsItsOwnI()
{
    const SearchNeedle dotted("istanbul", FoldingRule::turkic);
    const SearchNeedle dotless("ısparta", FoldingRule::turkic);

    QVERIFY(dotted.isIn("İSTANBUL"));
    QVERIFY(dotted.isIn("I\u0307stanbul"));
    QVERIFY(!dotted.isIn("ISTANBUL"));
    QVERIFY(dotless.isIn("ISPARTA"));
    QVERIFY(!dotless.isIn("İsparta"));
    QCOMPARE(foldingRule("tr_TR.UTF-8"), FoldingRule::turkic);
    QCOMPARE(foldingRule("az"), FoldingRule::turkic);
    QCOMPARE(foldingRule("sv_SE"), FoldingRule::standard);
}

void SearchNeedleTests::givesTheFirstLineThatMatches_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("line feed") << QByteArray("ett\n två anna\ntre anna") << QByteArray(" två anna");
    QTest::newRow("carriage return") << QByteArray("ett\rANNA b\rtre") << QByteArray("ANNA b");
    QTest::newRow("both") << QByteArray("ett\r\nanna\r\ntre") << QByteArray("anna");
    QTest::newRow("next line") << QByteArray("ett\u0085anna\u0085tre") << QByteArray("anna");
    QTest::newRow("line separator") << QByteArray("ett\u2028anna\u2029tre") << QByteArray("anna");
    QTest::newRow("vertical tab and form feed") << QByteArray("ett\vanna\ftre") << QByteArray("anna");
    QTest::newRow("byte order mark") << QByteArray("\uFEFFanna\n") << QByteArray("anna");
    QTest::newRow("odd line first") << QByteArray("👨anna\u0301\nx anna") << QByteArray("x anna");
    QTest::newRow("bytes of a line end that look like the query's")
        << QByteArray("k\u2028\u0327\u212Bnna anna") << QByteArray("\u0327\u212Bnna anna");
    QTest::newRow("NUL") << QByteArray("a\0anna", 6) << QByteArray("a\0anna", 6);
}

void SearchNeedleTests::givesTheFirstLineThatMatches()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, line);

    const auto found = ::found(SearchNeedle("anna"), text.toStdString());

    QVERIFY(found.has_value());
    QCOMPARE(QByteArray::fromStdString(*found), line);
}

void SearchNeedleTests::findsAtEveryDistanceFromTheTextsEnds_data()
{
    QTest::addColumn<QByteArray>("query");
    QTest::newRow("letter") << QByteArray("q");
    QTest::newRow("word") << QByteArray("kryptozoologi");
    QTest::newRow("accents") << QByteArray("ÅÄÖ");
}

void SearchNeedleTests::findsAtEveryDistanceFromTheTextsEnds()
{
    QFETCH(QByteArray, query);
    const SearchNeedle needle(query.toStdString());

    for (std::size_t before = 0; before < 70; ++before) {
        for (const std::size_t after : {0, 1, 31, 32, 33, 64}) {
            const std::string text = std::string(before, '.') + query.toStdString() + std::string(after, '.');
            QCOMPARE(found(needle, text), std::optional(text));
            // What lies in the padding is no part of the text.
            const std::string cut = text.substr(0, before + static_cast<std::size_t>(query.size()) - 1);
            std::string padded = text + std::string(ByteScanner::padding, '.');
            QVERIFY(!needle.firstLine(std::string_view(padded).substr(0, cut.size())));
        }
    }
}

void SearchNeedleTests::agreesWithThePlainRuleOnRandomTexts_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void SearchNeedleTests::agreesWithThePlainRuleOnRandomTexts()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QList<QByteArray> alphabet{
        "a",      "A",      "s",  "S",      "f",      "i",  "I",      "k",      "e",      "n",      "å",
        "Å",      "ö",      "é",  "ß",      "ẞ",      "ſ",  "ﬁ",      "ﬀ",      "ŉ",      "İ",      "ı",
        "\u212A", "\u212B", "σ",  "ς",      "Σ",      "ι",  "ᾳ",      "\u0345", "\u0301", "\u030A", "\u0307",
        "\u0327", "\u0340", "가", "\u1100", "\u1161", "👨",  "\u200D", "👩",      "©",      "–",      " ",
        ".",      "\n",     "\r", "\u2028", "\u00AD", "\t", "ё",      "Й",      "\u0600"};
    const auto text = [&](int length) {
        QByteArray bytes;
        for (int i = 0; i < length; ++i)
            bytes += alphabet[random.bounded(alphabet.size())];
        return bytes;
    };

    for (int round = 0; round < 4000; ++round) {
        QByteArray query = text(1 + random.bounded(4));
        query.replace('\n', 'n').replace('\r', 'k').replace("\u2028", "e");
        QByteArray haystack = text(random.bounded(14));
        if (random.bounded(2) == 0)
            haystack +=
                (random.bounded(2) == 0 ? query : QString::fromUtf8(query).toUpper().toUtf8()) + text(3);

        const auto expected = Model::firstLine(haystack.toStdString(), query.toStdString());
        const auto actual = found(SearchNeedle(query.toStdString()), haystack.toStdString());

        if (actual != expected)
            QFAIL(qPrintable(QStringLiteral("query %1 in %2: %3, but the plain rule says %4")
                                 .arg(QString::fromLatin1(query.toPercentEncoding()),
                                      QString::fromLatin1(haystack.toPercentEncoding()),
                                      actual ? QStringLiteral("found") : QStringLiteral("not found"),
                                      expected ? QStringLiteral("found") : QStringLiteral("not found"))));
    }
}

QTEST_APPLESS_MAIN(SearchNeedleTests)
#include "SearchNeedleTests.moc"
