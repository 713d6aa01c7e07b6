#include "Vault/CaselessText.h"

#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

class CaselessTextTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lettersDecide_data();
    void lettersDecide();
};

void CaselessTextTests::lettersDecide_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<bool>("isEqual");
    const auto row = [](const char* name, const QString& left, const QString& right, const char* locale,
                        bool isEqual) {
        QTest::newRow(name) << left << right << QByteArray(locale) << isEqual;
    };
    row("same", u"Plan"_s, u"Plan"_s, "sv_SE.UTF-8", true);
    row("case", u"plan"_s, u"PLAN"_s, "sv_SE.UTF-8", true);
    row("Swedish letters", u"åäö"_s, u"ÅÄÖ"_s, "sv_SE.UTF-8", true);
    row("composed and decomposed", u"Möte"_s, u"mo\u0308TE"_s, "sv_SE.UTF-8", true);
    row("accents", u"ide"_s, u"idé"_s, "sv_SE.UTF-8", false);
    row("sharp s", u"straße"_s, u"STRASSE"_s, "de_DE", true);
    row("final sigma", u"ΛΌΓΟΣ"_s, u"λόγος"_s, "C", true);
    row("dotted i elsewhere", u"I"_s, u"i"_s, "sv_SE.UTF-8", true);
    row("dotted i in Turkish", u"I"_s, u"i"_s, "tr_TR.UTF-8", false);
    row("dotless i in Turkish", u"I"_s, u"ı"_s, "tr_TR.UTF-8", true);
    row("start of another", u"Plan"_s, u"Planer"_s, "C", false);
    row("empty", u""_s, u""_s, "C", true);
    row("wide letters", u"Ａ"_s, u"A"_s, "C", false);
}

void CaselessTextTests::lettersDecide()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    QFETCH(QByteArray, locale);
    QFETCH(bool, isEqual);
    const FoldingRule rule = foldingRule(locale.toStdString());

    QCOMPARE(CaselessText(left, rule).equals(right), isEqual);
    QCOMPARE(CaselessText(right, rule).equals(left), isEqual);
}

QTEST_APPLESS_MAIN(CaselessTextTests)
#include "CaselessTextTests.moc"
