#include "Vault/NumberedName.h"

#include <QTest>

using namespace wendlore;
using namespace Qt::StringLiterals;

class NumberedNameTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newItemsAreCountedAfterABlank();
    void assetsAreCountedAfterAHyphen_data();
    void assetsAreCountedAfterAHyphen();
};

void NumberedNameTests::newItemsAreCountedAfterABlank()
{
    QCOMPARE(newItemName(u"Ny not"_s, u".md"_s, 1), u"Ny not.md"_s);
    QCOMPARE(newItemName(u"Ny not"_s, u".md"_s, 2), u"Ny not 2.md"_s);
    QCOMPARE(newItemName(u"Ny mapp"_s, {}, 10), u"Ny mapp 10"_s);
}

void NumberedNameTests::assetsAreCountedAfterAHyphen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("second");
    QTest::newRow("picture") << u"photo.png"_s << u"photo-2.png"_s;
    QTest::newRow("two extensions") << u"arkiv.tar.gz"_s << u"arkiv.tar-2.gz"_s;
    QTest::newRow("no extension") << u"scan"_s << u"scan-2."_s;
    QTest::newRow("counted already") << u"photo-2.png"_s << u"photo-2-2.png"_s;
}

void NumberedNameTests::assetsAreCountedAfterAHyphen()
{
    QFETCH(QString, name);
    QFETCH(QString, second);
    const FileURL file = FileURL::file(u"/hem/"_s + name);

    QCOMPARE(assetName(file, 1), name);
    QCOMPARE(assetName(file, 2), second);
}

QTEST_APPLESS_MAIN(NumberedNameTests)
#include "NumberedNameTests.moc"
