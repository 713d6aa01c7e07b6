import type { Node } from 'prosemirror-model';

/** Children of a document from `from` to `oldTo`, in whose place another has its children from `from` to `nextTo`. */
export interface Range {
  from: number;
  oldTo: number;
  nextTo: number;
}

/** The children in which two documents differ, seen from both ends. Nodes are compared by identity. */
export function differingRange(before: Node, next: Node): Range {
  return differing(before.children, next.children);
}

/** The same for any two lists. */
export function differing<Item>(olds: readonly Item[], news: readonly Item[]): Range {
  const shorter = Math.min(olds.length, news.length);
  let from = 0;
  while (from < shorter && olds[from] === news[from]) from += 1;
  let oldTo = olds.length;
  let nextTo = news.length;
  while (oldTo > from && nextTo > from && olds[oldTo - 1] === news[nextTo - 1]) {
    oldTo -= 1;
    nextTo -= 1;
  }
  return { from, oldTo, nextTo };
}
