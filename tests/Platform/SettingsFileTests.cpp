#include "Platform/SettingsFile.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString fileName = u"settings.json"_s;

SettingsFile settingsIn(const Bucket& folder)
{
    return SettingsFile(folder.file(fileName));
}

/// The names in `folder` of settings that were put aside.
QStringList putAside(const Bucket& folder)
{
    return folder.names().filter(QRegularExpression(u"^settings\\.json\\.broken-\\d{8}-\\d{6}(-\\d+)?$"_s));
}

void expectLog(const char* pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(pattern)));
}

} // namespace

class SettingsFileTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOfEveryTypeSurviveTheProcess();
    void missingKeysHaveNoValue();
    void valueOfAnotherTypeCountsAsMissing_data();
    void valueOfAnotherTypeCountsAsMissing();
    void unusableElementsOfAListAreLeftOut();
    void fileIsPlainJson();
    void settingOneKeyKeepsAllOthers();
    void removedKeyIsGone();
    void numberThatJsonCannotSayIsNotStored();
    void hugeValuesSurvive();
    void folderIsMadeForTheUserAlone();
    void settingsBehindALinkStayThere();
    void anotherProcessIsSeenAtOnce();
    void processesAtOnceLoseNothing();
    void brokenFileIsPutAsideAtTheNextSet_data();
    void brokenFileIsPutAsideAtTheNextSet();
    void readingLeavesABrokenFileAlone();
    void everyBrokenFileIsKept();
    void unreadableFileIsPutAside();
    void folderThatCannotBeWrittenLeavesTheOldValues();
    void folderInPlaceOfTheFileIsPutAside();
};

void SettingsFileTests::valuesOfEveryTypeSurviveTheProcess()
{
    const Bucket folder;
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(char(byte));
    SettingsFile settings = settingsIn(folder);
    settings.setData(u"data"_s, bytes);
    settings.setDataList(u"list"_s, {bytes, {}, "b"});
    settings.setString(u"text"_s, u"Å \"ö\"\n\\ 😀"_s);
    settings.setNumber(u"number"_s, 1.23);

    const SettingsFile again = settingsIn(folder);

    QCOMPARE(again.data(u"data"_s), bytes);
    QCOMPARE(again.dataList(u"list"_s), (QByteArrayList{bytes, {}, "b"}));
    QCOMPARE(again.string(u"text"_s), u"Å \"ö\"\n\\ 😀"_s);
    QCOMPARE(again.number(u"number"_s), 1.23);
}

void SettingsFileTests::missingKeysHaveNoValue()
{
    const Bucket folder;
    const SettingsFile settings = settingsIn(folder);

    QVERIFY(!settings.data(u"key"_s));
    QVERIFY(!settings.dataList(u"key"_s));
    QVERIFY(!settings.string(u"key"_s));
    QCOMPARE(settings.number(u"key"_s), 0.0);
    QVERIFY(folder.names().isEmpty());
}

void SettingsFileTests::valueOfAnotherTypeCountsAsMissing_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("usable");

    QTest::newRow("null") << QByteArray("null") << QString();
    QTest::newRow("flag") << QByteArray("true") << QString();
    QTest::newRow("text") << QByteArray(R"("7")") << u"string"_s;
    QTest::newRow("number") << QByteArray("7") << u"number"_s;
    QTest::newRow("data") << QByteArray(R"({"data":"YQ=="})") << u"data"_s;
    QTest::newRow("list") << QByteArray(R"([{"data":"YQ=="}])") << u"dataList"_s;
    QTest::newRow("data that is no base64") << QByteArray(R"({"data":"Y Q*="})") << QString();
    QTest::newRow("data that is no text") << QByteArray(R"({"data":7})") << QString();
    QTest::newRow("another object") << QByteArray(R"({"other":"YQ=="})") << QString();
    QTest::newRow("number too large") << QByteArray("1e999") << QString();
}

void SettingsFileTests::valueOfAnotherTypeCountsAsMissing()
{
    QFETCH(const QByteArray, json);
    QFETCH(const QString, usable);
    const Bucket folder;
    folder.write(fileName, "{\"key\":" + json + "}");
    const SettingsFile settings = settingsIn(folder);

    QCOMPARE(settings.data(u"key"_s).has_value(), usable == "data"_L1);
    QCOMPARE(settings.dataList(u"key"_s).has_value(), usable == "dataList"_L1);
    QCOMPARE(settings.string(u"key"_s).has_value(), usable == "string"_L1);
    QCOMPARE(settings.number(u"key"_s), usable == "number"_L1 ? 7.0 : 0.0);
}

void SettingsFileTests::unusableElementsOfAListAreLeftOut()
{
    const Bucket folder;
    folder.write(fileName, R"({"list":[{"data":"YQ=="}, 7, "text", null, {"data":"*"}, {"data":"Yg=="}]})");

    QCOMPARE(settingsIn(folder).dataList(u"list"_s), (QByteArrayList{"a", "b"}));
}

void SettingsFileTests::fileIsPlainJson()
{
    const Bucket folder;
    SettingsFile settings = settingsIn(folder);
    settings.setData(u"data"_s, "abc");
    settings.setDataList(u"list"_s, {"a"});
    settings.setString(u"text"_s, u"mörkt"_s);
    settings.setNumber(u"number"_s, 1.5);

    const QJsonObject written = QJsonDocument::fromJson(folder.read(fileName)).object();

    QCOMPARE(written, (QJsonObject{{u"data"_s, QJsonObject{{u"data"_s, u"YWJj"_s}}},
                                   {u"list"_s, QJsonArray{QJsonObject{{u"data"_s, u"YQ=="_s}}}},
                                   {u"text"_s, u"mörkt"_s},
                                   {u"number"_s, 1.5}}));
}

void SettingsFileTests::settingOneKeyKeepsAllOthers()
{
    const Bucket folder;
    folder.write(fileName, R"({"large":9007199254740993,"nested":{"a":[1,{"b":null}]},"theme":"dark"})");

    settingsIn(folder).setString(u"theme"_s, u"light"_s);

    const QJsonObject written = QJsonDocument::fromJson(folder.read(fileName)).object();
    QCOMPARE(written[u"large"_s].toInteger(), 9007199254740993);
    QCOMPARE(written[u"nested"_s],
             QJsonObject({{u"a"_s, QJsonArray{1, QJsonObject{{u"b"_s, QJsonValue()}}}}}));
    QCOMPARE(written[u"theme"_s], u"light"_s);
}

void SettingsFileTests::removedKeyIsGone()
{
    const Bucket folder;
    SettingsFile settings = settingsIn(folder);
    settings.setString(u"a"_s, u"1"_s);
    settings.setString(u"b"_s, u"2"_s);

    settings.remove(u"a"_s);
    settings.remove(u"never there"_s);

    QVERIFY(!settings.string(u"a"_s));
    QCOMPARE(QJsonDocument::fromJson(folder.read(fileName)).object().keys(), QStringList{u"b"_s});
}

void SettingsFileTests::numberThatJsonCannotSayIsNotStored()
{
    const Bucket folder;
    SettingsFile settings = settingsIn(folder);
    settings.setNumber(u"number"_s, 2);

    settings.setNumber(u"number"_s, qQNaN());
    settings.setNumber(u"number"_s, qInf());

    QCOMPARE(settings.number(u"number"_s), 2.0);
}

void SettingsFileTests::hugeValuesSurvive()
{
    const Bucket folder;
    const QByteArray huge(20'000'000, '\xff');
    settingsIn(folder).setData(u"data"_s, huge);

    QVERIFY(settingsIn(folder).data(u"data"_s) == huge);
}

void SettingsFileTests::folderIsMadeForTheUserAlone()
{
    const Bucket folder;
    SettingsFile settings(folder.file(u"config/wendlores/settings.json"_s));

    settings.setString(u"theme"_s, u"dark"_s);

    QCOMPARE(settings.string(u"theme"_s), u"dark"_s);
    struct stat status;
    QCOMPARE(::stat(folder.folder(u"config/wendlores"_s).bytes().constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777U, 0700U);
}

void SettingsFileTests::settingsBehindALinkStayThere()
{
    const Bucket folder({{"dotfiles/settings.json", R"({"theme":"dark"})"}});
    QVERIFY(QFile::link(folder.file(u"dotfiles/settings.json"_s).path(), folder.file(fileName).path()));
    SettingsFile settings = settingsIn(folder);
    QCOMPARE(settings.string(u"theme"_s), u"dark"_s);

    settings.setString(u"theme"_s, u"light"_s);

    QVERIFY(QFileInfo(folder.file(fileName).path()).isSymLink());
    QVERIFY(folder.read(u"dotfiles/settings.json"_s).contains("light"));
}

void SettingsFileTests::anotherProcessIsSeenAtOnce()
{
    const Bucket folder;
    SettingsFile settings = settingsIn(folder);
    settings.setString(u"theme"_s, u"dark"_s);

    for (const QString& theme : {u"light"_s, u"auto"_s, u"dark"_s}) {
        const ChildResult child = ChildProcess::run([&] {
            settingsIn(folder).setString(u"theme"_s, theme);
            return QByteArray();
        });
        QVERIFY(child.hasExited);
        QCOMPARE(settings.string(u"theme"_s), theme);
    }
}

void SettingsFileTests::processesAtOnceLoseNothing()
{
    constexpr int processes = 4;
    constexpr int keys = 40;
    const Bucket folder;
    const auto keyOf = [](int process, int key) { return u"%1 %2"_s.arg(process).arg(key); };
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int process = 0; process < processes; ++process) {
        children.push_back(std::make_unique<ChildProcess>([&, process] {
            SettingsFile settings = settingsIn(folder);
            for (int key = 0; key < keys; ++key)
                settings.setNumber(keyOf(process, key), process * 1000 + key + 1);
            return QByteArray();
        }));
    }
    for (const auto& child : children)
        QVERIFY(child->finish().hasExited);

    const SettingsFile settings = settingsIn(folder);

    for (int process = 0; process < processes; ++process) {
        for (int key = 0; key < keys; ++key)
            QCOMPARE(settings.number(keyOf(process, key)), process * 1000 + key + 1);
    }
}

void SettingsFileTests::brokenFileIsPutAsideAtTheNextSet_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("broken off") << QByteArray(R"({"theme":"dark","vault)");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a list") << QByteArray(R"(["theme"])");
    QTest::newRow("a text") << QByteArray("theme = dark\n");
    QTest::newRow("zeros after a power cut") << QByteArray(4096, '\0');
    QTest::newRow("two objects") << QByteArray(R"({"theme":"dark"}{"theme":"light"})");
    QTest::newRow("merge conflict") << QByteArray("<<<<<<< mine\n{}\n=======\n{}\n>>>>>>> theirs\n");
    QTest::newRow("nested too deep") << QByteArray(1'000'000, '[');
}

void SettingsFileTests::brokenFileIsPutAsideAtTheNextSet()
{
    QFETCH(const QByteArray, bytes);
    const Bucket folder;
    folder.write(fileName, bytes);
    SettingsFile settings = settingsIn(folder);
    QVERIFY(!settings.string(u"theme"_s));

    expectLog("settings in .* cannot be read; they lie at .*broken");
    settings.setString(u"theme"_s, u"light"_s);

    QCOMPARE(settings.string(u"theme"_s), u"light"_s);
    QCOMPARE(putAside(folder).size(), 1);
    QCOMPARE(folder.read(putAside(folder).constFirst()), bytes);
}

void SettingsFileTests::readingLeavesABrokenFileAlone()
{
    const Bucket folder({{"settings.json", "{\"theme"}});

    QVERIFY(!settingsIn(folder).string(u"theme"_s));

    QCOMPARE(folder.names(), QStringList{fileName});
    QCOMPARE(folder.read(fileName), QByteArray("{\"theme"));
}

void SettingsFileTests::everyBrokenFileIsKept()
{
    const Bucket folder;
    SettingsFile settings = settingsIn(folder);
    QList<QByteArray> broken;

    for (int number = 0; number < 3; ++number) {
        broken.append("broken " + QByteArray::number(number));
        folder.write(fileName, broken.last());
        expectLog("cannot be read");
        settings.setString(u"theme"_s, u"dark"_s);
    }

    QList<QByteArray> kept;
    for (const QString& name : putAside(folder))
        kept.append(folder.read(name));
    std::ranges::sort(kept);
    QCOMPARE(kept, broken);
}

void SettingsFileTests::unreadableFileIsPutAside()
{
    const Bucket folder({{"settings.json", R"({"theme":"dark"})"}});
    QCOMPARE(::chmod(folder.root().bytes().constData(), 0777), 0);
    QCOMPARE(::chmod(folder.file(fileName).bytes().constData(), 0), 0);

    const ChildResult child = ChildProcess::run([&] {
        becomeOrdinaryUser();
        SettingsFile settings = settingsIn(folder);
        settings.setString(u"theme"_s, u"light"_s);
        return settings.string(u"theme"_s).value_or(QString()).toUtf8();
    });

    QCOMPARE(child.said, QByteArray("light"));
    QCOMPARE(putAside(folder).size(), 1);
    QFile kept(folder.file(putAside(folder).constFirst()).path());
    QVERIFY(kept.setPermissions(QFile::ReadOwner));
    QCOMPARE(folder.read(putAside(folder).constFirst()), QByteArray(R"({"theme":"dark"})"));
}

void SettingsFileTests::folderThatCannotBeWrittenLeavesTheOldValues()
{
    const Bucket folder({{"settings.json", R"({"theme":"dark"})"}});
    QCOMPARE(::chmod(folder.root().bytes().constData(), 0555), 0);
    QCOMPARE(::chmod(folder.file(fileName).bytes().constData(), 0444), 0);

    const ChildResult child = ChildProcess::run([&] {
        becomeOrdinaryUser();
        SettingsFile settings = settingsIn(folder);
        settings.setString(u"theme"_s, u"light"_s);
        return settings.string(u"theme"_s).value_or(QString()).toUtf8();
    });

    QVERIFY(child.hasExited);
    QCOMPARE(child.said, QByteArray("dark"));
    QCOMPARE(folder.read(fileName), QByteArray(R"({"theme":"dark"})"));
    QCOMPARE(::chmod(folder.root().bytes().constData(), 0755), 0);
}

void SettingsFileTests::folderInPlaceOfTheFileIsPutAside()
{
    const Bucket folder({{"settings.json/kept.txt", "text"}});
    SettingsFile settings = settingsIn(folder);

    expectLog("cannot be read");
    settings.setString(u"theme"_s, u"dark"_s);

    QCOMPARE(settings.string(u"theme"_s), u"dark"_s);
    QCOMPARE(folder.read(putAside(folder).constFirst() + u"/kept.txt"_s), QByteArray("text"));
}

QTEST_GUILESS_MAIN(SettingsFileTests)
#include "SettingsFileTests.moc"
