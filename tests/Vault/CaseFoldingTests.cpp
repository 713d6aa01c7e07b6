#include "Vault/CaseFolding.h"

#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

icu::UnicodeString text(const QString& string)
{
    return {reinterpret_cast<const UChar*>(string.utf16()), int32_t(string.size())};
}

} // namespace

class CaseFoldingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalTextsHaveOneForm_data();
    void equalTextsHaveOneForm();
    void matchesLieBetweenCharacters();
    void theRuleFollowsTheLocaleOfTheEnvironment();
};

void CaseFoldingTests::equalTextsHaveOneForm_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::newRow("case") << u"MÖTE"_s << u"möte"_s;
    QTest::newRow("decomposed") << u"Möte"_s << u"mo\u0308te"_s;
    QTest::newRow("sharp s") << u"STRASSE"_s << u"straße"_s;
    QTest::newRow("ångström sign") << u"\u212B"_s << u"å"_s;
    QTest::newRow("marks in either order") << u"e\u0301\u0327"_s << u"e\u0327\u0301"_s;
    QTest::newRow("final sigma") << u"ΣΟΦΟΣ"_s << u"σοφος"_s;
}

void CaseFoldingTests::equalTextsHaveOneForm()
{
    QFETCH(QString, left);
    QFETCH(QString, right);

    QVERIFY(caselessForm(text(left), FoldingRule::standard) ==
            caselessForm(text(right), FoldingRule::standard));
}

void CaseFoldingTests::matchesLieBetweenCharacters()
{
    const auto holds = [](const QString& where, const QString& what) {
        return containsCaseless(text(where), caselessForm(text(what), FoldingRule::standard),
                                FoldingRule::standard);
    };

    QVERIFY(holds(u"ett MÖTE"_s, u"möte"_s));
    QVERIFY(!holds(u"å"_s, u"a"_s));
    QVERIFY(!holds(u"a\u030A"_s, u"a"_s));
    QVERIFY(!holds(u"👨‍👩‍👧"_s, u"👩"_s));
    QVERIFY(!holds(QString(), u"a"_s));
}

void CaseFoldingTests::theRuleFollowsTheLocaleOfTheEnvironment()
{
    qunsetenv("LC_ALL");
    qputenv("LC_CTYPE", "tr_TR.UTF-8");
    QCOMPARE(userFoldingRule(), FoldingRule::turkic);

    qputenv("LC_ALL", "sv_SE.UTF-8");
    QCOMPARE(userFoldingRule(), FoldingRule::standard);
}

QTEST_APPLESS_MAIN(CaseFoldingTests)
#include "CaseFoldingTests.moc"
