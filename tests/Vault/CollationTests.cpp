#include "Vault/Collation.h"

#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// `names` in the order that sorting gives them.
QStringList sorted(const NameOrder& order, const QStringList& names)
{
    std::vector<QByteArray> bytes;
    for (const QString& name : names)
        bytes.push_back(name.toUtf8());
    std::vector<std::string_view> views;
    for (const QByteArray& name : bytes)
        views.emplace_back(name.constData(), std::size_t(name.size()));
    QStringList sorted;
    for (const std::uint32_t place : order.sorted(views))
        sorted.append(names[qsizetype(place)]);
    return sorted;
}

/// A name as people and machines give them: short, often nearly equal to another.
QString randomName(QRandomGenerator& random)
{
    static const QStringList parts =
        u"a A b e é E o ö Ö å Å ä aa ch Ch h ll l· lj dz ß ss æ Æ ø ð Ð þ ÿ ñ n ü ç µ ² ½ ª ¤ « - _ . , ( ' "
        u"! 0 1 2 "
        u"9 10 007 00 123456 ij o\u0308 a\u030a e\u0301\u0323 \u0301 – ’ я 漢 \u00ad \u00a0 \u0001 🙂"_s
            .split(u' ')
        << u" "_s << u"x"_s.repeated(3) << u"9"_s.repeated(260);
    QString name;
    for (auto left = random.bounded(1, 6); left > 0; --left)
        name += parts[random.bounded(int(parts.size()))];
    return name;
}

} // namespace

class CollationTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comparesAsAFileBrowserDoes_data();
    void comparesAsAFileBrowserDoes();
    void localeWithoutLanguageDoesNotSortCapitalsFirst_data();
    void localeWithoutLanguageDoesNotSortCapitalsFirst();
    void bytesThatAreNotUtf8AreOrderedConsistently();
    void sortingAgreesWithComparing_data();
    void sortingAgreesWithComparing();
    void equalNamesAreSortedAsToldOrStay();
    void manyNamesAreSortedLikeFew();
    void localeComesFromTheEnvironment();
};

void CollationTests::comparesAsAFileBrowserDoes_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<int>("order");

    const QByteArray swedish = "sv_SE.UTF-8";
    const QByteArray english = "en_GB.UTF-8";
    QTest::newRow("case does not matter") << swedish << u"plan"_s << u"PLAN"_s << 0;
    QTest::newRow("numbers by value") << swedish << u"Not 2"_s << u"Not 10"_s << -1;
    QTest::newRow("leading zeros do not matter") << swedish << u"01"_s << u"1"_s << 0;
    QTest::newRow("long numbers") << swedish << u"a99999999999999999999"_s << u"a100000000000000000000"_s
                                  << -1;
    QTest::newRow("å after z in Swedish") << swedish << u"z"_s << u"å"_s << -1;
    QTest::newRow("a locale without a charset") << QByteArray("sv_SE") << u"z"_s << u"å"_s << -1;
    QTest::newRow("å before ä in Swedish") << swedish << u"å"_s << u"ä"_s << -1;
    QTest::newRow("å beside a in English") << english << u"å"_s << u"b"_s << -1;
    QTest::newRow("accents matter") << english << u"resume"_s << u"résumé"_s << -1;
    QTest::newRow("composed and decomposed are the same") << swedish << u"\u00e5"_s << u"a\u030a"_s << 0;
    QTest::newRow("the ångström sign is å") << swedish << u"\u212b"_s << u"\u00e5"_s << 0;
    QTest::newRow("marks in either order") << english << u"a\u0323\u0302"_s << u"a\u0302\u0323"_s << 0;
    QTest::newRow("spaces count") << swedish << u"a b"_s << u"ab"_s << -1;
    QTest::newRow("punctuation counts") << swedish << u"a-b"_s << u"ab"_s << -1;
    QTest::newRow("the shorter first") << swedish << u"not"_s << u"notes"_s << -1;
    QTest::newRow("empty first") << swedish << u""_s << u"a"_s << -1;
    QTest::newRow("digits before letters") << swedish << u"9"_s << u"a"_s << -1;
}

void CollationTests::comparesAsAFileBrowserDoes()
{
    QFETCH(const QByteArray, locale);
    QFETCH(const QString, left);
    QFETCH(const QString, right);
    QFETCH(const int, order);
    const NameOrder names(locale);

    const auto compared = names.compare(left.toUtf8(), right.toUtf8());
    const auto reversed = names.compare(right.toUtf8(), left.toUtf8());

    QVERIFY(compared == (order <=> 0));
    QVERIFY(reversed == (0 <=> order));
    QCOMPARE(sorted(names, {left, right}),
             order <= 0 ? QStringList({left, right}) : QStringList({right, left}));
    QCOMPARE(sorted(names, {right, left}),
             order < 0 ? QStringList({left, right}) : QStringList({right, left}));
}

void CollationTests::localeWithoutLanguageDoesNotSortCapitalsFirst_data()
{
    QTest::addColumn<QByteArray>("locale");

    for (const char* locale : {"", "C", "POSIX", "C.UTF-8", "xx_YY.UTF-8", "not a locale", "sv_SE@euro"})
        QTest::newRow(locale) << QByteArray(locale);
}

void CollationTests::localeWithoutLanguageDoesNotSortCapitalsFirst()
{
    QFETCH(const QByteArray, locale);
    const NameOrder names(locale);

    QVERIFY(names.compare("a", "B") < 0);
    QVERIFY(names.compare("Not 2", "not 10") < 0);
}

void CollationTests::bytesThatAreNotUtf8AreOrderedConsistently()
{
    const NameOrder names("sv_SE.UTF-8");

    for (const QByteArray& odd : {QByteArray("a\xe5"), QByteArray("\xed\xa0\x80"), QByteArray("\xc3"),
                                  QByteArray("\xf4\xbf\xbf\xbf")}) {
        QVERIFY(names.compare(odd, odd) == 0);
        QVERIFY((names.compare(odd, "m") < 0) == (names.compare("m", odd) > 0));
        QVERIFY(names.compare("1", odd + "x") != 0);
    }
}

void CollationTests::sortingAgreesWithComparing_data()
{
    QTest::addColumn<QByteArray>("locale");

    for (const char* locale :
         {"", "sv_SE", "en_US", "da_DK", "nb_NO", "de_DE@collation=phonebook", "fr_CA", "ca_ES", "hr_HR",
          "sk_SK", "lt_LT", "es_ES@collation=traditional", "th_TH", "el_GR", "ja_JP", "tr_TR"})
        QTest::newRow(*locale == 0 ? "none" : locale) << QByteArray(locale);
}

void CollationTests::sortingAgreesWithComparing()
{
    QFETCH(const QByteArray, locale);
    const NameOrder order(locale);
    QRandomGenerator random(4711);

    for (int round = 0; round < 20; ++round) {
        QStringList names;
        for (int i = 0; i < 200; ++i)
            names.append(randomName(random));

        QStringList compared = names;
        std::ranges::stable_sort(compared, [&order](const QString& left, const QString& right) {
            return order.compare(left.toUtf8(), right.toUtf8()) < 0;
        });
        QCOMPARE(sorted(order, names), compared);
    }
}

void CollationTests::equalNamesAreSortedAsToldOrStay()
{
    const NameOrder order("sv_SE");
    const std::vector<std::string_view> names{"b", "Plan", "PLAN", "plan", "a\xCC\x8A", "å"};

    QCOMPARE(order.sorted(names), (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5}));
    QCOMPARE(order.sorted(names, std::greater<>()), (std::vector<std::uint32_t>{0, 3, 2, 1, 5, 4}));
}

void CollationTests::manyNamesAreSortedLikeFew()
{
    const NameOrder order("sv_SE");
    QRandomGenerator random(815);
    std::vector<std::string> names(30'000);
    for (std::string& name : names) {
        name = "Not " + std::to_string(random.bounded(5'000)); // every one several times
        if (random.bounded(4) == 0)
            name.insert(name.size() / 2, "я"); // only the collator can order it
    }
    const std::vector<std::string_view> views(names.begin(), names.end());

    const auto places = order.sorted(views);

    QCOMPARE(places.size(), names.size());
    for (std::size_t i = 1; i < places.size(); ++i) {
        const auto compared =
            order.compare(QByteArrayView(views[places[i - 1]]), QByteArrayView(views[places[i]]));
        QVERIFY(compared < 0 || (compared == 0 && places[i - 1] < places[i]));
    }
}

void CollationTests::localeComesFromTheEnvironment()
{
    QMap<QByteArray, QByteArray> before;
    for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"})
        before[name] = qgetenv(name);
    const auto restore = qScopeGuard([&] {
        for (auto variable = before.begin(); variable != before.end(); ++variable)
            qputenv(variable.key(), variable.value());
    });

    qputenv("LC_ALL", "");
    qputenv("LC_COLLATE", "");
    qputenv("LANG", "en_US.UTF-8");
    QCOMPARE(NameOrder::userLocale(), QByteArray("en_US.UTF-8"));
    qputenv("LC_COLLATE", "sv_SE.UTF-8");
    QCOMPARE(NameOrder::userLocale(), QByteArray("sv_SE.UTF-8"));
    QVERIFY(NameOrder().compare("z", "ö") < 0);
    qputenv("LC_ALL", "C");
    QCOMPARE(NameOrder::userLocale(), QByteArray("C"));
    QVERIFY(NameOrder().compare("z", "ö") > 0);
}

QTEST_GUILESS_MAIN(CollationTests)
#include "CollationTests.moc"
