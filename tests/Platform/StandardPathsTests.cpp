#include "Platform/StandardPaths.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class StandardPathsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void environmentDecides();
    void homeIsUsedWithoutAnAbsolutePath_data();
    void homeIsUsedWithoutAnAbsolutePath();
    void cleanup();
};

void StandardPathsTests::cleanup()
{
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
        qunsetenv(variable);
}

void StandardPathsTests::environmentDecides()
{
    qputenv("XDG_CONFIG_HOME", "/egen/inställningar/");
    qputenv("XDG_DATA_HOME", "/egen/data");
    qputenv("XDG_STATE_HOME", "/egen/läge");
    qputenv("XDG_CACHE_HOME", "/egen/\xe5r");

    QCOMPARE(StandardPaths::configDirectory(), FileURL::directory(u"/egen/inställningar/wendlores"_s));
    QCOMPARE(StandardPaths::dataDirectory(), FileURL::directory(u"/egen/data/wendlores"_s));
    QCOMPARE(StandardPaths::stateDirectory(), FileURL::directory(u"/egen/läge/wendlores"_s));
    QCOMPARE(StandardPaths::cacheDirectory(), FileURL::fromBytes("/egen/\xe5r/wendlores", true));
}

void StandardPathsTests::homeIsUsedWithoutAnAbsolutePath_data()
{
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("unset") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("relative") << QByteArray("config");
}

void StandardPathsTests::homeIsUsedWithoutAnAbsolutePath()
{
    QFETCH(const QByteArray, value);
    if (!value.isNull()) {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            qputenv(variable, value);
    }
    const FileURL home = FileURL::directory(QDir::homePath());

    QCOMPARE(StandardPaths::configDirectory(), home.appending(u".config/wendlores"_s, true));
    QCOMPARE(StandardPaths::dataDirectory(), home.appending(u".local/share/wendlores"_s, true));
    QCOMPARE(StandardPaths::stateDirectory(), home.appending(u".local/state/wendlores"_s, true));
    QCOMPARE(StandardPaths::cacheDirectory(), home.appending(u".cache/wendlores"_s, true));
}

QTEST_GUILESS_MAIN(StandardPathsTests)
#include "StandardPathsTests.moc"
