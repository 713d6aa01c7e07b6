#include "Vault/Collation.h"

#include <QScopeGuard>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class CollationTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comparesAsAFileBrowserDoes_data();
    void comparesAsAFileBrowserDoes();
    void localeWithoutLanguageDoesNotSortCapitalsFirst_data();
    void localeWithoutLanguageDoesNotSortCapitalsFirst();
    void bytesThatAreNotUtf8AreOrderedConsistently();
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
    const int byKey = names.sortKey(left.toUtf8()).compare(names.sortKey(right.toUtf8()));
    QVERIFY((byKey <=> 0) == (order <=> 0));
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
