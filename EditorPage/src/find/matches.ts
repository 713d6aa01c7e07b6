/** Where a note says what is looked for. */
import type { Node } from 'prosemirror-model';
import { isFolded, partsOf, PartMemory, type SharedPart } from '../source/folded';
import { patternOf, type Query } from './query';

/** One place of a document. */
export interface Match {
  from: number;
  to: number;
  /** Whether it is a link to a note or the like: it is found by its words, but nothing can be put in their place. */
  isNode: boolean;
  /** In blocks that are folded: where their run is read, `from` and `to` being the whole of it. */
  folded?: { node: Node; offset: number };
}

/** So long parts of a note that are folded are read in one go, in milliseconds; then others have their turn. */
const BUDGET = 40;

/** Finds the matches of one query, again and again as the note changes. */
export class Finder {
  #pattern: RegExp | null;
  /** The matches of text blocks that were looked through, from the start of their content. */
  #known = new WeakMap<Node, readonly Match[]>();

  /** How many matches there are in folded parts. */
  #counts = new PartMemory<number>();
  #words: readonly RegExp[];
  #isComplete = true;

  constructor(
    readonly query: Query,
    private peek: (part: string) => readonly Node[],
  ) {
    this.#pattern = patternOf(query);
    const words = query.text.split(/[^\p{L}\p{N}\p{M}]+/u).filter((word) => word !== '');
    this.#words = words.map((text) => patternOf({ ...query, text, wholeWords: false })!);
  }

  /** Whether the last matches were all. Where not, looking again finds more. */
  get isComplete(): boolean {
    return this.#isComplete;
  }

  /** The matches of the document in order. */
  matches(doc: Node): Match[] {
    const found: Match[] = [];
    this.#isComplete = true;
    if (this.#pattern === null) return found;
    const end = performance.now() + BUDGET;
    doc.descendants((node, pos) => {
      if (isFolded(node)) this.#lookInto(node, pos, end, found);
      if (!node.isTextblock) return true;
      for (const { from, to, isNode } of this.#within(node)) found.push({ from: pos + 1 + from, to: pos + 1 + to, isNode });
      return false;
    });
    return found;
  }

  #within(block: Node): readonly Match[] {
    const known = this.#known.get(block);
    if (known !== undefined) return known;
    const text = block.textBetween(0, block.content.size, undefined, '\ufffc');
    const found: Match[] = [];
    for (const match of text.matchAll(this.#pattern!)) found.push({ from: match.index!, to: match.index! + match[0].length, isNode: false });
    block.forEach((child, offset) => {
      if (!child.isText && this.#isIn(child)) found.push({ from: offset, to: offset + child.nodeSize, isNode: true });
    });
    found.sort((a, b) => a.from - b.from);
    this.#known.set(block, found);
    return found;
  }

  #lookInto(node: Node, pos: number, end: number, found: Match[]): void {
    for (const part of partsOf(node)) {
      const count = this.#counts.get(part) ?? this.#count(part, end);
      for (let index = 0; index < count; index++) found.push({ from: pos, to: pos + 1, isNode: true, folded: { node, offset: part.offset } });
    }
  }

  #count(part: SharedPart, end: number): number {
    if (!this.#mayBeIn(part.text)) return this.#counts.set(part, 0);
    if (performance.now() > end) {
      this.#isComplete = false;
      return 0;
    }
    let count = 0;
    for (const block of this.peek(part.text)) {
      if (block.isTextblock) count += this.#within(block).length;
      else block.descendants((node) => (node.isTextblock ? ((count += this.#within(node).length), false) : true));
    }
    return this.#counts.set(part, count);
  }

  /** Whether a source may show what is looked for. False only when that is certain. */
  #mayBeIn(source: string): boolean {
    const plain = source.replace(/[*_~=`\\]/g, '');
    return HIDDEN_IN_WORDS.test(plain) || this.#words.every((word) => plain.search(word) >= 0);
  }

  #isIn(node: Node): boolean {
    return wordsOf(node).search(this.#pattern!) >= 0;
  }
}

/** Where a word may be parted by something that is not shown. */
const HIDDEN_IN_WORDS = /\p{L}[[<&!]|[\])>;]\p{L}/u;

/** What a reader sees of a node in the line. */
function wordsOf({ attrs }: Node): string {
  const words = [attrs['alias'] ?? attrs['target'], attrs['alt'], attrs['value'], attrs['source']];
  return words.filter((word): word is string => typeof word === 'string').join('\n');
}
