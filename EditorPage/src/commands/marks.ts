/** Bold, italic and the other marks of running text. */
import { toggleMark } from 'prosemirror-commands';
import type { MarkType } from 'prosemirror-model';
import type { Command } from 'prosemirror-state';
import { schema } from '../schema';

/** Sets the mark on the selected text or on what is typed next; takes it off when it is there. */
function toggle(type: MarkType): Command {
  // Blanks at the ends stay outside: Markdown cannot hold a mark that begins or ends with one.
  return toggleMark(type, null, { removeWhenPresent: true, includeWhitespace: false });
}

export const toggleBold = toggle(schema.marks.strong);
export const toggleItalic = toggle(schema.marks.em);
export const toggleHighlight = toggle(schema.marks.highlight);
export const toggleStrike = toggle(schema.marks.strike);
export const toggleCode = toggle(schema.marks.code);
