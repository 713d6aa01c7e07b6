#include "Wendlores/Companion.h"
#include "Wendlores/CompanionCommands.h"

#include "Fakes/Bucket.h"

#include <QProcess>
#include <QTest>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

Bucket notes()
{
    return Bucket({{"Möte 10.md", "# Möte\n\n  Vi talade om  äpplen  \n"},
                   {"Möte 9.md", "Äpplen"},
                   {"Annat.md", "päron"},
                   {"Arbete/Äpplen.md", ""},
                   {"Arbete/bild.png", "bytes"},
                   {".dold.md", "äpplen"}});
}

Companion::Answer run(const Bucket& bucket, const QStringList& arguments)
{
    return Companion::run(arguments, bucket.root().path());
}

} // namespace

class CompanionTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void onlyItsCommandsAreCommands_data();
    void onlyItsCommandsAreCommands();
    void searchPrintsPathAndLineOfEveryHit();
    void searchThatFindsNothingEndsWithOne_data();
    void searchThatFindsNothingEndsWithOne();
    void treePrintsFoldersFirst();
    void emptyFolderHasAnEmptyTree();
    void folderMayBeRelativeOrAbsolute();
    void namesThatAreNotUnicodeArePrintedAsTheyAre();
    void nonsenseEndsWithTwo_data();
    void nonsenseEndsWithTwo();
    void programAnswersWithoutAScreen();
};

void CompanionTests::initTestCase()
{
    qputenv("LC_ALL", "sv_SE.UTF-8"); // the language decides the order of names
}

void CompanionTests::onlyItsCommandsAreCommands_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<bool>("isCommand");

    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("search") << QByteArray("search") << true;
    QTest::newRow("tree") << QByteArray("tree") << true;
    QTest::newRow("a folder of that name") << QByteArray("./tree") << false;
    QTest::newRow("an option") << QByteArray("--help") << false;
}

void CompanionTests::onlyItsCommandsAreCommands()
{
    QFETCH(const QByteArray, argument);
    QFETCH(const bool, isCommand);

    QCOMPARE(isCompanionCommand(std::string_view(argument)), isCommand);
}

void CompanionTests::searchPrintsPathAndLineOfEveryHit()
{
    const Companion::Answer answer = run(notes(), {u"search"_s, u"."_s, u" ÄPPLEN "_s});

    QCOMPARE(answer.status, Companion::Succeeded);
    QCOMPARE(QString::fromUtf8(answer.output),
             u"Möte 9.md\tÄpplen\nMöte 10.md\tVi talade om  äpplen\nArbete/Äpplen.md\t\n"_s);
    QVERIFY(answer.errors.isEmpty());
}

void CompanionTests::searchThatFindsNothingEndsWithOne_data()
{
    QTest::addColumn<QString>("query");

    QTest::newRow("absent") << u"banan"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("blank") << u" \t"_s;
}

void CompanionTests::searchThatFindsNothingEndsWithOne()
{
    QFETCH(const QString, query);

    const Companion::Answer answer = run(notes(), {u"search"_s, u"."_s, query});

    QCOMPARE(answer.status, Companion::NothingFound);
    QVERIFY(answer.output.isEmpty());
    QVERIFY(answer.errors.isEmpty());
}

void CompanionTests::treePrintsFoldersFirst()
{
    const Companion::Answer answer = run(notes(), {u"tree"_s, u"."_s});

    QCOMPARE(answer.status, Companion::Succeeded);
    QCOMPARE(QString::fromUtf8(answer.output),
             u"Arbete/\nArbete/bild.png\nArbete/Äpplen.md\nAnnat.md\nMöte 9.md\nMöte 10.md\n"_s);
}

void CompanionTests::emptyFolderHasAnEmptyTree()
{
    const Companion::Answer answer = run(Bucket(), {u"tree"_s, u"."_s});

    QCOMPARE(answer.status, Companion::Succeeded);
    QVERIFY(answer.output.isEmpty());
}

void CompanionTests::folderMayBeRelativeOrAbsolute()
{
    const Bucket bucket = notes();
    const QByteArray expected = QByteArray("bild.png\nÄpplen.md\n");

    QCOMPARE(run(bucket, {u"tree"_s, u"Arbete"_s}).output, expected);
    QCOMPARE(run(bucket, {u"tree"_s, u"./Arbete//"_s}).output, expected);
    QCOMPARE(run(bucket, {u"tree"_s, bucket.folder(u"Arbete"_s).path()}).output, expected);
}

void CompanionTests::namesThatAreNotUnicodeArePrintedAsTheyAre()
{
    const Bucket bucket({{"a.md", ""}});
    const QByteArray first = bucket.file(u"a.md"_s).bytes();
    const QByteArray name = bucket.root().bytes() + "/\xe5r.md";
    QCOMPARE(std::rename(first.constData(), name.constData()), 0);

    const QByteArray output = run(bucket, {u"tree"_s, u"."_s}).output;

    QCOMPARE(std::rename(name.constData(), first.constData()), 0);
    QCOMPARE(output, QByteArray("\xe5r.md\n"));
}

void CompanionTests::nonsenseEndsWithTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no folder") << QStringList{u"tree"_s} << u"wendlores tree MAPP"_s;
    QTest::newRow("no query") << QStringList{u"search"_s, u"."_s} << u"wendlores search MAPP TEXT"_s;
    QTest::newRow("too much") << QStringList{u"tree"_s, u"."_s, u"x"_s} << u"wendlores tree MAPP"_s;
    QTest::newRow("missing folder") << QStringList{u"tree"_s, u"Saknas"_s} << u"ingen mapp: Saknas"_s;
    QTest::newRow("a file") << QStringList{u"search"_s, u"Annat.md"_s, u"x"_s} << u"ingen mapp: Annat.md"_s;
    QTest::newRow("empty folder name") << QStringList{u"tree"_s, u""_s} << u"ingen mapp"_s;
}

void CompanionTests::nonsenseEndsWithTwo()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, reason);

    const Companion::Answer answer = run(notes(), arguments);

    QCOMPARE(answer.status, Companion::Misused);
    QVERIFY(answer.output.isEmpty());
    QVERIFY(QString::fromUtf8(answer.errors).contains(reason));
}

void CompanionTests::programAnswersWithoutAScreen()
{
    const Bucket bucket = notes();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"no such platform"_s);
    QProcess program;
    program.setProcessEnvironment(environment);

    program.start(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/wendlores"_s,
                  {u"search"_s, bucket.root().path(), u"päron"_s});

    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.readAllStandardOutput(), QByteArray("Annat.md\tpäron\n"));
    QCOMPARE(program.exitCode(), 0);
}

QTEST_GUILESS_MAIN(CompanionTests)
#include "CompanionTests.moc"
