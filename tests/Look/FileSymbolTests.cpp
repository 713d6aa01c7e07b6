#include "Look/FileSymbol.h"

#include "Vault/FileURL.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FileSymbolTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileHasTheSymbolOfItsKind_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("symbol");
        const std::pair<const char*, const char*> files[] = {
            {"Skiss.png", "photo"},
            {"Foto.HEIC", "photo"},
            {"Avtal.pdf", "doc.richtext"},
            {"Lista.txt", "doc.plaintext"},
            {"Brev.docx", "doc.text"},
            {"Brev.rtfd", "doc.text"},
            {"Budget.xlsx", "tablecells"},
            {"Data.csv", "tablecells"},
            {"Tal.key", "rectangle.on.rectangle.angled"},
            {"Roman.epub", "book"},
            {"Recept.htm", "globe"},
            {"Not.md", "doc.plaintext"},
            {"Pekare.gdoc", "doc.plaintext"},
            {"LÄSMIG", "doc.plaintext"},
            {"arkiv.zip", "doc.plaintext"},
        };
        for (const auto& [name, symbol] : files)
            QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8(symbol);
    }

    void aFileHasTheSymbolOfItsKind()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, symbol);

        QCOMPARE(symbolOf(FileURL::file(u"/b/"_s + name)), symbol);
    }
};

QTEST_GUILESS_MAIN(FileSymbolTests)
#include "FileSymbolTests.moc"
