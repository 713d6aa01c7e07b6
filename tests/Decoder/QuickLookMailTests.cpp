#include "Decoder/QuickLookMail.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class QuickLookMailTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void encodedWordsAreDecoded_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QByteArray("Hej") << u"Hej"_s;
        QTest::newRow("q") << QByteArray("=?utf-8?Q?R=C3=A4v_h=C3=A4r?= !") << u"Räv här !"_s;
        QTest::newRow("b") << QByteArray("=?UTF-8?B?w6XDpMO2?=") << u"åäö"_s;
        QTest::newRow("Latin-1") << QByteArray("=?iso-8859-1?q?r=E4v?=") << u"räv"_s;
        QTest::newRow("two words") << QByteArray("=?utf-8?q?a?= =?utf-8?q?b?=") << u"ab"_s;
        QTest::newRow("unknown charset") << QByteArray("=?x-none?q?a?=") << u"a"_s;
        QTest::newRow("broken") << QByteArray("=?utf-8?q?a") << u"=?utf-8?q?a"_s;
    }

    void encodedWordsAreDecoded()
    {
        QFETCH(const QByteArray, value);
        QFETCH(const QString, text);

        QCOMPARE(decodedHeader(value), text);
    }

    void thePlainTextOfAMessageIsShown()
    {
        const auto message =
            MailMessage::parse("From: Anna <anna@example.org>\nSubject: =?utf-8?q?M=C3=B6te?=\n"
                               " i dag\nContent-Type: multipart/mixed; boundary=\"gr\"\n\nf\n"
                               "--gr\nContent-Type: multipart/alternative; boundary=inre\n\n"
                               "--inre\nContent-Type: text/plain; charset=iso-8859-1\n"
                               "Content-Transfer-Encoding: quoted-printable\n\nR=E4v=\n h\n"
                               "--inre\nContent-Type: text/html\n\n<p>HTML</p>\n--inre--\n"
                               "--gr\nContent-Type: image/png\n"
                               "Content-Disposition: attachment; filename=\"b.png\"\n\nxx\n"
                               "--gr--\n");

        QCOMPARE(message.header("subject"), u"Möte i dag"_s);
        QCOMPARE(message.text.trimmed(), u"Räv h"_s);
        QCOMPARE(message.attachments, QStringList{u"b.png"_s});
    }

    void aMessageInHtmlAloneIsShownAsText()
    {
        const auto message =
            MailMessage::parse("From: a@b\nContent-Type: text/html\nContent-Transfer-Encoding: "
                               "base64\n\n" +
                               QByteArray("<head><title>x</title></head><p>Hej &amp; hå</p>"
                                          "<script>alert(1)</script>Då<br>slut")
                                   .toBase64());

        QCOMPARE(message.text, u"Hej & hå\nDå\nslut"_s);
    }

    void aMessageIsAPageWithoutMarkupOfItsOwn()
    {
        const auto page = mailPage("From: <b>x</b>\nSubject: <img src=a>\n\n<script>");

        QVERIFY(page);
        QVERIFY(page->body.contains("<h1>&lt;img src=a&gt;</h1>"));
        QVERIFY(page->body.contains("<div class=\"letter\">&lt;script&gt;</div>"));
    }

    void theDateIsSaidAsItIsHere_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<QByteArray>("shown");
        QTest::newRow("of another place")
            << QByteArray("Fri, 17 May 2024 12:00:00 +0200") << QByteArray("17 maj 2024 10:00");
        QTest::newRow("with a remark")
            << QByteArray("Fri, 17 May 2024 12:00:00 +0000 (UTC)") << QByteArray("17 maj 2024 12:00");
        QTest::newRow("no date") << QByteArray("i <fredags>") << QByteArray("i &lt;fredags&gt;");
    }

    void theDateIsSaidAsItIsHere()
    {
        QFETCH(const QByteArray, header);
        QFETCH(const QByteArray, shown);
        qputenv("TZ", "UTC");
        const auto page = mailPage("Subject: Hej\nDate: " + header + "\n\nx");
        QVERIFY2(page->body.contains("<td>Datum</td><td>" + shown + "</td>"), page->body.constData());
    }

    void whatIsNoMessageIsNoPage()
    {
        QVERIFY(!mailPage("hej"));
        QVERIFY(!mailPage({}));
    }

    void partsWithinPartsEnd()
    {
        QByteArray message = "From: a\n";
        for (int i = 0; i < 5000; ++i)
            message += "Content-Type: multipart/mixed; boundary=b\n\n--b\n";

        QVERIFY(mailPage(message));
    }

    void damagedMessagesEndInSomePage()
    {
        const QByteArray whole = "From: a\nContent-Type: multipart/mixed; boundary=\"gr\"\n\n--gr\n"
                                 "Content-Type: text/plain; charset=utf-16\n\nHej\n--gr\n"
                                 "Content-Transfer-Encoding: base64\n\nSGVq\n--gr--\n";
        QRandomGenerator random(11);
        for (int round = 0; round < 2000; ++round) {
            QByteArray damaged = whole;
            for (int i = 0; i < 4; ++i)
                damaged[random.bounded(int(damaged.size()))] = static_cast<char>(random.bounded(256));
            damaged.truncate(random.bounded(int(damaged.size() + 1)));
            const MailMessage message = MailMessage::parse(damaged);
            QVERIFY(message.text.size() <= damaged.size());
        }
    }
};

QTEST_GUILESS_MAIN(QuickLookMailTests)
#include "QuickLookMailTests.moc"
