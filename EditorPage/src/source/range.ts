import type { Node } from 'prosemirror-model';
import type { Entry } from './entries';

/** Entries from `from` to `oldTo`, in whose place the document has its children from `from` to `nextTo`. */
export interface Range {
  from: number;
  oldTo: number;
  nextTo: number;
}

/** The children in which a document differs from the entries, seen from both ends. Nodes are compared by identity. */
export function differingRange(entries: readonly Entry[], next: Node): Range {
  const shorter = Math.min(entries.length, next.childCount);
  let from = 0;
  while (from < shorter && entries[from]!.node === next.child(from)) from += 1;
  let oldTo = entries.length;
  let nextTo = next.childCount;
  while (oldTo > from && nextTo > from && entries[oldTo - 1]!.node === next.child(nextTo - 1)) {
    oldTo -= 1;
    nextTo -= 1;
  }
  return { from, oldTo, nextTo };
}
