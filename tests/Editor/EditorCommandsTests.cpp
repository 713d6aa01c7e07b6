#include "Editor/EditorCommands.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace wendlore;

class EditorCommandsTests final : public QObject
{
    Q_OBJECT

private:
    /// The menu of that name as lines of "title, symbol, word", dividers before their entry.
    static QStringList menu(const QString& help, const ToolbarState& state = {})
    {
        QStringList lines;
        for (const EditorItem& item : editorItems()) {
            const auto* menu = std::get_if<EditorMenu>(&item);
            if (menu && menu->help == help) {
                for (const EditorCommand& entry : menu->commands(state)) {
                    lines.append((entry.startsGroup ? u"| "_s : QString()) +
                                 QStringList{entry.title, entry.symbol, entry.word}.join(u", "_s));
                }
            }
        }
        return lines;
    }
    template <typename Item>
    static std::vector<Item> itemsOfKind()
    {
        std::vector<Item> items;
        for (const EditorItem& item : editorItems()) {
            if (const auto* found = std::get_if<Item>(&item))
                items.push_back(*found);
        }
        return items;
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
        QCOMPARE(menu(u"Tabell"_s), QStringList{u"Infoga tabell (3×3), , insertTable"_s});
    }

    void insideATableItsRowsAndColumnsAreOffered()
    {
        QCOMPARE(menu(u"Tabell"_s, ToolbarState{.inTable = true}),
                 QStringList({u"Rad ovanför, , addRowBefore"_s, u"Rad nedanför, , addRowAfter"_s,
                              u"Kolumn till vänster, , addColumnBefore"_s,
                              u"Kolumn till höger, , addColumnAfter"_s, u"| Ta bort rad, , deleteRow"_s,
                              u"Ta bort kolumn, , deleteColumn"_s, u"Växla rubrikrad, , toggleHeaderRow"_s,
                              u"| Ta bort tabell, , deleteTable"_s}));
    }

    void theFormatMenuEndsWithTheLink()
    {
        QCOMPARE(menu(u"Format"_s),
                 QStringList({u"Ångra, arrow.uturn.backward, undo"_s, u"Gör om, arrow.uturn.forward, redo"_s,
                              u"Genomstruken, strikethrough, strike"_s,
                              u"Inline-kod, chevron.left.forwardslash.chevron.right, code"_s,
                              u"Citat, text.quote, blockquote"_s, u"Kodblock, curlybraces, codeBlock"_s,
                              u"Avdelare, minus, horizontalRule"_s, u"Länk…, link, link"_s}));
    }

    void listsAndMediaAreOffered()
    {
        QCOMPARE(menu(u"Lista"_s), QStringList({u"Punktlista •, list.bullet, bulletList"_s,
                                                u"Numrerad 1, 2, 3, list.number, orderedList"_s,
                                                u"Bokstäver A, B, C, list.number, letterList"_s,
                                                u"Checklista, checklist, taskList"_s}));
        QCOMPARE(menu(u"Infoga media"_s),
                 QStringList({u"Bild, photo, image"_s, u"Video / embed, play.rectangle, youtube"_s}));
    }

    void buttonsExplainThemselves()
    {
        QStringList lines;
        for (const EditorZoom& zoom : itemsOfKind<EditorZoom>())
            lines.append(zoom.help + u", "_s + zoom.symbol);
        for (const EditorToggle& toggle : itemsOfKind<EditorToggle>())
            lines.append(toggle.help + u", "_s + toggle.command.symbol + u", "_s + toggle.command.word);
        for (const EditorMenu& menu : itemsOfKind<EditorMenu>())
            lines.append(menu.help + u", "_s + menu.symbol);

        QCOMPARE(lines, QStringList({u"Förminska text (⌘−), minus.magnifyingglass"_s,
                                     u"Förstora text (⌘+), plus.magnifyingglass"_s, u"Fet (⌘B), bold, bold"_s,
                                     u"Kursiv (⌘I), italic, italic"_s, u"Markera, highlighter, highlight"_s,
                                     u"Format, textformat"_s, u"Lista, list.bullet"_s,
                                     u"Infoga media, paperclip"_s, u"Tabell, tablecells"_s}));
    }

    void headingsCarryTheirLevel()
    {
        const std::vector<EditorCommand> blocks = itemsOfKind<EditorBlocks>().at(0).commands;

        QCOMPARE(blocks.size(), 6U);
        QCOMPARE(blocks.front().word, u"paragraph"_s);
        for (std::size_t level = 1; level <= 5; ++level) {
            QCOMPARE(blocks.at(level).word, u"heading"_s);
            QCOMPARE(std::get<int>(blocks.at(level).value), static_cast<int>(level));
        }
    }
};

QTEST_GUILESS_MAIN(EditorCommandsTests)
#include "EditorCommandsTests.moc"
