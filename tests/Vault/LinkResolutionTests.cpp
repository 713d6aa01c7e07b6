#include "Vault/LinkResolution.h"

#include "Fakes/Bucket.h"
#include "Vault/FileTree.h"

#include <QTest>

#include <sys/stat.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

QStringList paths(const std::vector<FileURL>& urls)
{
    QStringList paths;
    for (const FileURL& url : urls)
        paths.append(url.path());
    return paths;
}

} // namespace

class LinkResolutionTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linkedPaths_data();
    void linkedPaths();
    void linkedNoteNames_data();
    void linkedNoteNames();
    void candidatesOfAPath_data();
    void candidatesOfAPath();
    void bundleAbsolutePaths_data();
    void bundleAbsolutePaths();
    void withoutANoteOnlyTheRootIsSearched();
    void aNoteOutsideTheBucketFindsNothing();
    void aNoteIsFoundByItsNameWhateverTheCase_data();
    void aNoteIsFoundByItsNameWhateverTheCase();
    void theFirstFileInTreeOrderAnswers();
    void foldersAnswerNoName();
};

void LinkResolutionTests::linkedPaths_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("path");
    const auto row = [](const char* name, const QString& text, const QString& path) {
        QTest::newRow(name) << text << path;
    };
    row("plain", u"Plan"_s, u"Plan"_s);
    row("escaped blank", u"Projekt%20X/Plan"_s, u"Projekt X/Plan"_s);
    row("escaped letters", u"M%C3%B6te"_s, u"Möte"_s);
    row("lower-case escape", u"M%c3%b6te"_s, u"Möte"_s);
    row("escaped slash", u"A%2FB"_s, u"A/B"_s);
    row("malformed escape", u"100% Plan%20X"_s, u"100% Plan%20X"_s);
    row("cut escape", u"Plan%2"_s, u"Plan%2"_s);
    row("escape that is no UTF-8", u"Plan%FF"_s, u"Plan%FF"_s);
    row("heading", u"Plan#Mål"_s, u"Plan"_s);
    row("heading of a file", u"A/Plan.md#Mål"_s, u"A/Plan.md"_s);
    row("two number signs", u"Plan#Mål#Delmål"_s, u"Plan"_s);
    row("only a heading", u"#Mål"_s, u"Mål"_s);
    row("only a heading, twice the sign", u"##Mål"_s, u"Mål"_s);
    row("escaped number sign", u"Plan%23Mål"_s, u"Plan"_s);
    row("blanks around", u" \tPlan \t"_s, u"Plan"_s);
    row("blanks before the heading", u"Plan #Mål"_s, u"Plan"_s);
    row("line breaks stay", u"Plan\n"_s, u"Plan\n"_s);
    row("nothing", u""_s, u""_s);
    row("only blanks", u"  "_s, u""_s);
    row("only the sign", u"#"_s, u""_s);
    row("blanks and a heading", u" #Mål"_s, u""_s);
}

void LinkResolutionTests::linkedPaths()
{
    QFETCH(QString, text);
    QFETCH(QString, path);
    QCOMPARE(linkedPath(text), path);
}

void LinkResolutionTests::linkedNoteNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::newRow("name") << u"Plan"_s << u"Plan"_s;
    QTest::newRow("extension") << u"Plan.md"_s << u"Plan"_s;
    QTest::newRow("upper-case extension") << u"Plan.MD"_s << u"Plan"_s;
    QTest::newRow("only one extension goes") << u"Plan.md.md"_s << u"Plan.md"_s;
    QTest::newRow("other extension") << u"Plan.pdf"_s << u"Plan.pdf"_s;
    QTest::newRow("full stop in the name") << u"Version 1.2"_s << u"Version 1.2"_s;
}

void LinkResolutionTests::linkedNoteNames()
{
    QFETCH(QString, path);
    QFETCH(QString, name);
    QCOMPARE(linkedNoteName(path), name);
}

void LinkResolutionTests::candidatesOfAPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("candidates");
    QTest::newRow("name") << u"Plan"_s << QStringList({u"/b/A/Plan"_s, u"/b/A/Plan.md"_s});
    QTest::newRow("note") << u"Plan.md"_s << QStringList(u"/b/A/Plan.md"_s);
    QTest::newRow("upper case") << u"Plan.MD"_s << QStringList(u"/b/A/Plan.MD"_s);
    QTest::newRow("other extension") << u"bild.png"_s
                                     << QStringList({u"/b/A/bild.png"_s, u"/b/A/bild.png.md"_s});
    QTest::newRow("folder above") << u"../Plan"_s << QStringList({u"/b/Plan"_s, u"/b/Plan.md"_s});
    QTest::newRow("this folder") << u"./B/./Plan.md"_s << QStringList(u"/b/A/B/Plan.md"_s);
    QTest::newRow("above the top") << u"../../../../Plan.md"_s << QStringList(u"/Plan.md"_s);
}

void LinkResolutionTests::candidatesOfAPath()
{
    QFETCH(QString, path);
    QFETCH(QStringList, candidates);
    QCOMPARE(paths(pathCandidates(path, FileURL::directory(u"/b/A"_s))), candidates);
}

void LinkResolutionTests::bundleAbsolutePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("note");
    QTest::addColumn<QString>("found");
    QTest::newRow("nearest folder first")
        << u"assets/bild.png"_s << u"Bok/Kapitel/Ett.md"_s << u"Bok/assets/bild.png"_s;
    QTest::newRow("the note's own folder") << u"Två"_s << u"Bok/Kapitel/Ett.md"_s << u"Bok/Kapitel/Två.md"_s;
    QTest::newRow("the root last") << u"Plan"_s << u"Bok/Kapitel/Ett.md"_s << u"Plan.md"_s;
    QTest::newRow("from the root") << u"assets/bild.png"_s << u"Plan.md"_s << u"assets/bild.png"_s;
    QTest::newRow("nowhere") << u"Saknas"_s << u"Bok/Kapitel/Ett.md"_s << QString();
    QTest::newRow("only deeper") << u"Ett"_s << u"Plan.md"_s << QString();
}

void LinkResolutionTests::bundleAbsolutePaths()
{
    QFETCH(QString, path);
    QFETCH(QString, note);
    QFETCH(QString, found);
    const Bucket bucket({{"Bok/Kapitel/Ett.md", ""},
                         {"Bok/Kapitel/Två.md", ""},
                         {"Bok/assets/bild.png", ""},
                         {"assets/bild.png", ""},
                         {"Plan.md", ""}});

    const auto result = resolveBundleAbsolute(path, bucket.file(note), bucket.root());

    QCOMPARE(result, found.isEmpty() ? std::nullopt : std::optional(bucket.file(found)));
}

void LinkResolutionTests::withoutANoteOnlyTheRootIsSearched()
{
    const Bucket bucket({{"Bok/Plan.md", ""}, {"Idé.md", ""}});

    QCOMPARE(resolveBundleAbsolute(u"Idé"_s, std::nullopt, bucket.root()), bucket.file(u"Idé.md"_s));
    QCOMPARE(resolveBundleAbsolute(u"Plan"_s, std::nullopt, bucket.root()), std::nullopt);
}

void LinkResolutionTests::aNoteOutsideTheBucketFindsNothing()
{
    const Bucket other({{"A.md", ""}, {"Plan.md", ""}});
    const Bucket bucket({{"Plan.md", ""}});

    QCOMPARE(resolveBundleAbsolute(u"Plan"_s, other.file(u"A.md"_s), bucket.root()), std::nullopt);
}

void LinkResolutionTests::aNoteIsFoundByItsNameWhateverTheCase_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::newRow("same") << u"Plan"_s << u"Plan.md"_s;
    QTest::newRow("other case") << u"plan"_s << u"Plan.md"_s;
    QTest::newRow("letters beyond ASCII") << u"ÅRSMÖTE"_s << u"Arbete/Årsmöte.md"_s;
    QTest::newRow("decomposed letters") << u"A\u030arsmo\u0308te"_s << u"Arbete/Årsmöte.md"_s;
    QTest::newRow("accents count") << u"Arsmote"_s << QString();
    QTest::newRow("whole names only") << u"Pla"_s << QString();
    QTest::newRow("extension is no part") << u"Plan.md"_s << QString();
    QTest::newRow("nothing") << u""_s << QString();
}

void LinkResolutionTests::aNoteIsFoundByItsNameWhateverTheCase()
{
    QFETCH(QString, name);
    QFETCH(QString, found);
    const Bucket bucket({{"Arbete/Årsmöte.md", ""}, {"Plan.md", ""}});

    const auto result = findNote(name, buildTree(bucket.root()));

    QCOMPARE(result, found.isEmpty() ? std::nullopt : std::optional(bucket.file(found)));
}

void LinkResolutionTests::theFirstFileInTreeOrderAnswers()
{
    const Bucket bucket({{"B/Plan.txt", ""}, {"A/C/Plan.pdf", ""}, {"A/Plan.md", ""}, {"Plan.md", ""}});

    QCOMPARE(findNote(u"Plan"_s, buildTree(bucket.root())), bucket.file(u"A/C/Plan.pdf"_s));
}

void LinkResolutionTests::foldersAnswerNoName()
{
    const Bucket bucket({{"Plan/", ""}, {"Plan/Annat.md", ""}});

    QCOMPARE(findNote(u"Plan"_s, buildTree(bucket.root())), std::nullopt);
}

QTEST_APPLESS_MAIN(LinkResolutionTests)
#include "LinkResolutionTests.moc"
