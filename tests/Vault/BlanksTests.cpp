#include "Vault/Blanks.h"

#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

class BlanksTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blanksGoAtBothEnds_data();
    void blanksGoAtBothEnds();
};

void BlanksTests::blanksGoAtBothEnds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("trimmed");
    QTest::newRow("spaces and tabs") << u" \t Mål \t"_s << u"Mål"_s;
    QTest::newRow("no-break space") << u"\u00a0Mål\u3000"_s << u"Mål"_s;
    QTest::newRow("inside") << u" a \t b "_s << u"a \t b"_s;
    QTest::newRow("line breaks stay") << u" \nMål\r\n "_s << u"\nMål\r\n"_s;
    QTest::newRow("nothing") << u""_s << u""_s;
    QTest::newRow("only blanks") << u" \t "_s << u""_s;
}

void BlanksTests::blanksGoAtBothEnds()
{
    QFETCH(QString, text);
    QFETCH(QString, trimmed);
    QCOMPARE(withoutOuterBlanks(text), trimmed);
}

QTEST_APPLESS_MAIN(BlanksTests)
#include "BlanksTests.moc"
