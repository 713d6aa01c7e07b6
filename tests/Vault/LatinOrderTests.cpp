#include "Vault/LatinOrder.h"

#include <QTest>

#include <unicode/coll.h>

#include <memory>
#include <optional>

using namespace wendlore;

namespace {

/// The order of a language, ignoring case and comparing numbers by value.
LatinOrder orderOf(const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icu::Locale::createCanonical(locale), status));
    collator->setStrength(icu::Collator::SECONDARY);
    collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    if (U_FAILURE(status))
        qFatal("%s", u_errorName(status));
    return LatinOrder(dynamic_cast<const icu::RuleBasedCollator&>(*collator));
}

std::optional<std::string> keyOf(const LatinOrder& order, const std::string& name)
{
    std::string key(LatinOrder::largestKey(name.size()), '\0');
    const char* const end = order.writeKey(name, key.data());
    if (end == nullptr)
        return std::nullopt;
    key.resize(std::size_t(end - key.data()));
    return key;
}

} // namespace

class LatinOrderTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysAreInTheLanguagesOrder_data();
    void keysAreInTheLanguagesOrder();
    void spellingsOfOneNameHaveOneKey();
    void ordinaryNamesHaveKeys_data();
    void ordinaryNamesHaveKeys();
    void theRestIsLeftToTheCollator_data();
    void theRestIsLeftToTheCollator();
};

void LatinOrderTests::keysAreInTheLanguagesOrder_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArrayList>("names");

    QTest::newRow("Swedish") << QByteArray("sv_SE")
                             << QByteArrayList{"",   " a", "-a", "2",  "10", "a", "a b", "a-b",
                                               "ab", "e",  "é",  "éa", "z",  "å", "ä",   "ö"};
    QTest::newRow("English") << QByteArray("en_US")
                             << QByteArrayList{"a", "å", "ä", "ab", "b", "Not 2", "Not 10", "o", "ö", "z"};
    QTest::newRow("numbers")
        << QByteArray("sv_SE")
        << QByteArrayList{
               "a", "a0", "a1", "a1b", "a2", "a10", "a99999999999999999999", "a100000000000000000000", "aa"};
}

void LatinOrderTests::keysAreInTheLanguagesOrder()
{
    QFETCH(const QByteArray, locale);
    QFETCH(const QByteArrayList, names);
    const LatinOrder order = orderOf(locale.constData());

    for (qsizetype i = 1; i < names.size(); ++i) {
        const auto left = keyOf(order, names[i - 1].toStdString());
        const auto right = keyOf(order, names[i].toStdString());
        QVERIFY2(left && right && *left < *right, names[i].constData());
    }
}

void LatinOrderTests::spellingsOfOneNameHaveOneKey()
{
    const LatinOrder order = orderOf("sv_SE");

    QCOMPARE(keyOf(order, "PLAN"), keyOf(order, "plan"));
    QCOMPARE(keyOf(order, "007"), keyOf(order, "7"));
    QCOMPARE(keyOf(order, "00"), keyOf(order, "0"));
    QCOMPARE(keyOf(order, "A\xCC\x8Ar"), keyOf(order, "år"));
    QVERIFY(keyOf(order, "a") != keyOf(order, "å"));
}

void LatinOrderTests::ordinaryNamesHaveKeys_data()
{
    QTest::addColumn<QByteArray>("name");

    for (const char* name :
         {"", "Möte 2024-03-01", "Projekt (gammalt)", "Résumé", "O\xCC\x88verkalix", "a_b", "100 %"})
        QTest::newRow(name) << QByteArray(name);
    QTest::newRow("very long") << QByteArray(600, 'x');
    QTest::newRow("only digits, apart") << QByteArray("1 2").repeated(100);
}

void LatinOrderTests::ordinaryNamesHaveKeys()
{
    QFETCH(const QByteArray, name);

    QVERIFY(keyOf(orderOf("sv_SE"), name.toStdString()));
}

void LatinOrderTests::theRestIsLeftToTheCollator_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("name");

    const QByteArray swedish = "sv_SE";
    QTest::newRow("other alphabets") << swedish << QByteArray("план");
    QTest::newRow("two marks") << swedish << QByteArray("o\xCC\x88\xCC\x81");
    QTest::newRow("a mark alone") << swedish << QByteArray("\xCC\x88");
    QTest::newRow("letters that are two") << swedish
                                          << QByteArray("Stra\xC3\x9F"
                                                        "e");
    QTest::newRow("soft hyphen") << swedish
                                 << QByteArray("a\xC2\xAD"
                                               "b");
    QTest::newRow("not UTF-8") << swedish << QByteArray("a\xFF");
    QTest::newRow("cut off") << swedish << QByteArray("a\xC3");
    QTest::newRow("very long numbers") << swedish << QByteArray(201, '9');
    QTest::newRow("a mark cut off") << swedish << QByteArray("o\xCC");
    QTest::newRow("half a mark between letters") << swedish << QByteArray("o\xCCo");
    QTest::newRow("a mark behind a digit") << swedish << QByteArray("1\xCC\x88");
    QTest::newRow("two letters that sort as one") << QByteArray("sk_SK") << QByteArray("chata");
    QTest::newRow("accents from the right") << QByteArray("fr_CA") << QByteArray("a");
}

void LatinOrderTests::theRestIsLeftToTheCollator()
{
    QFETCH(const QByteArray, locale);
    QFETCH(const QByteArray, name);

    QVERIFY(!keyOf(orderOf(locale.constData()), name.toStdString()));
}

QTEST_APPLESS_MAIN(LatinOrderTests)
#include "LatinOrderTests.moc"
