#include "Previews/FileKind.h"

#include "Previews/OpenExternally.h"
#include "Vault/FileURL.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FileKindTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileIsNamedByItsKind_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("isOpenedOutside");
        QTest::newRow("note") << u"Not.md"_s << u"Anteckning"_s << false;
        QTest::newRow("image") << u"Foto.JPG"_s << u"Bild"_s << true;
        QTest::newRow("pdf") << u"Avtal.pdf"_s << u"PDF-dokument"_s << true;
        QTest::newRow("page") << u"Recept.htm"_s << u"Webbsida"_s << true;
        QTest::newRow("sheet") << u"Budget.XLSX"_s << u"Kalkylark"_s << true;
        QTest::newRow("book") << u"Roman.epub"_s << u"E-bok"_s << true;
        QTest::newRow("pointer") << u"Plan.gdoc"_s << u"Google-dokument"_s << true;
        QTest::newRow("unknown") << u"arkiv.zip"_s << u"ZIP-fil"_s << false;
        QTest::newRow("no extension") << u"LICENS"_s << u"Fil"_s << false;
    }

    void aFileIsNamedByItsKind()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, kind);
        QFETCH(const bool, isOpenedOutside);
        const FileURL file = FileURL::file(u"/b/"_s + name);

        QCOMPARE(kindOf(file), kind);
        QCOMPARE(opensInExternalApp(file), isOpenedOutside);
    }
};

QTEST_GUILESS_MAIN(FileKindTests)
#include "FileKindTests.moc"
