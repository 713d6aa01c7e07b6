#include "Editor/EditorCommands.h"

#include "State/AppState.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

using Commands = std::vector<EditorCommand>;

const Commands& blockCommands()
{
    static const Commands commands{
        {u"Brödtext"_s, {}, u"paragraph"_s},  {u"Rubrik 1"_s, {}, u"heading"_s, 1},
        {u"Rubrik 2"_s, {}, u"heading"_s, 2}, {u"Rubrik 3"_s, {}, u"heading"_s, 3},
        {u"Rubrik 4"_s, {}, u"heading"_s, 4}, {u"Rubrik 5"_s, {}, u"heading"_s, 5},
    };
    return commands;
}

const Commands& formatCommands(const ToolbarState&)
{
    static const Commands commands{
        {u"Ångra"_s, u"arrow.uturn.backward"_s, u"undo"_s},
        {u"Gör om"_s, u"arrow.uturn.forward"_s, u"redo"_s},
        {u"Genomstruken"_s, u"strikethrough"_s, u"strike"_s},
        {u"Inline-kod"_s, u"chevron.left.forwardslash.chevron.right"_s, u"code"_s},
        {u"Citat"_s, u"text.quote"_s, u"blockquote"_s},
        {u"Kodblock"_s, u"curlybraces"_s, u"codeBlock"_s},
        {u"Avdelare"_s, u"minus"_s, u"horizontalRule"_s},
        {u"Länk…"_s, u"link"_s, u"link"_s, {}, EditorQuestion::link},
    };
    return commands;
}

const Commands& listCommands(const ToolbarState&)
{
    static const Commands commands{
        {u"Punktlista •"_s, u"list.bullet"_s, u"bulletList"_s},
        {u"Numrerad 1, 2, 3"_s, u"list.number"_s, u"orderedList"_s},
        {u"Bokstäver A, B, C"_s, u"list.number"_s, u"letterList"_s},
        {u"Checklista"_s, u"checklist"_s, u"taskList"_s},
    };
    return commands;
}

const Commands& mediaCommands(const ToolbarState&)
{
    static const Commands commands{
        {u"Bild"_s, u"photo"_s, u"image"_s, {}, EditorQuestion::image},
        {u"Video / embed"_s, u"play.rectangle"_s, u"youtube"_s, {}, EditorQuestion::video},
    };
    return commands;
}

const Commands& tableCommands(const ToolbarState& state)
{
    static const Commands outside{{u"Infoga tabell (3×3)"_s, {}, u"insertTable"_s}};
    static const Commands inside{
        {u"Rad ovanför"_s, {}, u"addRowBefore"_s},
        {u"Rad nedanför"_s, {}, u"addRowAfter"_s},
        {u"Kolumn till vänster"_s, {}, u"addColumnBefore"_s},
        {u"Kolumn till höger"_s, {}, u"addColumnAfter"_s},
        {.title = u"Ta bort rad"_s, .symbol = {}, .word = u"deleteRow"_s, .startsGroup = true},
        {u"Ta bort kolumn"_s, {}, u"deleteColumn"_s},
        {u"Växla rubrikrad"_s, {}, u"toggleHeaderRow"_s},
        {.title = u"Ta bort tabell"_s, .symbol = {}, .word = u"deleteTable"_s, .startsGroup = true},
    };
    return state.inTable ? inside : outside;
}

} // namespace

const std::vector<EditorItem>& editorItems()
{
    static const std::vector<EditorItem> items{
        EditorZoom{u"Förminska text"_s, u"Förminska text (⌘−)"_s, u"minus.magnifyingglass"_s,
                   &AppState::zoomOut},
        EditorZoom{u"Förstora text"_s, u"Förstora text (⌘+)"_s, u"plus.magnifyingglass"_s, &AppState::zoomIn},
        EditorBlocks{blockCommands()},
        EditorToggle{{u"Fet"_s, u"bold"_s, u"bold"_s}, u"Fet (⌘B)"_s, &ToolbarState::bold},
        EditorToggle{{u"Kursiv"_s, u"italic"_s, u"italic"_s}, u"Kursiv (⌘I)"_s, &ToolbarState::italic},
        EditorToggle{
            {u"Markera"_s, u"highlighter"_s, u"highlight"_s}, u"Markera"_s, &ToolbarState::highlight},
        EditorMenu{u"Format"_s, u"textformat"_s, formatCommands},
        EditorMenu{u"Lista"_s, u"list.bullet"_s, listCommands},
        EditorMenu{u"Infoga media"_s, u"paperclip"_s, mediaCommands},
        EditorMenu{u"Tabell"_s, u"tablecells"_s, tableCommands},
    };
    return items;
}

QString blockLabel(const ToolbarState& state)
{
    const int heading = state.heading >= 1 && state.heading <= 5 ? state.heading : 0;
    return blockCommands().at(static_cast<std::size_t>(heading)).title;
}

} // namespace wendlore
