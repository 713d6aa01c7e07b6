#include "Decoder/QuickLookLanguage.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookLanguageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLanguageIsKnownByItsExtensionInAnyCase()
    {
        QVERIFY(QuickLookLanguage::of(u"CPP"_s).words.contains(u"nullptr"_s));
        QVERIFY(QuickLookLanguage::of(u"json"_s).keys);
        QVERIFY(QuickLookLanguage::of(u"svg2"_s).words.isEmpty());
        QVERIFY(QuickLookLanguage::of({}).lineComments.isEmpty());
    }
};

QTEST_GUILESS_MAIN(QuickLookLanguageTests)
#include "QuickLookLanguageTests.moc"
