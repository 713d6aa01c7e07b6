#include "Editor/VaultAddress.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

const FileURL bucket = FileURL::directory(u"/bucket"_s);
const FileURL page = FileURL::directory(u"/dist"_s);

} // namespace

class VaultAddressTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addressesLeadToFiles_data();
    void addressesLeadToFiles();
    void aNameThatIsNotUtf8IsFound();
    void aMissingFolderHasNoFiles();
    void noFileHasANulInItsName();
    void typesComeFromTheExtension_data();
    void typesComeFromTheExtension();
};

void VaultAddressTests::addressesLeadToFiles_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("file");

    QTest::newRow("page") << u"vault://app/index.html"_s << u"/dist/index.html"_s;
    QTest::newRow("slash") << u"vault://app/"_s << u"/dist/index.html"_s;
    QTest::newRow("no path") << u"vault://app"_s << u"/dist/index.html"_s;
    QTest::newRow("script") << u"vault://app/main.js"_s << u"/dist/main.js"_s;
    QTest::newRow("another host") << u"vault://elsewhere/main.js"_s << u"/dist/main.js"_s;
    QTest::newRow("asset") << u"vault://app/assets/a/b.png"_s << u"/bucket/assets/a/b.png"_s;
    QTest::newRow("blank") << u"vault://app/assets/Bild%201.png"_s << u"/bucket/assets/Bild 1.png"_s;
    QTest::newRow("Swedish") << u"vault://app/assets/K%C3%B6ket.png"_s << u"/bucket/assets/Köket.png"_s;
    QTest::newRow("query") << u"vault://app/assets/a.png?x#y"_s << u"/bucket/assets/a.png"_s;
    QTest::newRow("percent") << u"vault://app/assets/100%25.png"_s << u"/bucket/assets/100%.png"_s;
    QTest::newRow("assets without slash") << u"vault://app/assets"_s << u"/dist/assets"_s;
    QTest::newRow("as it stands") << u"vault://app/assets/..%2Fa.png"_s << u"/bucket/assets/../a.png"_s;
}

void VaultAddressTests::addressesLeadToFiles()
{
    QFETCH(const QString, address);
    QFETCH(const QString, file);

    QCOMPARE(vaultFile(QUrl(address), bucket, page), FileURL::file(file));
    QCOMPARE(isAssetAddress(QUrl(address)), file.startsWith("/bucket/"_L1));
}

void VaultAddressTests::aNameThatIsNotUtf8IsFound()
{
    const auto file = vaultFile(QUrl(u"vault://app/assets/K%F6ket.png"_s), bucket, page);

    QCOMPARE(file, FileURL::fromBytes("/bucket/assets/K\xF6ket.png", false));
}

void VaultAddressTests::aMissingFolderHasNoFiles()
{
    QCOMPARE(vaultFile(QUrl(u"vault://app/assets/x.png"_s), std::nullopt, page), std::nullopt);
    QCOMPARE(vaultFile(QUrl(u"vault://app/x.js"_s), bucket, std::nullopt), std::nullopt);
}

void VaultAddressTests::noFileHasANulInItsName()
{
    QCOMPARE(vaultFile(QUrl(u"vault://app/assets/a%00.png"_s), bucket, page), std::nullopt);
}

void VaultAddressTests::typesComeFromTheExtension_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QByteArrayList>("types");

    QTest::newRow("html") << u"html"_s << QByteArrayList{"text/html"};
    QTest::newRow("css") << u"css"_s << QByteArrayList{"text/css"};
    QTest::newRow("CSS") << u"CSS"_s << QByteArrayList{"text/css"};
    QTest::newRow("js") << u"js"_s << QByteArrayList{"text/javascript", "application/javascript"};
    QTest::newRow("png") << u"png"_s << QByteArrayList{"image/png"};
    QTest::newRow("JPG") << u"JPG"_s << QByteArrayList{"image/jpeg"};
    QTest::newRow("svg") << u"svg"_s << QByteArrayList{"image/svg+xml"};
    QTest::newRow("woff2") << u"woff2"_s << QByteArrayList{"font/woff2"};
    QTest::newRow("unknown") << u"zzzz"_s << QByteArrayList{"application/octet-stream"};
    QTest::newRow("none") << u""_s << QByteArrayList{"application/octet-stream"};
}

void VaultAddressTests::typesComeFromTheExtension()
{
    QFETCH(const QString, extension);
    QFETCH(const QByteArrayList, types);

    QVERIFY2(types.contains(mimeType(extension)), mimeType(extension).constData());
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::VaultAddressTests)
#include "VaultAddressTests.moc"
