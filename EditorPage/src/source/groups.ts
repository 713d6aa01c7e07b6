/** Blocks that were folded once and can be again, as long as nobody has changed them. */
import type { Node } from 'prosemirror-model';
import { foldedEntry, sourceOf } from './folded';
import type { Entry } from './entries';

/** Blocks that stand side by side, and what they are when they are folded. */
interface Group {
  folded: Node;
  nodes: readonly Node[];
}

/** The groups by their first blocks. */
const groups = new WeakMap<Node, Group>();

export function rememberGroup(folded: Node, blocks: readonly Node[]) {
  groups.set(blocks[0]!, { folded, nodes: blocks });
}

/** How many of a document's children, from `index` on, can be folded together. Zero when the one there begins no group. */
export function groupSize(children: readonly Node[], index: number): number {
  const group = groups.get(children[index]!);
  if (!group?.nodes.every((node, place) => children[index + place] === node)) return 0;
  return group.nodes.length;
}

/** The entry that stands for the group that begins at `index`; null when its bytes are no longer what they were. */
export function foldedGroup(entries: readonly Entry[], index: number): Entry | null {
  const group = groups.get(entries[index]!.node);
  if (!group) return null;
  const own = entries.slice(index, index + group.nodes.length);
  const isWhole = own.length === group.nodes.length && own.every(({ node }, place) => node === group.nodes[place]);
  const raw = own.map((entry, place) => (place === 0 ? '' : entry.gap) + entry.raw).join('');
  return isWhole && raw === sourceOf(group.folded) ? foldedEntry(sourceOf(group.folded), own[0]!.gap, group.folded) : null;
}
