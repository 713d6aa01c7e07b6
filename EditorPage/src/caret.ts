/** Keeps the caret behind the letters that it stood behind. */
import type { Node } from 'prosemirror-model';

/** Stands for whatever is not text. */
const OTHER = '\ufffc';

/** What is to be found before the caret again. */
export interface Before {
  /** The letters, and what stands between them. */
  letters: string;
  /** How many blocks of text begin behind the last letter; in the last of them the caret stands. */
  blocks: number;
}

/** What stands between `start` and the caret. */
export function before(doc: Node, start: number, caret: number): Before {
  let blocks = 0;
  doc.nodesBetween(start, caret, (node, pos) => {
    if (!node.isTextblock) return true;
    blocks = caret > pos + 1 && node.content.size > 0 ? 0 : blocks + 1;
    return false;
  });
  return { letters: doc.textBetween(start, caret, '', OTHER), blocks };
}

/**
 * The place behind these letters between `start` and `end`, where others may stand between them: markers that an edit
 * has made visible. Blanks may have gone or become line ends. Null when the letters are not all there, or no place is.
 */
export function placeBehind(doc: Node, start: number, end: number, { letters, blocks }: Before): number | null {
  const wanted = letters.replace(/\s/g, '');
  const behind = /\s*$/.exec(letters)![0];
  let blanks = behind.length;
  let blocksLeft = blocks;
  let found = 0;
  let place: number | null = null;
  doc.nodesBetween(start, end, (node, pos) => {
    // An empty line may have parted the block: the caret stands on the first line of the next.
    const isNextLine = found === wanted.length && (place === null || (blanks === behind.length && behind.includes('\n')));
    const isNextBlock = found === wanted.length && blocksLeft > 0;
    if (node.isTextblock && (isNextLine || isNextBlock)) {
      place = pos + 1;
      blanks = 0;
      blocksLeft -= 1;
    }
    const text = node.text ?? (node.isLeaf ? OTHER : '');
    for (let at = Math.max(0, start - pos); at < text.length; at += 1) {
      if (found === wanted.length && /\S/.test(text[at]!)) blocksLeft = 0;
      const isFound = found < wanted.length && text[at] === wanted[found];
      const isBlankBehind = found === wanted.length && blanks > 0 && place === pos + at && /\s/.test(text[at]!);
      if (!isFound && !isBlankBehind) continue;
      if (isFound) found += 1;
      else blanks -= 1;
      place = pos + at + 1;
    }
  });
  if (found === wanted.length) return place;
  // What was no text may have become text.
  return wanted.includes(OTHER) ? placeBehind(doc, start, end, { letters: letters.replaceAll(OTHER, ''), blocks }) : null;
}
