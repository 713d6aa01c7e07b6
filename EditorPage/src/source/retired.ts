import type { Node } from 'prosemirror-model';
import { readBlock, type Entry } from './entries';
import { isSame } from './normal';
import type { Memory } from './region';
import type { Context } from './reconcile';

/** So many characters of source are remembered. */
const sizeLimit = 2_000_000;

/** The blocks that left a note, so that one that is cut and pasted gets its own bytes again. */
export class Retired {
  private readonly byKey = new Map<string, Entry[]>();
  private size = 0;

  add(entry: Entry) {
    if (entry.source === '') return;
    this.size += entry.source.length;
    if (this.size > sizeLimit) {
      this.byKey.clear();
      this.size = entry.source.length;
    }
    const key = keyOf(entry.node);
    const same = this.byKey.get(key) ?? [];
    const others = same.filter((one) => !one.node.eq(entry.node));
    this.byKey.set(key, [...others, entry].slice(-8));
  }

  /** Recalls what still reads as it did in the given context. */
  with(context: Context): Memory {
    return { recall: (node) => this.recall(node, context) };
  }

  private recall(node: Node, context: Context): Entry | null {
    const entry = this.byKey.get(keyOf(node))?.find((one) => one.node.eq(node));
    if (!entry) return null;
    const block = readBlock(entry.source, node.type, context.labels);
    return block && isSame(block.parsed, node) ? { ...entry, ...block } : null;
  }
}

const keyOf = (node: Node) => `${node.type.name} ${node.nodeSize}`;
