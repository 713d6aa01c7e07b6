#include "Previews/GoogleDocPointer.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/OpenExternally.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const GoogleAddresses addresses{QUrl(u"https://docs.test"_s), QUrl(u"https://accounts.test"_s)};

/// JSON, written with simple quotation marks.
QByteArray json(QByteArray text)
{
    return text.replace('\'', '"');
}

QString preview(const QString& path, const QByteArray& pointer)
{
    const auto address = GoogleDocPointer::previewURL(FileURL::file(path), pointer, addresses);
    return address ? address->toString(QUrl::FullyEncoded) : u"nothing"_s;
}

} // namespace

class GoogleDocPointerTests final : public QObject
{
    Q_OBJECT

    static void pointerColumns()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("pointer");
        QTest::addColumn<QString>("address");
    }

private Q_SLOTS:
    void aPointerLeadsToItsPreview_data()
    {
        pointerColumns();
        const QString mine = u"/home/a/GoogleDrive-anna@example.org/"_s;
        QTest::newRow("its own address")
            << u"/b/Budget.gsheet"_s << json("{'url': 'https://docs.test/spreadsheets/d/ABC123/edit#gid=0'}")
            << u"https://docs.test/spreadsheets/d/ABC123/preview"_s;
        QTest::newRow("its own address, with a query")
            << u"/b/A.gdoc"_s << json("{'url': 'https://docs.test/document/d/A/edit?usp=drive'}")
            << u"https://docs.test/document/d/A/preview"_s;
        QTest::newRow("an address without an identifier")
            << u"/b/A.gdoc"_s << json("{'url': 'https://docs.test/open?id=A'}")
            << u"https://docs.test/open?id=A"_s;
        QTest::newRow("an address elsewhere")
            << u"/b/A.gdoc"_s << json("{'url': 'https://other.test/d/A/edit'}")
            << u"https://other.test/d/A/edit"_s;
        QTest::newRow("an identifier") << u"/b/A.gdoc"_s << json("{'doc_id': 'XYZ', 'resource_id': 'no'}")
                                       << u"https://docs.test/document/d/XYZ/preview"_s;
        QTest::newRow("a sheet in an account's folder")
            << mine + u"Budget.gsheet"_s << json("{'resource_id': 'XYZ'}")
            << u"https://docs.test/spreadsheets/d/XYZ/preview?authuser=anna@example.org"_s;
        QTest::newRow("slides, in capitals") << u"/b/A.GSLIDES"_s << json("{'doc_id': 'XYZ'}")
                                             << u"https://docs.test/presentation/d/XYZ/preview"_s;
        QTest::newRow("an address that names an account")
            << mine + u"A.gdoc"_s << json("{'url': 'https://other.test/x?authuser=0'}")
            << u"https://other.test/x?authuser=0"_s;
        QTest::newRow("an account that has a plus")
            << u"/GoogleDrive-a+b@example.org/A.gdoc"_s << json("{'doc_id': 'X'}")
            << u"https://docs.test/document/d/X/preview?authuser=a%2Bb@example.org"_s;
    }

    void aPointerLeadsToItsPreview()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, pointer);
        QTEST(preview(path, pointer), "address");
    }

    void aBrokenPointerLeadsNowhere_data()
    {
        pointerColumns();
        QTest::newRow("an address that is no text") << u"/b/A.gdoc"_s << json("{'url': 3, 'doc_id': 'X'}")
                                                    << u"https://docs.test/document/d/X/preview"_s;
        QTest::newRow("no web address")
            << u"/b/A.gdoc"_s << json("{'url': 'file:///etc/passwd'}") << u"nothing"_s;
        QTest::newRow("an identifier that is no text")
            << u"/b/A.gdoc"_s << json("{'doc_id': 7}") << u"nothing"_s;
        QTest::newRow("nothing said") << u"/b/A.gdoc"_s << QByteArray("{}") << u"nothing"_s;
        QTest::newRow("no object") << u"/b/A.gdoc"_s << QByteArray("[]") << u"nothing"_s;
        QTest::newRow("no JSON") << u"/b/A.gdoc"_s << QByteArray("hej") << u"nothing"_s;
    }

    void aBrokenPointerLeadsNowhere()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, pointer);
        QTEST(preview(path, pointer), "address");
    }

    void theAccountIsInThePath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("email");
        QTest::newRow("plain") << u"/x/GoogleDrive-anna@example.org/A.gdoc"_s << u"anna@example.org"_s;
        QTest::newRow("second folder of the account")
            << u"/x/GoogleDrive-anna@example.org (2)/A.gdoc"_s << u"anna@example.org"_s;
        QTest::newRow("white space") << u"/x/GoogleDrive- anna@example.org /A.gdoc"_s
                                     << u"anna@example.org"_s;
        QTest::newRow("the first that qualifies")
            << u"/GoogleDrive-delad/GoogleDrive-anna@example.org/A.gdoc"_s << u"anna@example.org"_s;
        QTest::newRow("no account") << u"/x/GoogleDrive/A.gdoc"_s << QString();
        QTest::newRow("other folder") << u"/x/Drive-anna@example.org/A.gdoc"_s << QString();
    }

    void theAccountIsInThePath()
    {
        QFETCH(QString, path);
        QTEST(GoogleDocPointer::accountEmail(FileURL::file(path)), "email");
    }

    void theSignInGoesOnToTheDocument()
    {
        const QUrl document(u"https://docs.test/document/d/X/preview?authuser=a&b=c"_s);
        const auto page = GoogleDocPointer::signInURL(
            FileURL::file(u"/GoogleDrive-anna@example.org/A.gdoc"_s), document, addresses);
        QCOMPARE(page->toString(QUrl::FullyEncoded),
                 u"https://accounts.test/AccountChooser?Email=anna@example.org&"
                 "continue=https%3A%2F%2Fdocs.test%2Fdocument%2Fd%2FX%2Fpreview%3Fauthuser%3Da%26b%3Dc"_s);

        const auto without = GoogleDocPointer::signInURL(FileURL::file(u"/A.gdoc"_s), document, addresses);
        QVERIFY(!without->toString().contains(u"Email"_s));
    }

    void thePointerIsReadFromTheDisk()
    {
        const Bucket bucket{{"A.gdoc", json("{'doc_id': 'X'}")}};
        QCOMPARE(GoogleDocPointer::previewURL(bucket.file(u"A.gdoc"_s), addresses),
                 QUrl(u"https://docs.test/document/d/X/preview"_s));
        QVERIFY(!GoogleDocPointer::previewURL(bucket.file(u"Borta.gdoc"_s), addresses));
    }

    void aPointerOpensItsDocumentElseItselfInTheDesktop()
    {
        const Bucket bucket{{"A.gdoc", json("{'url': 'https://example.org/x'}")}, {"B.gdoc", "hej"}};
        FakeServices desktop;

        openExternally(desktop.services(), bucket.file(u"A.gdoc"_s));
        openExternally(desktop.services(), bucket.file(u"B.gdoc"_s));
        QVERIFY2(desktop.workspace.addresses.isEmpty(), "the disk is not read on the window's thread");
        desktop.scheduler.finishBackgroundWork();

        QCOMPARE(desktop.workspace.addresses, QList{QUrl(u"https://example.org/x"_s)});
        QCOMPARE(desktop.workspace.files, QList{bucket.file(u"B.gdoc"_s)});
    }

    void theSignInPagesAreKnownByTheirHost()
    {
        QVERIFY(addresses.isSignIn(QUrl(u"https://accounts.test/x"_s)));
        QVERIFY(addresses.isSignIn(QUrl(u"https://login.accounts.test/x"_s)));
        QVERIFY(!addresses.isSignIn(QUrl(u"https://myaccounts.test/x"_s)));
        QVERIFY(!addresses.isSignIn(QUrl(u"https://docs.test/?accounts.test"_s)));
    }
};

QTEST_APPLESS_MAIN(GoogleDocPointerTests)
#include "GoogleDocPointerTests.moc"
