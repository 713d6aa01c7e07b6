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
 * has made visible. Blanks may have gone or become line ends. Null when the letters are not all there, or no place is.
 */
export function placeBehind(doc: Node, start: number, end: number, letters: string): number | null {
  const wanted = letters.replace(/\s/g, '');
  const behind = /\s*$/.exec(letters)![0];
  let blanks = behind.length;
  let found = 0;
  let place: number | null = null;
  doc.nodesBetween(start, end, (node, pos) => {
    // An empty line may have parted the block: the caret stands on the first line of the next.
    const isNextLine = found === wanted.length && (place === null || (blanks === behind.length && behind.includes('\n')));
    if (node.isTextblock && isNextLine) {
      place = pos + 1;
      blanks = 0;
    }
    const text = node.text ?? (node.isLeaf ? OTHER : '');
    for (let at = Math.max(0, start - pos); at < text.length; at += 1) {
      const isFound = found < wanted.length && text[at] === wanted[found];
      const isBlankBehind = found === wanted.length && blanks > 0 && place === pos + at && /\s/.test(text[at]!);
      if (!isFound && !isBlankBehind) continue;
      if (isFound) found += 1;
      else blanks -= 1;
      place = pos + at + 1;
    }
  });
  return found === wanted.length ? place : null;
}
