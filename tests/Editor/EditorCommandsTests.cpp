#include "Editor/EditorCommands.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace wendlore;

class EditorCommandsTests final : public QObject
{
    Q_OBJECT

private:
    static QStringList titlesOf(const std::vector<EditorCommand>& commands)
    {
        QStringList titles;
        for (const EditorCommand& command : commands)
            titles.append(command.startsGroup ? u"| "_s + command.title : command.title);
        return titles;
    }

private Q_SLOTS:
    void theBlockMenuShowsTheBlockAtTheCaret_data()
    {
        QTest::addColumn<int>("heading");
        QTest::addColumn<QString>("label");
        QTest::newRow("body") << 0 << u"Brödtext"_s;
        QTest::newRow("first") << 1 << u"Rubrik 1"_s;
        QTest::newRow("last") << 5 << u"Rubrik 5"_s;
        QTest::newRow("beyond the last") << 6 << u"Brödtext"_s;
        QTest::newRow("nonsense") << -3 << u"Brödtext"_s;
    }

    void theBlockMenuShowsTheBlockAtTheCaret()
    {
        QFETCH(const int, heading);
        QFETCH(const QString, label);

        QCOMPARE(blockLabel(ToolbarState{.heading = heading}), label);
    }

    void outsideATableOnlyANewOneIsOffered()
    {
        QCOMPARE(titlesOf(tableMenu({}).commands), QStringList{u"Infoga tabell (3×3)"_s});
    }

    void insideATableItsRowsAndColumnsAreOffered()
    {
        QCOMPARE(titlesOf(tableMenu(ToolbarState{.inTable = true}).commands),
                 QStringList({u"Rad ovanför"_s, u"Rad nedanför"_s, u"Kolumn till vänster"_s,
                              u"Kolumn till höger"_s, u"| Ta bort rad"_s, u"Ta bort kolumn"_s,
                              u"Växla rubrikrad"_s, u"| Ta bort tabell"_s}));
    }

    void headingsCarryTheirLevel()
    {
        const std::vector<EditorCommand>& blocks = blockCommands();

        QCOMPARE(blocks.front().word, u"paragraph"_s);
        for (std::size_t level = 1; level <= 5; ++level) {
            QCOMPARE(blocks.at(level).word, u"heading"_s);
            QCOMPARE(std::get<int>(blocks.at(level).value), static_cast<int>(level));
        }
    }
};

QTEST_GUILESS_MAIN(EditorCommandsTests)
#include "EditorCommandsTests.moc"
