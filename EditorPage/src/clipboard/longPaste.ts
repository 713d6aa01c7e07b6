/** Long Markdown pasted on an empty line at the end of a note: it joins the note's text, of which only what is seen is read and drawn. */
import type { EditorState } from 'prosemirror-state';
import { schema } from '../schema';
import type { TextChange } from '../source/noteText';

/** From so many characters on it would be felt that all of them are read and drawn at once. */
const LONG = 20_000;

const { paragraph, heading, horizontal_rule, table } = schema.nodes;

/** Blocks that a blank line ends, whatever comes next. */
const ENDED_BY_BLANK_LINE = new Set([paragraph, heading, horizontal_rule, table]);

/** Whether `text` is long, and says where the caret is what it says alone. */
export function standsAlone(text: string, { selection, doc }: EditorState): boolean {
  const { $from, empty } = selection;
  const isEmptyLine = empty && $from.depth === 1 && $from.parent.type === paragraph && $from.parent.content.size === 0;
  if (text.length < LONG || !isEmptyLine || $from.after() !== doc.content.size) return false;
  const before = $from.index(0) > 0 ? doc.child($from.index(0) - 1) : null;
  return before === null || ENDED_BY_BLANK_LINE.has(before.type);
}

/** How the note's text changes when `pasted` begins a block at `caret`; null when there is more than line ends behind that. */
export function pastedAtEnd(text: string, caret: number, pasted: string): TextChange | null {
  const rest = text.slice(caret);
  if (/[^\n]/.test(rest)) return null;
  let ends = 0;
  while (ends < caret && text[caret - 1 - ends] === '\n') ends += 1;
  const gap = ends === caret ? '' : '\n'.repeat(Math.max(0, 2 - ends));
  return { from: caret, to: text.length, insert: gap + pasted + (pasted.endsWith('\n') ? '' : rest) };
}
