#include "Previews/ImageHeif.h"

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class ImageHeifTests final : public QObject
{
    Q_OBJECT

    Bucket m_bucket;
    QByteArray m_photograph;

private Q_SLOTS:
    void initTestCase()
    {
        runProgram(u"convert"_s,
                   {u"-size"_s, u"200x100"_s, u"xc:green"_s, m_bucket.file(u"a.heic"_s).path()});
        m_photograph = m_bucket.read(u"a.heic"_s);
    }

    void itIsKnownByItsBeginning()
    {
        QVERIFY(isHeif(m_photograph));
        QVERIFY(!isHeif("\x89PNG"));
        QVERIFY(!isHeif(QByteArray(200, 'x')));
        QVERIFY(!isHeif({}));
    }

    void aPhotographIsDecoded()
    {
        const QImage image = decodeHeif(m_photograph, 1 << 20);
        QCOMPARE(image.size(), QSize(200, 100));
        QVERIFY(image.pixelColor(100, 50).green() > 100);
    }

    void oneThatTakesMoreThanTheLimitIsNot()
    {
        QVERIFY(decodeHeif(m_photograph, 200 * 100 * 4 - 1).isNull());
        QVERIFY(!decodeHeif(m_photograph, 200 * 100 * 4).isNull());
    }

    void aCutOffOneIsNone()
    {
        for (const int size : {0, 12, 40, int(m_photograph.size()) / 2})
            QVERIFY(decodeHeif(m_photograph.left(size), 1 << 20).isNull());
    }
};

QTEST_GUILESS_MAIN(ImageHeifTests)
#include "ImageHeifTests.moc"
