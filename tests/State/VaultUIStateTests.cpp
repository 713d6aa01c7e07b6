#include "State/VaultUIState.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class VaultUIStateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void survivesWritingAndReading();
    void absentValuesAreNotWritten();
    void missingAndEmptyKeysAreAbsent();
    void unknownKeysAreIgnored();
    void whatDoesNotDecodeGivesAnEmptyMap_data();
    void whatDoesNotDecodeGivesAnEmptyMap();
};

void VaultUIStateTests::survivesWritingAndReading()
{
    const VaultUIStates states{
        {u"/å/Anteckningar"_s, {u"/å/Anteckningar/A \"b\".md"_s, u"/å/Anteckningar"_s, 240.5}},
        {u"/b"_s, {}}};

    QCOMPARE(vaultUIStatesFromJson(toJson(states)), states);
}

void VaultUIStateTests::absentValuesAreNotWritten()
{
    const VaultUIStates states{{u"/a"_s, {{}, u"/a/Mapp"_s, {}}}};

    QCOMPARE(toJson(states), QByteArray(R"({"/a":{"selectedFolderPath":"/a/Mapp"}})"));
}

void VaultUIStateTests::missingAndEmptyKeysAreAbsent()
{
    const VaultUIStates states =
        vaultUIStatesFromJson(R"({"/a":{"sidebarWidth":null,"selectedFilePath":"/a/b"}})");

    QCOMPARE(states, (VaultUIStates{{u"/a"_s, {u"/a/b"_s, {}, {}}}}));
}

void VaultUIStateTests::unknownKeysAreIgnored()
{
    QCOMPARE(vaultUIStatesFromJson(R"({"/a":{"colour":"red","sidebarWidth":200}})"),
             (VaultUIStates{{u"/a"_s, {{}, {}, 200.0}}}));
}

void VaultUIStateTests::whatDoesNotDecodeGivesAnEmptyMap_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("broken off") << QByteArray(R"({"/a":{"sidebarWidth":200)");
    QTest::newRow("a list") << QByteArray(R"([{"sidebarWidth":200}])");
    QTest::newRow("an entry that is no object") << QByteArray(R"({"/a":{"sidebarWidth":200},"/b":7})");
    QTest::newRow("an entry that is null") << QByteArray(R"({"/a":null})");
    QTest::newRow("a width as text") << QByteArray(R"({"/a":{"sidebarWidth":"200"}})");
    QTest::newRow("a path as number") << QByteArray(R"({"/a":{"selectedFilePath":7}})");
    QTest::newRow("a folder path as list") << QByteArray(R"({"/a":{"selectedFolderPath":[]}})");
    QTest::newRow("not UTF-8") << QByteArray("{\"/a\xff\":{}}");
    QTest::newRow("nested too deep") << QByteArray(100000, '[');
    QTest::newRow("bytes of nothing") << QByteArray(1000000, '\0');
}

void VaultUIStateTests::whatDoesNotDecodeGivesAnEmptyMap()
{
    QFETCH(const QByteArray, json);

    QVERIFY(vaultUIStatesFromJson(json).isEmpty());
}

QTEST_GUILESS_MAIN(VaultUIStateTests)
#include "VaultUIStateTests.moc"
