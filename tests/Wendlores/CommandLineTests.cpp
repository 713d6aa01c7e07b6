#include "Wendlores/CommandLine.h"

#include "Fakes/Bucket.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class CommandLineTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutArgumentsTheProgramJustStarts()
    {
        const CommandLine line = CommandLine::parse({}, u"/"_s);

        QCOMPARE(line.action, CommandLine::Action::Run);
        QVERIFY(!line.location);
    }

    void aRelativePathStartsWhereTheUserIs()
    {
        const Bucket bucket({{"Noter/A.md", ""}});
        const QString here = bucket.root().path();

        QCOMPARE(CommandLine::parse({u"Noter/../Noter/"_s}, here).location, bucket.folder(u"Noter"_s));
        QCOMPARE(CommandLine::parse({u"Noter/A.md"_s}, here).location, bucket.file(u"Noter/A.md"_s));
        QCOMPARE(CommandLine::parse({u"."_s}, here).location, bucket.root());
    }

    void aPathMayLookLikeAnOptionAfterTwoDashes()
    {
        const CommandLine line = CommandLine::parse({u"--"_s, u"-v"_s}, u"/b"_s);

        QCOMPARE(line.action, CommandLine::Action::Run);
        QCOMPARE(line.location, FileURL::file(u"/b/-v"_s));
    }

    void aLinkOfTheProgramIsTakenAsItIs()
    {
        const CommandLine line = CommandLine::parse({u"WENDLORE://apply-theme?data=%7B%7D"_s}, u"/"_s);

        QCOMPARE(line.action, CommandLine::Action::Run);
        QCOMPARE(line.link, QUrl(u"wendlore://apply-theme?data=%7B%7D"_s));
        QVERIFY(!line.location);
    }

    void aFileMayBeGivenByItsAddress()
    {
        const Bucket bucket({{"Möte 1.md", ""}});
        const QString address = u"file://"_s + bucket.root().path() + u"/M%C3%B6te%201.md"_s;

        QCOMPARE(CommandLine::parse({address}, u"/"_s).location, bucket.file(u"Möte 1.md"_s));
        QCOMPARE(CommandLine::parse({u"file://"_s + bucket.root().path()}, u"/"_s).location, bucket.root());
    }

    void helpAndVersionArePrinted_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QString>("text");
        QTest::newRow("help") << u"--help"_s << u"Användning: wendlores"_s;
        QTest::newRow("short help") << u"-h"_s << u"Användning: wendlores"_s;
        QTest::newRow("version") << u"--version"_s << u"Wendlores 1."_s;
        QTest::newRow("short version") << u"-v"_s << u"Wendlores 1."_s;
    }

    void helpAndVersionArePrinted()
    {
        QFETCH(const QString, argument);
        QFETCH(const QString, text);

        const CommandLine line = CommandLine::parse({argument}, u"/"_s);

        QCOMPARE(line.action, CommandLine::Action::ShowText);
        QVERIFY2(line.text.startsWith(text), qPrintable(line.text));
    }

    void whatCannotBeUnderstoodIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("unknown option") << QStringList{u"--nonsens"_s};
        QTest::newRow("two paths") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("a link of somebody else") << QStringList{u"https://example.com/a.md"_s};
        QTest::newRow("empty path") << QStringList{QString()};
    }

    void whatCannotBeUnderstoodIsRefused()
    {
        QFETCH(const QStringList, arguments);

        const CommandLine line = CommandLine::parse(arguments, u"/"_s);

        QCOMPARE(line.action, CommandLine::Action::RefuseUsage);
        QVERIFY(line.text.contains(u"Användning:"_s));
    }
};

QTEST_GUILESS_MAIN(CommandLineTests)
#include "CommandLineTests.moc"
