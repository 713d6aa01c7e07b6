/** The parts that every editor state is made of. */
import { dropCursor } from 'prosemirror-dropcursor';
import { gapCursor } from 'prosemirror-gapcursor';
import { history } from 'prosemirror-history';
import type { Plugin } from 'prosemirror-state';
import { tableEditing } from 'prosemirror-tables';
import { plainBehindLinks } from './commands/behindLink';
import { typingRules } from './commands/inputRules';
import { keyPlugins } from './commands/keys';
import { selectionReporter } from './commands/reporter';
import { tableShape } from './commands/tableShape';
import { typingLetters } from './commands/typeLetter';
import { typingOver } from './commands/typeOver';
import { noteCompletion } from './completion/plugin';
import { countStatus } from './counts/status';
import { findMarks } from './find/marks';
import { imageDrops } from './images/plugin';
import type { NoteContext } from './views/context';
import { codeColors } from './views/codeColors';
import { drawnBlockPlugin } from './views/drawn';
import { tagsAtCaret } from './views/inlineHtml';
import { inlineSourceKeys } from './views/inlineSource';
import { linkClicks } from './views/links';
import { textDecorations } from './views/textDecorations';

/** All plugins, in the order in which they see keys and clicks. */
export function editorPlugins(context: NoteContext): Plugin[] {
  return [
    noteCompletion(),
    imageDrops(),
    typingRules(),
    typingOver(),
    typingLetters(),
    drawnBlockPlugin(),
    inlineSourceKeys(),
    ...keyPlugins(context),
    linkClicks(context),
    textDecorations(),
    tagsAtCaret(),
    codeColors(),
    findMarks(context),
    countStatus(context),
    history(),
    tableEditing(),
    tableShape(),
    plainBehindLinks(),
    dropCursor({ color: false, class: 'drop-cursor', width: 2 }),
    gapCursor(),
    selectionReporter(),
  ];
}
