#include "Support/EngineTest.h"
#include "Support/PageFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// All of them together, in milliseconds.
constexpr int patienceForAll = 240'000;

QString readTestFile(const QString& name)
{
    QFile file(QStringLiteral(ENGINE_TESTS "/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

/// The page's own tests, inside the engine that ships: contract, commands, hostile notes, and notes that keep
/// their bytes. Each is a row here.
class EnginePageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void thereAreEnoughOfThem();
    void holds_data();
    void holds();

private:
    QJsonArray m_results;
};

void EnginePageTests::initTestCase()
{
    PageFixture f;
    f.view.widget()->setFocus();
    f.view.evaluate(u"window.VaultEditor.focus()"_s);
    WAIT_VERIFY(f.value(u"document.hasFocus()"_s).toBool());
    f.view.evaluate(readTestFile(u"engine-tests.js"_s));
    f.view.evaluate(u"window.__engineTests.run(%1)"_s.arg(readTestFile(u"engine-samples.json"_s)));

    QVERIFY(
        waitFor([&f] { return f.value(u"window.__engineTests.done !== null"_s).toBool(); }, patienceForAll));
    m_results = QJsonDocument::fromJson(f.value(u"window.__engineTests.done"_s).toString().toUtf8()).array();
    QCOMPARE(f.deaths, 0);
}

void EnginePageTests::thereAreEnoughOfThem()
{
    const auto count = [this](const QString& start) {
        return std::ranges::count_if(m_results, [&start](const QJsonValue& result) {
            return result[u"name"_s].toString().startsWith(start);
        });
    };

    QVERIFY(count(u"endures "_s) >= 15);
    QVERIFY(count(u"keeps "_s) >= 200);
}

void EnginePageTests::holds_data()
{
    QTest::addColumn<bool>("isOk");
    QTest::addColumn<QString>("message");

    for (int index = 0; index < m_results.size(); ++index) {
        const QJsonObject result = m_results[index].toObject();
        QTest::newRow(qPrintable(u"%1: %2"_s.arg(index).arg(result[u"name"_s].toString())))
            << result[u"ok"_s].toBool() << result[u"message"_s].toString();
    }
}

void EnginePageTests::holds()
{
    QFETCH(const bool, isOk);
    QFETCH(const QString, message);

    QVERIFY2(isOk, qPrintable(message));
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(EnginePageTests)
#include "EnginePageTests.moc"
