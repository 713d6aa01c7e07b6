#include "Platform/FileAddress.h"

#include "Fakes/Bucket.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FileAddressTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyNameSurvives_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("plain") << QByteArray("/b/a.md");
        QTest::newRow("letters") << QByteArray("/b/Möte om 100 %.md");
        QTest::newRow("signs of addresses") << QByteArray("/b/a?b#c;d&e=f+g.md");
        QTest::newRow("not UTF-8") << QByteArray("/b/\xe5r.md");
        QTest::newRow("looks escaped") << QByteArray("/b/%41%2F.md");
    }

    void everyNameSurvives()
    {
        QFETCH(const QByteArray, path);

        const QUrl address(QString::fromLatin1(fileAddress(FileURL::fromBytes(path, false)).toEncoded()));

        QCOMPARE(fileAt(address), FileURL::fromBytes(path, false));
    }

    void aFolderIsKnownByTheDisk()
    {
        const Bucket bucket({{"Noter/A.md", ""}});

        QCOMPARE(fileAt(fileAddress(bucket.folder(u"Noter"_s))), bucket.folder(u"Noter"_s));
        QCOMPARE(fileAt(fileAddress(bucket.file(u"Noter/A.md"_s))), bucket.file(u"Noter/A.md"_s));
    }

    void otherAddressesAreNoFiles_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("web") << u"https://example.com/a.md"_s;
        QTest::newRow("another computer") << u"file://server/a.md"_s;
        QTest::newRow("relative") << u"a.md"_s;
        QTest::newRow("no path") << u"file://"_s;
        QTest::newRow("zero byte") << u"file:///a%00.md"_s;
    }

    void otherAddressesAreNoFiles()
    {
        QFETCH(const QString, address);

        QVERIFY(!fileAt(QUrl(address)));
    }
};

QTEST_GUILESS_MAIN(FileAddressTests)
#include "FileAddressTests.moc"
