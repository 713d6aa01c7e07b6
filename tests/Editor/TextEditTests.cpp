#include "Editor/TextEdit.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

class TextEditTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void putsTheInsertInPlace_data();
    void putsTheInsertInPlace();
    void refusesATextOfAnotherLength();
    void refusesMalformedMessages_data();
    void refusesMalformedMessages();
};

void TextEditTests::putsTheInsertInPlace_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("result");

    QTest::newRow("at the start") << 0 << 0 << u"x"_s << u"xåäö"_s;
    QTest::newRow("at the end") << 3 << 3 << u"\r\n"_s << u"åäö\r\n"_s;
    QTest::newRow("in place of a letter") << 1 << 2 << u"\U0001F600"_s << u"å\U0001F600ö"_s;
    QTest::newRow("away") << 0 << 3 << u""_s << u""_s;
}

void TextEditTests::putsTheInsertInPlace()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, insert);
    QFETCH(const QString, result);

    const auto edit = TextEdit::fromMessage({{u"from"_s, from},
                                             {u"to"_s, to},
                                             {u"insert"_s, insert},
                                             {u"count"_s, 1},
                                             {u"length"_s, result.size()}});

    QVERIFY(edit);
    QCOMPARE(edit->appliedTo(u"åäö"_s), std::optional(result));
}

void TextEditTests::refusesATextOfAnotherLength()
{
    const TextEdit edit{1, 2, u"x"_s, 1, 3};

    QVERIFY(edit.appliedTo(u"abc"_s));
    QVERIFY(!edit.appliedTo(u"ab"_s));
    QVERIFY(!edit.appliedTo(u"abcd"_s));
    QVERIFY(!edit.appliedTo(u"a"_s));
}

void TextEditTests::refusesMalformedMessages_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");

    QTest::newRow("no from") << u"from"_s << QJsonValue(QJsonValue::Undefined);
    QTest::newRow("from is negative") << u"from"_s << QJsonValue(-1);
    QTest::newRow("from is no whole number") << u"from"_s << QJsonValue(0.5);
    QTest::newRow("to before from") << u"to"_s << QJsonValue(0);
    QTest::newRow("to is endless") << u"to"_s << QJsonValue(1e300);
    QTest::newRow("insert is no text") << u"insert"_s << QJsonValue(1);
    QTest::newRow("no count") << u"count"_s << QJsonValue(0);
    QTest::newRow("length is a text") << u"length"_s << QJsonValue(u"3"_s);
}

void TextEditTests::refusesMalformedMessages()
{
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    QJsonObject body{{u"from"_s, 1}, {u"to"_s, 2}, {u"insert"_s, u"x"_s}, {u"count"_s, 1}, {u"length"_s, 3}};
    QVERIFY(TextEdit::fromMessage(body));

    body.insert(key, value);

    QVERIFY(!TextEdit::fromMessage(body));
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::TextEditTests)
#include "TextEditTests.moc"
