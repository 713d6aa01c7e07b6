#include "Previews/HtmlAddress.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class HtmlAddressTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFileHasAnAddressAndComesBack_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("plain") << QByteArray("/b/a.html");
        QTest::newRow("letters and spaces") << QByteArray("/b/Blå mapp/å ä ö.html");
        QTest::newRow("signs of addresses") << QByteArray("/b/100%?#&;=+ [1].html");
        QTest::newRow("not UTF-8") << QByteArray("/b/\xe5.html");
    }

    void everyFileHasAnAddressAndComesBack()
    {
        QFETCH(QByteArray, path);
        const QUrl address = pageAddress(FileURL::fromBytes(path, false));
        QVERIFY(address.isValid());
        const auto file = fileOfAddress(address);
        QVERIFY(file);
        QCOMPARE(file->bytes(), path);
    }

    void anAddressCannotClimb()
    {
        QCOMPARE(fileOfAddress(QUrl(u"page://document/b/%2E%2E/%2E%2E%2Fetc/passwd"_s))->path(),
                 u"/etc/passwd"_s);
        QVERIFY(!fileOfAddress(QUrl(u"page://document/b/%00.html"_s)));
        QVERIFY(!fileOfAddress(QUrl(u"https://example.org/a.html"_s)));
    }

    void aPageMayShowWhatLiesInItsBucketElseInItsFolder()
    {
        const FileURL file = FileURL::file(u"/b/bok/sida.html"_s);
        QCOMPARE(folderOfPage(file, FileURL::directory(u"/b"_s)).path(), u"/b"_s);
        QCOMPARE(folderOfPage(file, FileURL::directory(u"/annan"_s)).path(), u"/b/bok"_s);
        QCOMPARE(folderOfPage(file, std::nullopt).path(), u"/b/bok"_s);
    }

    void linksGoWhereTheyBelong_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<int>("action");
        const auto row = [](const char* link, LinkAction action) {
            QTest::newRow(link) << QString::fromLatin1(link) << int(action);
        };
        row("http://example.org/", LinkAction::openOutside);
        row("https://example.org/#a", LinkAction::openOutside);
        row("mailto:anna@example.org", LinkAction::openOutside);
        row("page://document/b/sida.html#del", LinkAction::follow);
        row("page://document/b/./x/../sida.html#del", LinkAction::follow);
        row("page://document/b/sida.html", LinkAction::openFile);
        row("page://document/b/annan.html#del", LinkAction::openFile);
        row("page://document/b/annan.html", LinkAction::openFile);
        row("file:///b/sida.html#del", LinkAction::follow);
        row("file:///b/annan.html", LinkAction::openFile);
        row("javascript:1", LinkAction::follow);
        row("about:blank", LinkAction::follow);
        row("", LinkAction::follow);
    }

    void linksGoWhereTheyBelong()
    {
        QFETCH(QString, link);
        QFETCH(int, action);
        QCOMPARE(int(actionOfLink(QUrl(link), FileURL::file(u"/b/sida.html"_s))), action);
    }

    void addressesOfTheWebAndOfMailAreForTheDesktop()
    {
        for (const char* address : {"http://example.org", "HTTPS://example.org", "mailto:anna@example.org"})
            QVERIFY2(isForTheDesktop(QUrl(QString::fromLatin1(address))), address);
        for (const char* address : {"file:///etc/passwd", "ssh:example.org", "tel:112", "javascript:1", ""})
            QVERIFY2(!isForTheDesktop(QUrl(QString::fromLatin1(address))), address);
    }

    void otherSchemesAreNotForTheEngine()
    {
        for (const char* address : {"page://document/b/a.html", "https://example.org", "about:blank",
                                    "data:text/html,a", "javascript:1"})
            QVERIFY2(isKnownToTheEngine(QUrl(QString::fromLatin1(address))), address);
        for (const char* address : {"mailto:anna@example.org", "tel:112", "steam://run/1", ""})
            QVERIFY2(!isKnownToTheEngine(QUrl(QString::fromLatin1(address))), address);
    }

    void whatIsNoUtf8IsLatin1()
    {
        QCOMPARE(htmlAsUtf8("sm\xe5"
                            "tt"),
                 QByteArray("sm\xc3\xa5tt"));
        QCOMPARE(htmlAsUtf8("sm\xc3\xa5tt"), QByteArray("sm\xc3\xa5tt"));
        QCOMPARE(htmlAsUtf8("sm\xe5"), QByteArray("sm\xc3\xa5")); // what is cut off in a letter is no UTF-8
        QCOMPARE(htmlAsUtf8("\xef\xbb\xbfsm\xc3\xa5"), QByteArray("\xef\xbb\xbfsm\xc3\xa5"));
        QCOMPARE(htmlAsUtf8(""), QByteArray());
    }
};

QTEST_APPLESS_MAIN(HtmlAddressTests)
#include "HtmlAddressTests.moc"
