#include "Previews/QuickLookPackage.h"

#include "Fakes/Bucket.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookPackageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePagesComeFirstAndThenThePictureOfTheFirst()
    {
        const Bucket bucket{{"a.pages/preview.jpg", "bild"},
                            {"b.key/QuickLook/Preview.pdf", "sidor"},
                            {"b.key/preview.jpg", "bild"}};

        const auto picture = loadPackage(bucket.file(u"a.pages"_s), QuickLookLimits());
        const auto pages = loadPackage(bucket.file(u"b.key"_s), QuickLookLimits());

        QVERIFY(std::holds_alternative<QuickLookPage>(picture));
        QCOMPARE(std::get<QuickLookPage>(picture).resources.value(u"bild"_s).bytes, QByteArray("bild"));
        QVERIFY(std::holds_alternative<QuickLookPdf>(pages));
        QCOMPARE(std::get<QuickLookPdf>(pages).file, bucket.file(u"b.key/QuickLook/Preview.pdf"_s));
    }

    void otherwiseItIsAListOfItsFiles()
    {
        const Bucket bucket{{"b.pages/Index.zip", "1"}, {"b.pages/Data/a.png", "12"}};

        const auto list = loadPackage(bucket.file(u"b.pages"_s), QuickLookLimits());

        QVERIFY(std::holds_alternative<QuickLookPage>(list));
        const QByteArray body = std::get<QuickLookPage>(list).body;
        QVERIFY(body.contains("Index.zip") && body.indexOf("Data/a.png") < body.indexOf("Index.zip"));
    }

    void anEmptyOneIsACard()
    {
        const Bucket bucket{{"tom.pages/", ""}};
        QVERIFY(std::holds_alternative<QuickLookCard>(
            loadPackage(bucket.file(u"tom.pages"_s), QuickLookLimits())));
    }
};

QTEST_GUILESS_MAIN(QuickLookPackageTests)
#include "QuickLookPackageTests.moc"
