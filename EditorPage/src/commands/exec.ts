/** The commands that the host's toolbar and menus send, by name. */
import { redo, undo } from 'prosemirror-history';
import type { Command } from 'prosemirror-state';
import { insertRule, setHeading, setParagraph, toggleBlockquote, toggleCodeBlock } from './blocks';
import { insertImage, insertLink, insertVideo, insertWikilink } from './insert';
import { toggleList } from './lists';
import { toggleBold, toggleCode, toggleHighlight, toggleItalic, toggleStrike } from './marks';
import * as tables from './tables';

type Value = string | number | undefined;

/** Commands that need no value. */
const plain: Readonly<Record<string, Command>> = {
  undo,
  redo,
  bold: toggleBold,
  italic: toggleItalic,
  highlight: toggleHighlight,
  strike: toggleStrike,
  code: toggleCode,
  paragraph: setParagraph,
  blockquote: toggleBlockquote,
  codeBlock: toggleCodeBlock,
  horizontalRule: insertRule,
  bulletList: toggleList('bullet'),
  orderedList: toggleList('ordered'),
  letterList: toggleList('letter'),
  taskList: toggleList('task'),
  insertTable: tables.insertTable,
  addRowBefore: tables.addRowBefore,
  addRowAfter: tables.addRowAfter,
  addColumnBefore: tables.addColumnBefore,
  addColumnAfter: tables.addColumnAfter,
  deleteRow: tables.deleteRows,
  deleteColumn: tables.deleteColumns,
  toggleHeaderRow: tables.toggleHeaderRow,
  deleteTable: tables.deleteTable,
};

/** Commands that are made from a text. */
const withText: Readonly<Record<string, (text: string) => Command>> = {
  link: insertLink,
  wikilink: insertWikilink,
  image: insertImage,
  youtube: insertVideo,
};

/** The names of all commands. */
export const commandNames: readonly string[] = [...Object.keys(plain), 'heading', ...Object.keys(withText)];

/** The command `name` with its value; null when there is none of that name or the value does not fit it. */
export function commandFor(name: string, value?: Value): Command | null {
  if (name === 'heading') return isLevel(value) ? setHeading(value) : null;
  if (Object.hasOwn(withText, name)) return typeof value === 'string' ? (withText[name]?.(value) ?? null) : null;
  return Object.hasOwn(plain, name) ? (plain[name] ?? null) : null;
}

function isLevel(value: Value): value is number {
  return typeof value === 'number' && Number.isInteger(value) && value >= 1 && value <= 5;
}
