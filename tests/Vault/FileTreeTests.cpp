#include "Vault/FileTree.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Vault/Collation.h"

#include <QProcess>
#include <QTest>

#include <atomic>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The tree as text: names in order, contents of a folder in parentheses after its name.
QString outline(const std::vector<FileNode>& nodes)
{
    QStringList names;
    for (const FileNode& node : nodes) {
        QString name = node.url.lastPathComponent();
        if (node.children)
            name += u'(' + outline(*node.children) + u')';
        names.append(name);
    }
    return names.join(u' ');
}

QString swedishOutline(const Bucket& bucket)
{
    return outline(buildTree(bucket.root(), NameOrder("sv_SE.UTF-8")));
}

QString notesOf(const Bucket& bucket)
{
    QStringList paths;
    for (const FileURL& note : allMarkdownFiles(bucket.root()))
        paths.append(note.path().mid(bucket.root().path().size() + 1));
    return paths.join(u' ');
}

void makeLink(const Bucket& bucket, const QString& target, const QString& name)
{
    QVERIFY(QFile::link(target, bucket.file(name).path()));
}

} // namespace

class FileTreeTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldersComeFirstAndCaseDoesNotMatter();
    void numbersSortByTheirValue();
    void swedishLettersSortLast();
    void namesThatCompareEqualKeepTheOrderOfTheirBytes();
    void folderNamesAreComparedWhole();
    void orderIsTheSameAtEveryBuild();
    void hiddenEntriesAreNotShown();
    void packagesAreFiles();
    void entriesOfEveryTypeAreShown();
    void linksAreFilesAndNeverFollowed();
    void bucketItselfMayBeALink();
    void missingFolderIsEmpty();
    void bucketThatIsAFileIsEmpty();
    void unreadableFolderIsShownEmpty();
    void emptyFolderHasNoChildren();
    void namesThatAreNotUtf8Survive();
    void namesOfEveryLengthAreShown();
    void manyFoldersAreAllShown();
    void veryDeepFoldersAreShownAsFarAsPathsReach();
    void manyEntriesInOneFolderAreAllShown();
    void foldersThatComeAndGoMeanwhileDoNoHarm();
    void noDescriptorsAreLeftOpen();

    void pathIsFoundInTheTree();
    void pathWithATrailingSeparatorIsNotFound();
    void pathOutsideTheTreeIsNotFound();

    void notesAreMdAndTxtFilesWhateverTheirCase();
    void notesAreFoundAllTheWayDown();
    void notesInsidePackagesCount();
    void hiddenNotesDoNotCount();
    void folderNamedAsANoteComesBeforeItsContents();
    void missingBucketHasNoNotes();
};

void FileTreeTests::foldersComeFirstAndCaseDoesNotMatter()
{
    const Bucket bucket({{"b/", ""}, {"A/", ""}, {"B.txt", ""}, {"a.md", ""}});

    QCOMPARE(swedishOutline(bucket), u"A() b() a.md B.txt"_s);
}

void FileTreeTests::numbersSortByTheirValue()
{
    const Bucket bucket(
        {{"Note 10.md", ""}, {"Note 9.md", ""}, {"Not 2/", ""}, {"Not 10/", ""}, {"Note 1.md", ""}});

    QCOMPARE(swedishOutline(bucket), u"Not 2() Not 10() Note 1.md Note 9.md Note 10.md"_s);
}

void FileTreeTests::swedishLettersSortLast()
{
    const Bucket bucket({{"Ö.md", ""}, {"Ä.md", ""}, {"Å.md", ""}, {"Z.md", ""}, {"A.md", ""}, {"O.md", ""}});

    QCOMPARE(swedishOutline(bucket), u"A.md O.md Z.md Å.md Ä.md Ö.md"_s);
    const QString english = outline(buildTree(bucket.root(), NameOrder("en_US.UTF-8")));
    QCOMPARE(english, u"A.md Å.md Ä.md O.md Ö.md Z.md"_s);
}

void FileTreeTests::namesThatCompareEqualKeepTheOrderOfTheirBytes()
{
    const Bucket bucket(
        {{"Plan.txt", ""}, {"plan.md", ""}, {"Plan.md", ""}, {"PLAN.html", ""}, {"1.md", ""}, {"01.md", ""}});

    QCOMPARE(swedishOutline(bucket), u"01.md 1.md PLAN.html Plan.md Plan.txt plan.md"_s);
}

void FileTreeTests::folderNamesAreComparedWhole()
{
    const Bucket bucket({{"v1.10/", ""}, {"v1.9/", ""}, {"v1/", ""}});

    QCOMPARE(swedishOutline(bucket), u"v1() v1.9() v1.10()"_s);
}

void FileTreeTests::orderIsTheSameAtEveryBuild()
{
    Bucket bucket;
    for (int number = 0; number < 300; ++number)
        bucket.write(u"%1/samma.%2"_s.arg(number % 20).arg(number), {});
    const auto tree = buildTree(bucket.root());
    QCOMPARE(tree.size(), 20);

    for (int time = 0; time < 20; ++time)
        QVERIFY(buildTree(bucket.root()) == tree);
}

void FileTreeTests::hiddenEntriesAreNotShown()
{
    const Bucket bucket(
        {{".git/config", ""}, {".DS_Store", ""}, {"..odd.md", ""}, {"A.md", ""}, {"Mapp/.dold.md", ""}});

    QCOMPARE(swedishOutline(bucket), u"Mapp() A.md"_s);
}

void FileTreeTests::packagesAreFiles()
{
    const Bucket bucket(
        {{"Report.rtfd/TXT.rtf", ""}, {"Budget.numbers/", ""}, {"App.APP/", ""}, {"Mapp/B.pages/x", ""}});

    QCOMPARE(swedishOutline(bucket), u"Mapp(B.pages) App.APP Budget.numbers Report.rtfd"_s);
    QVERIFY(!buildTree(bucket.root()).back().url.isDirectory());
}

void FileTreeTests::entriesOfEveryTypeAreShown()
{
    const Bucket bucket({{"A.md", ""}});
    QCOMPARE(::mkfifo(bucket.file(u"B"_s).bytes().constData(), 0600), 0);

    QCOMPARE(swedishOutline(bucket), u"A.md B"_s);
}

void FileTreeTests::linksAreFilesAndNeverFollowed()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    makeLink(bucket, bucket.root().path(), u"Mapp/slinga"_s);
    makeLink(bucket, bucket.folder(u"Mapp"_s).path(), u"till mapp"_s);
    makeLink(bucket, u"/finns/inte"_s, u"trasig"_s);

    QCOMPARE(swedishOutline(bucket), u"Mapp(A.md slinga) till mapp trasig"_s);
    QCOMPARE(notesOf(bucket), u"Mapp/A.md"_s);
}

void FileTreeTests::bucketItselfMayBeALink()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    const Bucket elsewhere;
    makeLink(elsewhere, bucket.root().path(), u"länk"_s);
    const FileURL link = elsewhere.folder(u"länk"_s);

    const auto tree = buildTree(link);

    QCOMPARE(outline(tree), u"Mapp(A.md)"_s);
    QCOMPARE(tree.front().url, link.appending(u"Mapp"_s, true));
}

void FileTreeTests::missingFolderIsEmpty()
{
    const Bucket bucket;

    QVERIFY(buildTree(bucket.folder(u"finns inte"_s)).empty());
    QVERIFY(buildTree(FileURL()).empty());
}

void FileTreeTests::bucketThatIsAFileIsEmpty()
{
    const Bucket bucket({{"A.md", "text"}});

    QVERIFY(buildTree(bucket.file(u"A.md"_s)).empty());
}

void FileTreeTests::unreadableFolderIsShownEmpty()
{
    const Bucket bucket({{"Hemlig/A.md", ""}, {"Öppen/B.md", ""}});
    QCOMPARE(::chmod(bucket.root().bytes().constData(), 0755), 0);
    QCOMPARE(::chmod(bucket.folder(u"Hemlig"_s).bytes().constData(), 0), 0);

    const ChildResult shown = ChildProcess::run([&] {
        becomeOrdinaryUser();
        return swedishOutline(bucket).toUtf8();
    });

    QVERIFY(shown.hasExited);
    QCOMPARE(QString::fromUtf8(shown.said), u"Hemlig() Öppen(B.md)"_s);
    QCOMPARE(::chmod(bucket.folder(u"Hemlig"_s).bytes().constData(), 0700), 0);
}

void FileTreeTests::emptyFolderHasNoChildren()
{
    const Bucket bucket({{"Tom/", ""}, {"A.md", ""}});

    const auto tree = buildTree(bucket.root());

    QVERIFY(tree[0].isDirectory);
    QVERIFY(tree[0].children && tree[0].children->empty());
    QVERIFY(!tree[1].isDirectory);
    QVERIFY(!tree[1].children);
}

void FileTreeTests::namesThatAreNotUtf8Survive()
{
    const Bucket bucket;
    const FileURL folder = bucket.root().appendingBytes("\xe5r", true);
    QCOMPARE(::mkdir(folder.bytes().constData(), 0755), 0);
    const FileURL note = folder.appendingBytes("m\xf6te.md", false);
    const int file = ::open(note.bytes().constData(), O_CREAT | O_WRONLY, 0644);
    QVERIFY(file >= 0);
    ::close(file);

    const auto tree = buildTree(bucket.root());

    QCOMPARE(tree.size(), 1);
    QCOMPARE(tree[0].url, folder);
    QCOMPARE(tree[0].children->at(0).url, note);
    QCOMPARE(allMarkdownFiles(bucket.root()), std::vector{note});

    // The temporary folder cannot be swept by names that it cannot decode.
    QCOMPARE(::unlink(note.bytes().constData()), 0);
    QCOMPARE(::rmdir(folder.bytes().constData()), 0);
}

void FileTreeTests::namesOfEveryLengthAreShown()
{
    Bucket bucket;
    for (int length : {1, 7, 8, 9, 23, 24, 25, 100, 254, 255})
        bucket.write(QString(length, u'x'), {});

    const auto tree = buildTree(bucket.root());

    QCOMPARE(tree.size(), 10);
    QCOMPARE(tree.back().url.lastPathComponent().size(), 255);
}

void FileTreeTests::manyFoldersAreAllShown()
{
    Bucket bucket;
    QStringList expected;
    for (int outer = 0; outer < 30; ++outer) {
        QStringList inner;
        for (int number = 0; number < 10; ++number) {
            bucket.write(u"%1/%2/%3.md"_s.arg(outer).arg(number).arg(outer * number), {});
            inner.append(u"%1(%2.md)"_s.arg(number).arg(outer * number));
        }
        expected.append(u"%1(%2)"_s.arg(outer).arg(inner.join(u' ')));
    }

    QCOMPARE(swedishOutline(bucket), expected.join(u' '));
    QCOMPARE(allMarkdownFiles(bucket.root()).size(), 300);
}

void FileTreeTests::veryDeepFoldersAreShownAsFarAsPathsReach()
{
    constexpr int depth = 2500;
    const Bucket bucket;
    int folder = ::open(bucket.root().bytes().constData(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        QCOMPARE(::mkdirat(folder, "d", 0755), 0);
        const int next = ::openat(folder, "d", O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = next;
    }
    ::close(folder);

    const auto tree = buildTree(bucket.root());

    int shown = 0;
    for (const auto* level = &tree; !level->empty(); level = &*level->front().children)
        ++shown;
    QVERIFY2(shown > 2000 && shown <= depth, qPrintable(QString::number(shown)));
    QVERIFY(!urlInTree(u"/finns/inte"_s, tree));
    QVERIFY(allMarkdownFiles(bucket.root()).empty());

    QCOMPARE(QProcess::execute(u"rm"_s, {u"-r"_s, bucket.folder(u"d"_s).path()}), 0);
}

void FileTreeTests::manyEntriesInOneFolderAreAllShown()
{
    const Bucket bucket;
    constexpr int count = 2000; // several batches of directory entries
    for (int number = 0; number < count; ++number) {
        const QByteArray name = "En anteckning med ett ganska långt namn " + QByteArray::number(number);
        const int file =
            ::open(bucket.root().appendingBytes(name, false).bytes().constData(), O_CREAT | O_WRONLY, 0644);
        QVERIFY(file >= 0);
        ::close(file);
    }

    const auto tree = buildTree(bucket.root());

    QCOMPARE(tree.size(), count);
    for (int number = 0; number < count; ++number)
        QVERIFY(tree[number].url.bytes().endsWith(' ' + QByteArray::number(number)));
}

void FileTreeTests::foldersThatComeAndGoMeanwhileDoNoHarm()
{
    Bucket bucket({{"Kvar/A.md", ""}});
    for (int number = 0; number < 40; ++number)
        bucket.write(u"Mapp/%1/B.md"_s.arg(number), {});
    std::atomic_bool isOver = false;
    std::thread other([&] {
        const QString from = bucket.folder(u"Mapp"_s).path();
        const QString to = bucket.folder(u"Mopp"_s).path();
        while (!isOver) {
            ::rename(from.toUtf8().constData(), to.toUtf8().constData());
            ::rename(to.toUtf8().constData(), from.toUtf8().constData());
        }
    });

    int complete = 0;
    for (int time = 0; time < 300; ++time) {
        const auto tree = buildTree(bucket.root());
        complete += tree.size() >= 2 ? 1 : 0;
        QCOMPARE(outline({tree.front()}), u"Kvar(A.md)"_s);
    }
    isOver = true;
    other.join();

    QVERIFY(complete > 0);
}

void FileTreeTests::noDescriptorsAreLeftOpen()
{
    Bucket bucket;
    for (int number = 0; number < 50; ++number)
        bucket.write(u"%1/%1/A.md"_s.arg(number), {});
    const auto openDescriptors = [] {
        return QDir(u"/proc/self/fd"_s)
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
            .size();
    };
    const auto before = openDescriptors();

    QCOMPARE(buildTree(bucket.root()).size(), 50);

    QCOMPARE(openDescriptors(), before);
}

void FileTreeTests::pathIsFoundInTheTree()
{
    const Bucket bucket({{"Mapp/Under/A.md", ""}, {"B.md", ""}});
    const auto tree = buildTree(bucket.root());

    QCOMPARE(urlInTree(bucket.file(u"Mapp/Under/A.md"_s).path(), tree), bucket.file(u"Mapp/Under/A.md"_s));
    QCOMPARE(urlInTree(bucket.file(u"B.md"_s).path(), tree), bucket.file(u"B.md"_s));
    QCOMPARE(urlInTree(bucket.folder(u"Mapp/Under"_s).path(), tree), bucket.folder(u"Mapp/Under"_s));
}

void FileTreeTests::pathWithATrailingSeparatorIsNotFound()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    const auto tree = buildTree(bucket.root());

    QVERIFY(!urlInTree(bucket.folder(u"Mapp"_s).path() + u'/', tree));
}

void FileTreeTests::pathOutsideTheTreeIsNotFound()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    const auto tree = buildTree(bucket.root());

    QVERIFY(!urlInTree(bucket.root().path(), tree));
    QVERIFY(!urlInTree(bucket.file(u"Mapp/../Mapp/A.md"_s).path(), tree));
    QVERIFY(!urlInTree({}, tree));
}

void FileTreeTests::notesAreMdAndTxtFilesWhateverTheirCase()
{
    const Bucket bucket({{"README.MD", ""},
                         {"a.b.md", ""},
                         {"b.TXT", ""},
                         {"notes.markdown", ""},
                         {"md", ""},
                         {"c.md.bak", ""},
                         {"d.", ""}});

    QCOMPARE(notesOf(bucket), u"README.MD a.b.md b.TXT"_s);
}

void FileTreeTests::notesAreFoundAllTheWayDown()
{
    const Bucket bucket({{"b/c/d.md", ""}, {"b/a.md", ""}, {"a/z.md", ""}, {"c.md", ""}, {"a.md", ""}});

    QCOMPARE(notesOf(bucket), u"a/z.md a.md b/a.md b/c/d.md c.md"_s);
}

void FileTreeTests::notesInsidePackagesCount()
{
    const Bucket bucket({{"Bok.textbundle/text.md", ""}, {"Report.rtfd/readme.txt", ""}});

    QCOMPARE(notesOf(bucket), u"Bok.textbundle/text.md Report.rtfd/readme.txt"_s);
}

void FileTreeTests::hiddenNotesDoNotCount()
{
    const Bucket bucket({{".dold/A.md", ""}, {".B.md", ""}, {".md", ""}, {"C.md", ""}});

    QCOMPARE(notesOf(bucket), u"C.md"_s);
}

void FileTreeTests::folderNamedAsANoteComesBeforeItsContents()
{
    const Bucket bucket({{"x.md/A.md", ""}});

    const auto notes = allMarkdownFiles(bucket.root());

    QCOMPARE(notes, (std::vector{bucket.folder(u"x.md"_s), bucket.file(u"x.md/A.md"_s)}));
}

void FileTreeTests::missingBucketHasNoNotes()
{
    const Bucket bucket;

    QVERIFY(allMarkdownFiles(bucket.folder(u"finns inte"_s)).empty());
}

QTEST_GUILESS_MAIN(FileTreeTests)
#include "FileTreeTests.moc"
