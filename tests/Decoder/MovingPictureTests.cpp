#include "Decoder/MovingPicture.h"

#include "Support/DamagedFiles.h"
#include "Support/Pictures.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class MovingPictureTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Before anything that starts threads.
    void damagedFilesDoNoHarm_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.gif", "a.webp"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void damagedFilesDoNoHarm()
    {
        QFETCH(QString, name);
        QVERIFY(survivesDamage(movingFile(name, 0), [](const QByteArray& bytes) {
            if (!MovingPicture::isIn(bytes))
                return;
            MovingPicture picture(bytes);
            for (int left = 5; left > 0 && picture.next(); --left) {
            }
        }));
    }

    void imagesThatMoveAreKnown()
    {
        QVERIFY(MovingPicture::isIn(movingFile(u"a.gif"_s, 0)));
        QVERIFY(MovingPicture::isIn(movingFile(u"a.webp"_s, 0)));
        QVERIFY(!MovingPicture::isIn(pictureFile(u"a.gif"_s, {u"xc:red"_s})));
        QVERIFY(!MovingPicture::isIn("hej"));
    }

    void eachPictureSaysHowLongItIsShown()
    {
        MovingPicture picture(movingFile(u"a.gif"_s, 0));
        QCOMPARE(picture.next()->milliseconds, 200);
        QCOMPARE(picture.next()->milliseconds, 300);
        QCOMPARE(picture.next()->milliseconds, 200);
    }

    void itEndsAfterTheRoundsThatTheFileAsksFor()
    {
        MovingPicture picture(movingFile(u"a.gif"_s, 2));
        int pictures = 0;
        while (pictures < 100 && picture.next())
            ++pictures;
        QVERIFY(pictures >= 4 && pictures <= 6); // what "twice" means differs between decoders by one
        QVERIFY(!picture.next());
    }

    void withoutAnEndItGoesOn()
    {
        MovingPicture picture(movingFile(u"a.gif"_s, 0));
        for (int frame = 0; frame < 50; ++frame)
            QVERIFY(picture.next());
    }

    void aDamagedOneStopsAtTheDamage()
    {
        const QByteArray whole = movingFile(u"a.gif"_s, 0);
        MovingPicture picture(whole.left(whole.size() / 2));
        int pictures = 0;
        while (pictures < 100 && picture.next())
            ++pictures;
        QVERIFY(pictures < 3);
    }
};

QTEST_GUILESS_MAIN(MovingPictureTests)
#include "MovingPictureTests.moc"
