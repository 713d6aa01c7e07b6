#include "Vault/Utf8Text.h"

#include <QRandomGenerator>
#include <QTest>
#include <QUtf8StringView>

#include <string>

using namespace wendlore;

namespace {

bool isUtf8ByQt(const std::string& text)
{
    return QUtf8StringView(text.data(), qsizetype(text.size())).isValidUtf8();
}

} // namespace

class Utf8TextTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPairOfBytesIsJudgedRightWhereverItStands();
    void longerCharactersAreJudgedRight_data();
    void longerCharactersAreJudgedRight();
    void damagedTextsAreJudgedAsQtJudgesThem();
};

void Utf8TextTests::everyPairOfBytesIsJudgedRightWhereverItStands()
{
    for (const std::size_t place : {0, 30, 31, 32, 62}) {
        for (int pair = 0; pair < 0x10000; ++pair) {
            std::string text(64, 'x');
            text[place] = char(pair >> 8);
            text[place + 1] = char(pair);
            if (isUtf8(text) != isUtf8ByQt(text))
                QFAIL(qPrintable(QString::fromLatin1("%1 at %2").arg(pair, 4, 16).arg(place)));
        }
    }
}

void Utf8TextTests::longerCharactersAreJudgedRight_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("euro") << QByteArray("\xE2\x82\xAC") << true;
    QTest::newRow("emoji") << QByteArray("\xF0\x9F\x99\x82") << true;
    QTest::newRow("last character") << QByteArray("\xF4\x8F\xBF\xBF") << true;
    QTest::newRow("behind the last") << QByteArray("\xF4\x90\x80\x80") << false;
    QTest::newRow("far behind the last") << QByteArray("\xF5\x80\x80\x80") << false;
    QTest::newRow("before the surrogates") << QByteArray("\xED\x9F\xBF") << true;
    QTest::newRow("a surrogate") << QByteArray("\xED\xA0\x80") << false;
    QTest::newRow("three bytes for too little") << QByteArray("\xE0\x9F\xBF") << false;
    QTest::newRow("four bytes for too little") << QByteArray("\xF0\x8F\xBF\xBF") << false;
    QTest::newRow("a fourth byte too many") << QByteArray("\xE2\x82\xAC\xAC") << false;
    QTest::newRow("a fifth byte") << QByteArray("\xF0\x9F\x99\x82\x82") << false;
    QTest::newRow("cut off after two of three") << QByteArray("\xE2\x82") << false;
    QTest::newRow("cut off after three of four") << QByteArray("\xF0\x9F\x99") << false;
    QTest::newRow("FF") << QByteArray("\xFF") << false;
}

void Utf8TextTests::longerCharactersAreJudgedRight()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, isValid);

    for (std::size_t before = 0; before < 70; ++before) {
        const std::string text = std::string(before, 'x') + bytes.toStdString();
        QCOMPARE(isUtf8(text), isValid);
        QCOMPARE(isUtf8(text + std::string(40, 'x')), isValid);
    }
}

void Utf8TextTests::damagedTextsAreJudgedAsQtJudgesThem()
{
    QRandomGenerator random(4711);
    const std::string sample = "Möte på fredag – 🙂 åäö 漢字 é\xCC\x81 slut. ";

    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        while (text.size() < std::size_t(random.bounded(200)))
            text += sample;
        text.resize(std::size_t(random.bounded(int(text.size()) + 1)));
        if (!text.empty() && random.bounded(2) == 0)
            text[std::size_t(random.bounded(int(text.size())))] = char(random.bounded(256));
        QCOMPARE(isUtf8(text), isUtf8ByQt(text));
    }
}

QTEST_APPLESS_MAIN(Utf8TextTests)
#include "Utf8TextTests.moc"
