#include "Vault/TextLines.h"

#include <QByteArray>
#include <QTest>

using namespace wendlore;

namespace {

QByteArray snippet(const QByteArray& line)
{
    const std::string_view cut = snippetOf({line.constData(), static_cast<std::size_t>(line.size())});
    return {cut.data(), static_cast<qsizetype>(cut.size())};
}

} // namespace

class TextLinesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesEndAtEveryUnicodeLineEnd();
    void snippetsLoseTheBlanksAtTheirEnds_data();
    void snippetsLoseTheBlanksAtTheirEnds();
    void snippetsAreCutAfter120Characters_data();
    void snippetsAreCutAfter120Characters();
};

void TextLinesTests::linesEndAtEveryUnicodeLineEnd()
{
    const std::string_view text = "a\nb\r\nc\u0085d\u2028e\u2029f\vg\fh";
    QByteArrayList lines;

    for (std::size_t place = 0; place <= text.size(); place = nextLine(text, lineEnd(text, place))) {
        const std::size_t end = lineEnd(text, place);
        QCOMPARE(lineStart(text, end), place);
        lines.append(QByteArray(text.data() + place, static_cast<qsizetype>(end - place)));
    }

    QCOMPARE(lines, QByteArrayList({"a", "b", "", "c", "d", "e", "f", "g", "h"}));
}

void TextLinesTests::snippetsLoseTheBlanksAtTheirEnds_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("spaces and tabs") << QByteArray(" \t - Anna \t") << QByteArray("- Anna");
    QTest::newRow("no-break space") << QByteArray("\u00A0Anna\u2003\u3000") << QByteArray("Anna");
    QTest::newRow("blank") << QByteArray(" \t\u00A0") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void TextLinesTests::snippetsLoseTheBlanksAtTheirEnds()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, shown);

    QCOMPARE(snippet(line), shown);
}

void TextLinesTests::snippetsAreCutAfter120Characters_data()
{
    QTest::addColumn<QByteArray>("character");
    QTest::newRow("ASCII") << QByteArray("a");
    QTest::newRow("two bytes") << QByteArray("å");
    QTest::newRow("decomposed") << QByteArray("a\u030A");
    QTest::newRow("three bytes") << QByteArray("–");
    QTest::newRow("four bytes") << QByteArray("🎉");
    QTest::newRow("family") << QByteArray("👨‍👩‍👧");
    QTest::newRow("flag") << QByteArray("🇸🇪");
}

void TextLinesTests::snippetsAreCutAfter120Characters()
{
    QFETCH(QByteArray, character);

    QCOMPARE(snippet(character.repeated(300)), character.repeated(120));
    QCOMPARE(snippet(character.repeated(121)), character.repeated(120));
    QCOMPARE(snippet(character.repeated(120)), character.repeated(120));
    QCOMPARE(snippet("a" + character.repeated(119) + "b"), "a" + character.repeated(119));
}

QTEST_APPLESS_MAIN(TextLinesTests)
#include "TextLinesTests.moc"
