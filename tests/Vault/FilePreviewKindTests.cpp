#include "Vault/FilePreviewKind.h"

#include "Fakes/Bucket.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FilePreviewKindTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindIsDecidedByTheExtension_data();
    void kindIsDecidedByTheExtension();
    void everyDocumentExtensionIsShownByTheGenericPreview();
    void notesAreFewerThanEditableFiles_data();
    void notesAreFewerThanEditableFiles();
    void filesAndPackagesAreViewableFoldersAreNot();
};

void FilePreviewKindTests::kindIsDecidedByTheExtension_data()
{
    QTest::addColumn<FilePreviewKind::Value>("kind");

    const auto rows = [](FilePreviewKind::Value kind, std::initializer_list<const char*> names) {
        for (const char* name : names)
            QTest::newRow(name) << kind;
    };
    rows(FilePreviewKind::editor, {"a.md", "README.MD", "notes.markdown", "a.mdown", "a.mkd", "a.mkdn",
                                   "a.txt", "a.text", "a.b.md", "a.pdf.Md"});
    rows(FilePreviewKind::image,
         {"a.jpg", "a.JPEG", "a.png", "a.gif", "a.webp", "a.heic", "a.heif", "a.tif", "a.tiff", "a.bmp"});
    rows(FilePreviewKind::pdf, {"a.pdf", "a.PDF"});
    rows(FilePreviewKind::html, {"a.html", "a.htm"});
    rows(FilePreviewKind::google, {"a.gdoc", "a.gsheet", "a.gslides"});
    rows(FilePreviewKind::other, {"a", "md", ".md", "a.", "a.svg", "a.docx", "Report.rtfd", "Budget.numbers",
                                  "a.md.bak", "a.mdx", "a.md ", "mapp.md/a", "a.\xc3\xa5"});
}

void FilePreviewKindTests::kindIsDecidedByTheExtension()
{
    const auto url = FileURL::file(u"/bucket/"_s + QString::fromUtf8(QTest::currentDataTag()));
    const FilePreviewKind::Value kind = FilePreviewKind::of(url);

    QTEST(kind, "kind");
}

void FilePreviewKindTests::everyDocumentExtensionIsShownByTheGenericPreview()
{
    QCOMPARE(documentExtensions.size(), 17U);
    for (const std::string_view extension : documentExtensions) {
        const auto url =
            FileURL::file(u"/bucket/a."_s + QString::fromUtf8(extension.data(), extension.size()));
        QCOMPARE(FilePreviewKind::of(url), FilePreviewKind::other);
    }
}

void FilePreviewKindTests::notesAreFewerThanEditableFiles_data()
{
    QTest::addColumn<bool>("isNote");

    for (const char* name : {"a.md", "README.MD", "a.txt", "a.Txt", "a.b.md"})
        QTest::newRow(name) << true;
    for (const char* name : {"notes.markdown", "a.mkd", "a.text", "md", ".md", "a.md.", "a.pdf", ""})
        QTest::newRow(name) << false;
}

void FilePreviewKindTests::notesAreFewerThanEditableFiles()
{
    QTEST(isNoteName(QTest::currentDataTag()), "isNote");
}

void FilePreviewKindTests::filesAndPackagesAreViewableFoldersAreNot()
{
    const Bucket bucket(
        {{"A.md", ""}, {"Report.rtfd/", ""}, {"Budget.numbers/", ""}, {"Mapp/", ""}, {"x.md/", ""}});
    QVERIFY(QFile::link(bucket.folder(u"Mapp"_s).path(), bucket.file(u"genväg"_s).path()));

    QVERIFY(isViewableFile(bucket.file(u"A.md"_s)));
    QVERIFY(isViewableFile(bucket.file(u"Report.rtfd"_s)));
    QVERIFY(isViewableFile(bucket.folder(u"Budget.numbers"_s)));
    QVERIFY(isViewableFile(bucket.file(u"genväg"_s)));
    QVERIFY(isViewableFile(bucket.file(u"finns inte"_s)));
    QVERIFY(!isViewableFile(bucket.folder(u"Mapp"_s)));
    QVERIFY(!isViewableFile(bucket.folder(u"x.md"_s)));
}

QTEST_GUILESS_MAIN(FilePreviewKindTests)
#include "FilePreviewKindTests.moc"
