#include "Previews/ImageHeif.h"

#include "Support/Photograph.h"

#include <QTest>

using namespace wendlore;

namespace {

const QDeadlineTimer forever(QDeadlineTimer::Forever);

} // namespace

class ImageHeifTests final : public QObject
{
    Q_OBJECT

    QByteArray m_photograph;

private Q_SLOTS:
    void initTestCase() { m_photograph = heicPhotograph(); }

    void itIsKnownByItsBeginning()
    {
        QVERIFY(isHeif(m_photograph));
        QVERIFY(!isHeif("\x89PNG"));
        QVERIFY(!isHeif(QByteArray(200, 'x')));
        QVERIFY(!isHeif({}));
    }

    void aPhotographIsDecoded()
    {
        const QImage image = decodeHeif(m_photograph, 1 << 20, forever);
        QCOMPARE(image.size(), QSize(200, 100));
        QVERIFY(image.pixelColor(100, 50).green() > 100);
        QVERIFY(decodeHeif(m_photograph, 1000, forever).isNull());
    }

    void oneThatTakesMoreThanTheTimeIsNot()
    {
        QVERIFY(decodeHeif(m_photograph, 1 << 20, QDeadlineTimer(0)).isNull());
    }
};

QTEST_GUILESS_MAIN(ImageHeifTests)
#include "ImageHeifTests.moc"
