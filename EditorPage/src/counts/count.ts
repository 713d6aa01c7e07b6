/** Words and characters, as a reader counts them. */
import type { Node } from 'prosemirror-model';

export interface Counts {
  words: number;
  /** Letters, digits, signs and blanks; no line ends. */
  characters: number;
}

const WORD = /[\p{L}\p{N}][\p{L}\p{N}\p{M}]*(?:['’:.,\-/@][\p{L}\p{N}][\p{L}\p{N}\p{M}]*)*/gu;

/** What is in a text. Line ends and pictures are no characters. */
export function countText(text: string): Counts {
  const shown = text.replace(/[\n\r\ufffc]/g, '');
  let characters = shown.length;
  // A character outside of the first plane takes two places, and a mark belongs to the letter before it.
  for (const _pair of shown.matchAll(/[\u{10000}-\u{10ffff}]|\p{M}/gu)) characters--;
  let words = 0;
  for (const _word of text.matchAll(WORD)) words++;
  return { words, characters };
}

const known = new WeakMap<Node, Counts>();

/** What is in a note. */
export function countNote(doc: Node): Counts {
  const sum: Counts = { words: 0, characters: 0 };
  doc.descendants((node) => {
    if (!node.isTextblock) return true;
    let counts = known.get(node);
    if (counts === undefined) known.set(node, (counts = countText(textOf(node, 0, node.content.size))));
    sum.words += counts.words;
    sum.characters += counts.characters;
    return false;
  });
  return sum;
}

/** What is between two places of a note. */
export function countRange(doc: Node, from: number, to: number): Counts {
  return countText(textOf(doc, from, to));
}

function textOf(node: Node, from: number, to: number): string {
  return node.textBetween(from, to, '\n', (leaf) => String(leaf.attrs['alias'] ?? leaf.attrs['target'] ?? '\ufffc'));
}

let numberFormat: Intl.NumberFormat | undefined;

/** Made when first needed: it would cost every start more than 10 ms. */
function formatted(value: number): string {
  numberFormat ??= new Intl.NumberFormat('sv');
  return numberFormat.format(value);
}

/** The counts in words: "1 234 ord, 6 789 tecken". */
export function inWords({ words, characters }: Counts): string {
  return `${formatted(words)} ord, ${formatted(characters)} tecken`;
}
