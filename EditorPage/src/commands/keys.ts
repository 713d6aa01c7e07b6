/** What each key does. Where several commands share a key, the first that applies wins. */
import { baseKeymap, chainCommands, exitCode, newlineInCode, setBlockType } from 'prosemirror-commands';
import { redo, undo } from 'prosemirror-history';
import { undoInputRule } from 'prosemirror-inputrules';
import { keymap } from 'prosemirror-keymap';
import { Fragment } from 'prosemirror-model';
import type { Command, Plugin } from 'prosemirror-state';
import { goToNextCell } from 'prosemirror-tables';
import { schema } from '../schema';
import type { NoteContext } from '../views/context';
import { openAtCaret } from '../views/links';
import { setHeading, setParagraph, toggleBlockquote } from './blocks';
import { afterRule, belowLast, leaveCodeBlock, leaveQuote, leaveTable, lineBreak, openCodeBlock, openFormula, openRule, openTable } from './enter';
import { alone } from './history';
import { backspaceBelowList, backspaceInItem, deleteBesideItem, liftItem, sinkItem, splitItem, toggleList, toggleTask } from './lists';
import { toggleBold, toggleCode, toggleHighlight, toggleItalic, toggleStrike } from './marks';
import { moveBlock } from './move';
import { cellBelow, tabPastEnd } from './tables';

const { nodes } = schema;

/** Backspace at the start of a heading, or of an empty code block, gives body text. */
const backspaceToParagraph: Command = (state, dispatch, view) => {
  const { $from, empty } = state.selection;
  const { type, content } = $from.parent;
  if (!empty || $from.parentOffset > 0) return false;
  const plainAgain = type === nodes.heading || (type === nodes.code_block && content.size === 0);
  return plainAgain && setBlockType(nodes.paragraph)(state, dispatch, view);
};

/** Tab in code writes a tab. */
const tabInCode: Command = (state, dispatch) => {
  if (!state.selection.$from.parent.type.spec.code) return false;
  dispatch?.(state.tr.insertText('\t').scrollIntoView());
  return true;
};

/** What takes the keyboard inside the note. */
const CONTROLS = 'button, summary';

/**
 * Tab goes on to a control of the note that follows the caret (or with Shift stands before it), and else stays: what is typed
 * next must not end up in the buttons beside the note.
 */
const tabInNote = (side: 'FOLLOWING' | 'PRECEDING'): Command => ({ selection }, _, view) => {
  const isInItem = selection.$from.node(-1)?.type.name.endsWith('_item') ?? false;
  if (isInItem || !view) return true;
  const caret = view.domAtPos(selection.head).node;
  return ![...view.dom.querySelectorAll(CONTROLS)].some((control) => (caret.compareDocumentPosition(control) & Node[`DOCUMENT_POSITION_${side}`]) !== 0);
};

/** Deleting with the whole note selected leaves one empty paragraph, whatever stood there. */
const deleteAll: Command = (state, dispatch) => {
  const { from, to } = state.selection;
  if (from > 0 || to < state.doc.content.size) return false;
  dispatch?.(state.tr.replaceWith(0, state.doc.content.size, Fragment.from(nodes.paragraph.create())).scrollIntoView());
  return true;
};

const headingKeys = Object.fromEntries([1, 2, 3, 4, 5].map((level) => [`Ctrl-Alt-${level}`, alone(setHeading(level))]));

const formatting: Record<string, Command> = {
  'Mod-b': alone(toggleBold),
  'Mod-i': alone(toggleItalic),
  'Mod-Shift-h': alone(toggleHighlight),
  'Mod-Shift-x': alone(toggleStrike),
  'Mod-Shift-c': alone(toggleCode),
  'Ctrl-Alt-0': alone(setParagraph),
  ...headingKeys,
  'Mod-Shift-7': alone(toggleList('ordered')),
  'Mod-Shift-8': alone(toggleList('bullet')),
  'Mod-Shift-9': alone(toggleList('task')),
  'Mod-Shift-.': alone(toggleBlockquote),
};

const editing: Record<string, Command> = {
  'Mod-z': undo,
  'Mod-y': redo,
  'Mod-Shift-z': redo,
  Enter: chainCommands(openCodeBlock, openFormula, openTable, openRule, afterRule, leaveCodeBlock, newlineInCode, leaveTable, cellBelow, splitItem, leaveQuote),
  'Shift-Enter': lineBreak,
  'Mod-Enter': chainCommands(alone(toggleTask), exitCode),
  Backspace: chainCommands(undoInputRule, deleteAll, backspaceInItem, backspaceToParagraph, backspaceBelowList),
  Delete: chainCommands(deleteAll, deleteBesideItem),
  Tab: chainCommands(goToNextCell(1), tabPastEnd, tabInCode, sinkItem, tabInNote('FOLLOWING')),
  'Shift-Tab': chainCommands(goToNextCell(-1), liftItem, tabInNote('PRECEDING')),
  ArrowDown: belowLast,
  'Alt-ArrowUp': alone(moveBlock(-1)),
  'Alt-ArrowDown': alone(moveBlock(1)),
};

/** The key maps of the editor, most particular first. */
export function keyPlugins(context: NoteContext): Plugin[] {
  return [keymap({ ...formatting, ...editing, 'Alt-Enter': openAtCaret(context) }), keymap(baseKeymap)];
}
