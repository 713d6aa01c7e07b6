#include "Vault/FileURL.h"

#include <QTest>

#include <utility>

using namespace wendlore;
using namespace Qt::StringLiterals;

class FileURLTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dropsTrailingSeparators();
    void fileAndFolderOfOnePathDiffer();
    void splitsNames_data();
    void splitsNames();
    void walksUpAndDown();
    void standardizes_data();
    void standardizes();
    void aSiblingWithALongerNameIsNotBelow();
    void keepsNamesThatAreNotUtf8();
    void anEmptyLocationHasNoParts();
    void aLocationThatWasMovedFromIsEmpty();
    void comparesAsTheWholePathsDo_data();
    void comparesAsTheWholePathsDo();
};

void FileURLTests::dropsTrailingSeparators()
{
    QCOMPARE(FileURL::directory(u"/b/notes//"_s).path(), u"/b/notes"_s);
    QCOMPARE(FileURL::directory(u"/"_s).path(), u"/"_s);
}

void FileURLTests::fileAndFolderOfOnePathDiffer()
{
    QVERIFY(FileURL::file(u"/b/x"_s) != FileURL::directory(u"/b/x"_s));
    QCOMPARE(FileURL::file(u"/b/x"_s), FileURL::fromBytes("/b/x", false));
}

void FileURLTests::splitsNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extension");
    QTest::newRow("note") << u"/b/Plan.md"_s << u"Plan"_s << u"md"_s;
    QTest::newRow("two stops") << u"/b/a.b.md"_s << u"a.b"_s << u"md"_s;
    QTest::newRow("no extension") << u"/b/README"_s << u"README"_s << QString();
    QTest::newRow("hidden") << u"/b/.profile"_s << u".profile"_s << QString();
    QTest::newRow("ends in a stop") << u"/b/scan."_s << u"scan."_s << QString();
    QTest::newRow("stop in the folder") << u"/b.c/README"_s << u"README"_s << QString();
}

void FileURLTests::splitsNames()
{
    QFETCH(QString, path);
    QFETCH(QString, name);
    QFETCH(QString, extension);

    const FileURL url = FileURL::file(path);

    QCOMPARE(url.nameWithoutExtension(), name);
    QCOMPARE(url.pathExtension(), extension);
}

void FileURLTests::walksUpAndDown()
{
    const FileURL note = FileURL::directory(u"/b"_s).appending(u"Arbete/Möte.md"_s);

    QCOMPARE(note.path(), u"/b/Arbete/Möte.md"_s);
    QCOMPARE(note.lastPathComponent(), u"Möte.md"_s);
    QCOMPARE(note.deletingLastPathComponent(), FileURL::directory(u"/b/Arbete"_s));
    QCOMPARE(FileURL::directory(u"/b"_s).deletingLastPathComponent(), FileURL::directory(u"/"_s));
    QCOMPARE(FileURL::directory(u"/"_s).deletingLastPathComponent(), FileURL::directory(u"/"_s));
    QCOMPARE(FileURL::directory(u"/"_s).appending(u"b"_s).path(), u"/b"_s);
}

void FileURLTests::standardizes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("standardized");
    QTest::newRow("nothing to do") << u"/b/a.md"_s << u"/b/a.md"_s;
    QTest::newRow("up and down") << u"/b/notes/../notes/a.md"_s << u"/b/notes/a.md"_s;
    QTest::newRow("here") << u"/b/./a.md"_s << u"/b/a.md"_s;
    QTest::newRow("repeated separators") << u"/b//a.md"_s << u"/b/a.md"_s;
    QTest::newRow("above the root") << u"/../../a.md"_s << u"/a.md"_s;
    QTest::newRow("names of stops") << u"/b/.../..a"_s << u"/b/.../..a"_s;
}

void FileURLTests::standardizes()
{
    QFETCH(QString, path);
    QFETCH(QString, standardized);

    QCOMPARE(FileURL::file(path).standardized(), FileURL::file(standardized));
}

void FileURLTests::aSiblingWithALongerNameIsNotBelow()
{
    const FileURL bucket = FileURL::directory(u"/b/notes"_s);

    QVERIFY(FileURL::file(u"/b/notes/a.md"_s).isBelow(bucket));
    QVERIFY(!FileURL::file(u"/b/notes2/a.md"_s).isBelow(bucket));
    QVERIFY(!bucket.isBelow(bucket));
    QVERIFY(bucket.isBelow(FileURL::directory(u"/"_s)));
}

void FileURLTests::keepsNamesThatAreNotUtf8()
{
    const FileURL folder = FileURL::directory(u"/b"_s);

    const FileURL file = folder.appendingBytes("\xFF.md", false);

    QCOMPARE(file.bytes(), QByteArray("/b/\xFF.md"));
    QCOMPARE(file.path(), u"/b/\uFFFD.md"_s);
    QCOMPARE(file.nameBytes(), QByteArray("\xFF.md"));
}

void FileURLTests::anEmptyLocationHasNoParts()
{
    for (const FileURL& empty : {FileURL(), FileURL::file({}), FileURL::fromBytes({}, false)}) {
        QVERIFY(empty.isEmpty());
        QCOMPARE(empty, FileURL());
        QVERIFY(empty.bytes().isEmpty() && empty.nameBytes().isEmpty());
    }
    QVERIFY(!FileURL::directory(u"/"_s).isEmpty());
}

void FileURLTests::aLocationThatWasMovedFromIsEmpty()
{
    FileURL note = FileURL::file(u"/b/a.md"_s);
    const FileURL taken = std::move(note);

    QVERIFY(note.isEmpty()); // NOLINT(bugprone-use-after-move): that is what is asked
    QCOMPARE(taken, FileURL::file(u"/b/a.md"_s));
}

void FileURLTests::comparesAsTheWholePathsDo_data()
{
    QTest::addColumn<QByteArray>("left");
    QTest::addColumn<QByteArray>("right");
    const QByteArrayList paths{"/", "/b", "/b/a", "/b/a/c", "/b/a c", "/b/ab", "/ba", "b", "/b/A", "/b/\xFF"};
    for (const QByteArray& left : paths) {
        for (const QByteArray& right : paths)
            QTest::addRow("%s and %s", left.constData(), right.constData()) << left << right;
    }
}

void FileURLTests::comparesAsTheWholePathsDo()
{
    QFETCH(const QByteArray, left);
    QFETCH(const QByteArray, right);
    const FileURL one = FileURL::fromBytes(left, false);
    const FileURL other = FileURL::fromBytes(right, false);

    QCOMPARE(one == other, left == right);
    QCOMPARE(one.hasPathOf(other), left == right);
    QCOMPARE(one < other, left < right);
    QVERIFY(left != right || qHash(one) == qHash(other));
    const bool isBelow =
        left.size() > right.size() && left.startsWith(right) && (right == "/" || left[right.size()] == '/');
    QCOMPARE(one.isBelow(other), isBelow);
}

QTEST_APPLESS_MAIN(FileURLTests)
#include "FileURLTests.moc"
