#include "Wendlores/ThemeLink.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A theme that is not the standard one, as JSON.
QByteArray themeJson()
{
    QByteArray json = *TypographyTheme::standard().toJson();
    return json.replace("false", "true");
}

QString themeData()
{
    return QString::fromLatin1(themeJson().toPercentEncoding());
}

} // namespace

class ThemeLinkTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLinkCarriesATheme_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("as written") << u"wendlore://apply-theme?data="_s + themeData();
        QTest::newRow("capitals") << u"WENDLORE://APPLY-THEME?data="_s + themeData();
        QTest::newRow("among others") << u"wendlore://apply-theme?x=1&data="_s + themeData() + u"&y=2"_s;
        QTest::newRow("the first one counts")
            << u"wendlore://apply-theme?data="_s + themeData() + u"&data=%7B%7D"_s;
        QTest::newRow("with a path") << u"wendlore://apply-theme/?data="_s + themeData();
    }

    void aLinkCarriesATheme()
    {
        QFETCH(const QString, link);

        QCOMPARE(themeOfLink(QUrl(link)), TypographyTheme::fromJson(themeJson()));
        QVERIFY(themeOfLink(QUrl(link)) != TypographyTheme::standard());
    }

    void anyOtherLinkCarriesNone_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("another scheme") << u"other://apply-theme?data="_s + themeData();
        QTest::newRow("another host") << u"wendlore://open?data="_s + themeData();
        QTest::newRow("no host") << u"wendlore:apply-theme?data="_s + themeData();
        QTest::newRow("capital D") << u"wendlore://apply-theme?Data="_s + themeData();
        QTest::newRow("no query") << u"wendlore://apply-theme"_s;
        QTest::newRow("no value") << u"wendlore://apply-theme?data"_s;
        QTest::newRow("empty value") << u"wendlore://apply-theme?data="_s;
        QTest::newRow("no JSON") << u"wendlore://apply-theme?data=hej"_s;
        QTest::newRow("wrong shape") << u"wendlore://apply-theme?data=%5B1%5D"_s;
        QTest::newRow("the first one is broken") << u"wendlore://apply-theme?data=%7B&data="_s + themeData();
        QTest::newRow("nothing") << QString();
    }

    void anyOtherLinkCarriesNone()
    {
        QFETCH(const QString, link);

        QVERIFY(!themeOfLink(QUrl(link)));
    }
};

QTEST_GUILESS_MAIN(ThemeLinkTests)
#include "ThemeLinkTests.moc"
