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
        const std::pair<const char*, const char*> kinds[] = {
            {"photo", "png HEIC"},
            {"doc.richtext", "pdf"},
            {"doc.plaintext", "txt md gdoc zip ZIP"},
            {"doc.text", "doc docx rtf rtfd pages odt DOCX"},
            {"tablecells", "xls xlsx csv tsv numbers ods"},
            {"rectangle.on.rectangle.angled", "ppt pptx key odp"},
            {"book", "epub"},
            {"globe", "html htm"},
        };
        QTest::newRow("no extension") << u"LÄSMIG"_s << u"doc.plaintext"_s;
        for (const auto& [symbol, extensions] : kinds) {
            for (const QByteArray& extension : QByteArray(extensions).split(' '))
                QTest::newRow(extension.constData())
                    << u"Namn."_s + QString::fromUtf8(extension) << QString::fromUtf8(symbol);
        }
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
