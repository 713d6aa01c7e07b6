#include "State/SyncedVaultEntry.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SyncedVaultEntryTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listIsReadAsItWasWritten();
    void listIsAnArrayOfIdAndName();
    void anythingElseIsNoList_data();
    void anythingElseIsNoList();
};

void SyncedVaultEntryTests::listIsReadAsItWasWritten()
{
    const std::vector<SyncedVaultEntry> list{{u"A-1"_s, u"Anteckningar \"å\""_s}, {u""_s, u""_s}};

    QCOMPARE(syncedVaultEntriesFromJson(toJson(list)), list);
    QCOMPARE(syncedVaultEntriesFromJson("[]"), std::vector<SyncedVaultEntry>());
}

void SyncedVaultEntryTests::listIsAnArrayOfIdAndName()
{
    QCOMPARE(toJson({{u"A-1"_s, u"Notes"_s}}), QByteArray(R"([{"id":"A-1","name":"Notes"}])"));
}

void SyncedVaultEntryTests::anythingElseIsNoList_data()
{
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("half an array") << QByteArray(R"([{"id":"A","name":"No)");
    QTest::newRow("an object") << QByteArray(R"({"id":"A","name":"Notes"})");
    QTest::newRow("an array of texts") << QByteArray(R"(["Notes"])");
    QTest::newRow("no id") << QByteArray(R"([{"name":"Notes"}])");
    QTest::newRow("a number as name") << QByteArray(R"([{"id":"A","name":"B"},{"id":"A","name":1}])");
}

void SyncedVaultEntryTests::anythingElseIsNoList()
{
    QFETCH(const QByteArray, json);

    QVERIFY(!syncedVaultEntriesFromJson(json));
}

QTEST_GUILESS_MAIN(SyncedVaultEntryTests)
#include "SyncedVaultEntryTests.moc"
