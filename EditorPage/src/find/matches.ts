/** Where a note says what is looked for. */
import type { Node } from 'prosemirror-model';
import { patternOf, type Query } from './query';

/** One place of a document. */
export interface Match {
  from: number;
  to: number;
  /** Whether it is a link to a note or the like: it is found by its words, but nothing can be put in their place. */
  isNode: boolean;
}

/** Finds the matches of one query, again and again as the note changes. */
export class Finder {
  #pattern: RegExp | null;
  /** The matches of text blocks that were looked through, from the start of their content. */
  #known = new WeakMap<Node, readonly Match[]>();

  constructor(readonly query: Query) {
    this.#pattern = patternOf(query);
  }

  /** All matches of the document in order. */
  matches(doc: Node): Match[] {
    const found: Match[] = [];
    if (this.#pattern === null) return found;
    doc.descendants((node, pos) => {
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

  #isIn(node: Node): boolean {
    return wordsOf(node).search(this.#pattern!) >= 0;
  }
}

/** What a reader sees of a node in the line. */
function wordsOf({ attrs }: Node): string {
  const words = [attrs['alias'] ?? attrs['target'], attrs['alt'], attrs['value'], attrs['source']];
  return words.filter((word): word is string => typeof word === 'string').join('\n');
}
