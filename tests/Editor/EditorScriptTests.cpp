#include "Editor/EditorScript.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

class EditorScriptTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void quotesText_data();
    void quotesText();
    void everyTextReadsBackUnchanged();
    void halfASurrogatePairIsKept();
    void aScriptInAsciiSaysTheSame();
};

void EditorScriptTests::quotesText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("literal");

    QTest::newRow("empty") << u""_s << uR"("")"_s;
    QTest::newRow("plain") << u"Åäö 😀"_s << u"\"Åäö 😀\""_s;
    QTest::newRow("quotes") << u"säg \"hej\" 'då'"_s << uR"("säg \"hej\" 'då'")"_s;
    QTest::newRow("backslash") << uR"(C:\n)"_s << uR"("C:\\n")"_s;
    QTest::newRow("slash") << u"a/b"_s << uR"("a\/b")"_s;
    QTest::newRow("closing script tag") << u"</script>"_s << uR"("<\/script>")"_s;
    QTest::newRow("line breaks") << u"a\r\nb\n\tc"_s << uR"("a\r\nb\n\tc")"_s;
    QTest::newRow("control characters") << u"\b\f\x01\x1f"_s << uR"("\b\f\u0001\u001f")"_s;
    QTest::newRow("nul") << QString(QChar::Null) << uR"("\u0000")"_s;
    QTest::newRow("byte order mark") << u"\uFEFFa"_s << u"\"\uFEFFa\""_s;
}

void EditorScriptTests::quotesText()
{
    QFETCH(const QString, text);
    QFETCH(const QString, literal);

    QCOMPARE(jsString(text), literal);
}

void EditorScriptTests::everyTextReadsBackUnchanged()
{
    QString text;
    for (char32_t code = 0; code < 0x3000; ++code)
        text += QString::fromUcs4(&code, 1);
    text += u"\u2028\u2029 😀 </script><!--"_s;

    const auto array = QJsonDocument::fromJson('[' + jsString(text).toUtf8() + ']').array();

    QCOMPARE(array.size(), 1);
    QCOMPARE(array.first().toString(), text);
}

void EditorScriptTests::halfASurrogatePairIsKept()
{
    const QString text = QString(QChar(0xD83D)) + u'a' + QChar(0xDE00);

    QCOMPARE(jsString(text), uR"("\ud83da\ude00")"_s);
}

void EditorScriptTests::aScriptInAsciiSaysTheSame()
{
    QCOMPARE(asciiScript(u"set(\"Åä 😀\u2028\");\n"_s),
             QByteArrayLiteral("set(\"\\u00c5\\u00e4 \\ud83d\\ude00\\u2028\");\n"));
    QCOMPARE(asciiScript(u'"' + QString(QChar(0xD83D)) + u'"'), QByteArrayLiteral("\"\\ud83d\""));
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::EditorScriptTests)
#include "EditorScriptTests.moc"
