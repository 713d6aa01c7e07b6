/** Words and characters, as a reader counts them. */
import type { Node } from 'prosemirror-model';
import { isFolded, partsOf, PartMemory } from '../source/folded';

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
const knownParts = new PartMemory<Counts>();

/** So long folded parts of a note are read in one go, in milliseconds. */
const BUDGET = 20;

/** What is in a note, and whether that is all: of a long one parts may have to wait for the next time. */
export interface NoteCounts extends Counts {
  isComplete: boolean;
}

/** What is in a note. `peek` reads parts that are folded. */
export function countNote(doc: Node, peek: (part: string) => readonly Node[]): NoteCounts {
  const sum = { words: 0, characters: 0, isComplete: true };
  const end = performance.now() + BUDGET;
  doc.forEach((block) => {
    if (!isFolded(block)) return add(sum, countBlock(block));
    for (const part of partsOf(block)) {
      const counts = knownParts.get(part) ?? (performance.now() > end ? null : knownParts.set(part, countAll(peek(part.text))));
      if (counts === null) sum.isComplete = false;
      else add(sum, counts);
    }
  });
  return sum;
}

function add(sum: Counts, { words, characters }: Counts): void {
  sum.words += words;
  sum.characters += characters;
}

function countAll(blocks: readonly Node[]): Counts {
  const sum: Counts = { words: 0, characters: 0 };
  for (const block of blocks) add(sum, countBlock(block));
  return sum;
}

function countBlock(block: Node): Counts {
  let counts = known.get(block);
  if (counts !== undefined) return counts;
  counts = block.isTextblock ? countText(textOf(block, 0, block.content.size)) : countAll(block.children);
  known.set(block, counts);
  return counts;
}

/** What is between two places of a note. */
export function countRange(doc: Node, from: number, to: number, peek: (part: string) => readonly Node[]): NoteCounts {
  return countNote(doc.cut(from, to), peek);
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
