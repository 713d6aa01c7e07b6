#include "Decoder/HeifPicture.h"

#include "Support/DamagedFiles.h"
#include "Support/Pictures.h"

#include <QTest>

using namespace wendlore;

class HeifPictureTests final : public QObject
{
    Q_OBJECT

    QByteArray m_photograph;

private Q_SLOTS:
    void initTestCase() { m_photograph = heicPhotograph(); }

    // Before anything that starts threads.
    void damagedFilesDoNoHarm()
    {
        QVERIFY(survivesDamage(m_photograph, [](const QByteArray& bytes) {
            static_cast<void>(heifPicture(bytes, 100'000'000));
        }));
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
        const QImage image = heifPicture(m_photograph, 1 << 20);
        QCOMPARE(image.size(), QSize(200, 100));
        QVERIFY(image.pixelColor(100, 50).green() > 100);
    }

    void oneThatTakesMoreThanTheLimitIsNot()
    {
        QVERIFY(heifPicture(m_photograph, 200 * 100 * 4 - 1).isNull());
        QVERIFY(!heifPicture(m_photograph, 200 * 100 * 4).isNull());
    }

    void aCutOffOneIsNone()
    {
        for (const int size : {0, 12, 40, int(m_photograph.size()) / 2})
            QVERIFY(heifPicture(m_photograph.left(size), 1 << 20).isNull());
    }
};

QTEST_GUILESS_MAIN(HeifPictureTests)
#include "HeifPictureTests.moc"
