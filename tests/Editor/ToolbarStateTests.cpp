#include "Editor/ToolbarState.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

class ToolbarStateTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryKey();
    void missingKeysAreFalseAndZero();
    void valuesOfAnotherTypeAreFalseAndZero_data();
    void valuesOfAnotherTypeAreFalseAndZero();
};

void ToolbarStateTests::readsEveryKey()
{
    const auto state = ToolbarState::fromMessage({{u"bold"_s, true},
                                                  {u"italic"_s, true},
                                                  {u"highlight"_s, true},
                                                  {u"bulletList"_s, true},
                                                  {u"orderedList"_s, true},
                                                  {u"inTable"_s, true},
                                                  {u"heading"_s, 3}});

    QCOMPARE(state, (ToolbarState{true, true, true, true, true, true, 3}));
}

void ToolbarStateTests::missingKeysAreFalseAndZero()
{
    const auto state = ToolbarState::fromMessage({{u"bold"_s, true}});

    QCOMPARE(state, ToolbarState{.bold = true});
}

void ToolbarStateTests::valuesOfAnotherTypeAreFalseAndZero_data()
{
    QTest::addColumn<QJsonObject>("message");

    QTest::newRow("texts") << QJsonObject{{u"bold"_s, u"true"_s}, {u"heading"_s, u"2"_s}};
    QTest::newRow("numbers") << QJsonObject{{u"bold"_s, 1}, {u"heading"_s, 1.5}};
    QTest::newRow("null") << QJsonObject{{u"bold"_s, QJsonValue::Null}, {u"heading"_s, QJsonValue::Null}};
    QTest::newRow("flag as heading") << QJsonObject{{u"heading"_s, true}};
    QTest::newRow("enormous heading") << QJsonObject{{u"heading"_s, 1e300}};
}

void ToolbarStateTests::valuesOfAnotherTypeAreFalseAndZero()
{
    QFETCH(const QJsonObject, message);

    QCOMPARE(ToolbarState::fromMessage(message), ToolbarState());
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::ToolbarStateTests)
#include "ToolbarStateTests.moc"
