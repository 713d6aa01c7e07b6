/** Keeps the caret behind the letters that it stood behind. */
import type { Node } from 'prosemirror-model';

/** Stands for whatever is not text. */
const OTHER = '\ufffc';

/** What is to be found before the caret again: the letters from `start` on, and what stands between them. */
export function lettersBefore(doc: Node, start: number, caret: number): string {
  return doc.textBetween(start, caret, '', OTHER);
}

/**
 * The place behind these letters between `start` and `end`, where others may stand between them: markers that an edit
 * has made visible. Null when they are not all there, or when there are none.
 */
export function placeBehind(doc: Node, start: number, end: number, letters: string): number | null {
  let found = 0;
  let place: number | null = null;
  doc.nodesBetween(start, end, (node, pos) => {
    const text = node.text ?? (node.isLeaf ? OTHER : '');
    for (let at = Math.max(0, start - pos); at < text.length && found < letters.length; at += 1) {
      if (!isSameLetter(text[at]!, letters[found]!)) continue;
      found += 1;
      place = pos + at + 1;
    }
  });
  return found === letters.length ? place : null;
}

/** A line end may have become a space. */
const isSameLetter = (a: string, b: string): boolean => a === b || (/\s/.test(a) && /\s/.test(b));
