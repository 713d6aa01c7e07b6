#include "Editor/EditorCommands.h"

using namespace Qt::StringLiterals;

namespace wendlore {

const std::vector<EditorCommand>& blockCommands()
{
    static const std::vector<EditorCommand> commands{
        {u"Brödtext"_s, {}, u"paragraph"_s},  {u"Rubrik 1"_s, {}, u"heading"_s, 1},
        {u"Rubrik 2"_s, {}, u"heading"_s, 2}, {u"Rubrik 3"_s, {}, u"heading"_s, 3},
        {u"Rubrik 4"_s, {}, u"heading"_s, 4}, {u"Rubrik 5"_s, {}, u"heading"_s, 5},
    };
    return commands;
}

const std::vector<EditorToggle>& toggleCommands()
{
    static const std::vector<EditorToggle> toggles{
        {{u"Fet"_s, u"bold"_s, u"bold"_s}, u"Fet (⌘B)"_s, &ToolbarState::bold},
        {{u"Kursiv"_s, u"italic"_s, u"italic"_s}, u"Kursiv (⌘I)"_s, &ToolbarState::italic},
        {{u"Markera"_s, u"highlighter"_s, u"highlight"_s}, u"Markera"_s, &ToolbarState::highlight},
    };
    return toggles;
}

const EditorMenu& formatMenu()
{
    static const EditorMenu menu{
        u"Format"_s,
        u"textformat"_s,
        {
            {u"Ångra"_s, u"arrow.uturn.backward"_s, u"undo"_s},
            {u"Gör om"_s, u"arrow.uturn.forward"_s, u"redo"_s},
            {u"Genomstruken"_s, u"strikethrough"_s, u"strike"_s},
            {u"Inline-kod"_s, u"chevron.left.forwardslash.chevron.right"_s, u"code"_s},
            {u"Citat"_s, u"text.quote"_s, u"blockquote"_s},
            {u"Kodblock"_s, u"curlybraces"_s, u"codeBlock"_s},
            {u"Avdelare"_s, u"minus"_s, u"horizontalRule"_s},
        },
    };
    return menu;
}

const EditorMenu& listMenu()
{
    static const EditorMenu menu{
        u"Lista"_s,
        u"list.bullet"_s,
        {
            {u"Punktlista •"_s, u"list.bullet"_s, u"bulletList"_s},
            {u"Numrerad 1, 2, 3"_s, u"list.number"_s, u"orderedList"_s},
            {u"Bokstäver A, B, C"_s, u"list.number"_s, u"letterList"_s},
            {u"Checklista"_s, u"checklist"_s, u"taskList"_s},
        },
    };
    return menu;
}

const EditorMenu& tableMenu(const ToolbarState& state)
{
    static const EditorMenu outside{
        u"Tabell"_s, u"tablecells"_s, {{u"Infoga tabell (3×3)"_s, {}, u"insertTable"_s}}};
    static const EditorMenu inside{
        u"Tabell"_s,
        u"tablecells"_s,
        {
            {u"Rad ovanför"_s, {}, u"addRowBefore"_s},
            {u"Rad nedanför"_s, {}, u"addRowAfter"_s},
            {u"Kolumn till vänster"_s, {}, u"addColumnBefore"_s},
            {u"Kolumn till höger"_s, {}, u"addColumnAfter"_s},
            {u"Ta bort rad"_s, {}, u"deleteRow"_s, {}, true},
            {u"Ta bort kolumn"_s, {}, u"deleteColumn"_s},
            {u"Växla rubrikrad"_s, {}, u"toggleHeaderRow"_s},
            {u"Ta bort tabell"_s, {}, u"deleteTable"_s, {}, true},
        },
    };
    return state.inTable ? inside : outside;
}

QString blockLabel(const ToolbarState& state)
{
    const int heading = state.heading >= 1 && state.heading <= 5 ? state.heading : 0;
    return blockCommands().at(static_cast<std::size_t>(heading)).title;
}

} // namespace wendlore
