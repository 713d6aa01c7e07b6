#include "Editor/NoteText.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

class NoteTextTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textComesBackByteForByte_data();
    void textComesBackByteForByte();
    void bytesThatAreNotUtf8GiveNothing_data();
    void bytesThatAreNotUtf8GiveNothing();
    void charactersAreCountedAsReadersSeeThem_data();
    void charactersAreCountedAsReadersSeeThem();
};

void NoteTextTests::textComesBackByteForByte_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QByteArray("") << u""_s;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF# Hej") << u"\uFEFF# Hej"_s;
    QTest::newRow("two byte order marks") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBF") << u"\uFEFF\uFEFF"_s;
    QTest::newRow("only a byte order mark") << QByteArray("\xEF\xBB\xBF") << u"\uFEFF"_s;
    QTest::newRow("nul") << QByteArray("a\0b", 3) << QString::fromLatin1("a\0b", 3);
    QTest::newRow("line endings") << QByteArray("a\r\nb\rc\n") << u"a\r\nb\rc\n"_s;
    QTest::newRow("astral") << QByteArray("\xF0\x9F\x98\x80") << u"😀"_s;
    QTest::newRow("noncharacter") << QByteArray("\xEF\xBF\xBF") << u"\uFFFF"_s;
    QTest::newRow("replacement character") << QByteArray("\xEF\xBF\xBD") << u"\uFFFD"_s;
    QTest::newRow("decomposed") << QByteArray("a\xCC\x8A") << u"a\u030A"_s;
}

void NoteTextTests::textComesBackByteForByte()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, text);

    QCOMPARE(noteText(bytes), text);
    QCOMPARE(text.toUtf8(), bytes);
}

void NoteTextTests::bytesThatAreNotUtf8GiveNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("latin 1") << QByteArray("M\xF6te");
    QTest::newRow("utf-16") << QByteArray("\xFF\xFEM\0", 4);
    QTest::newRow("cut off") << QByteArray("a\xC3");
    QTest::newRow("cut off astral") << QByteArray("a\xF0\x9F\x98");
    QTest::newRow("lone continuation") << QByteArray("\x80");
    QTest::newRow("overlong") << QByteArray("\xC0\xAF");
    QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80");
    QTest::newRow("beyond unicode") << QByteArray("\xF4\x90\x80\x80");
}

void NoteTextTests::bytesThatAreNotUtf8GiveNothing()
{
    QFETCH(const QByteArray, bytes);

    QCOMPARE(noteText(bytes), std::nullopt);
}

void NoteTextTests::charactersAreCountedAsReadersSeeThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("count");

    QTest::newRow("empty") << u""_s << qsizetype(0);
    QTest::newRow("swedish") << u"åäö"_s << qsizetype(3);
    QTest::newRow("decomposed") << u"a\u030Ao\u0308"_s << qsizetype(2);
    QTest::newRow("emoji with skin tone") << u"👍🏽"_s << qsizetype(1);
    QTest::newRow("crlf") << u"a\r\nb"_s << qsizetype(3);
}

void NoteTextTests::charactersAreCountedAsReadersSeeThem()
{
    QFETCH(const QString, text);

    QTEST(characterCount(text), "count");
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::NoteTextTests)
#include "NoteTextTests.moc"
