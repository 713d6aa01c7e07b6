import type { Node } from 'prosemirror-model';
import { firstOfSeveral } from './hunks';
import { isSame } from './normal';

/** One step on the way from what a source says to what it should say. `path` leads to the node that it is about. */
export type Change =
  | { kind: 'inline'; path: number[]; node: Node }
  | { kind: 'attrs'; path: number[]; node: Node }
  | { kind: 'children'; path: number[]; from: number; to: number; nodes: readonly Node[] };

/**
 * The first difference between two nodes of the same type, as steps that would deal with it: the smallest first,
 * then those that replace more.
 */
export function changesBetween(before: Node, after: Node, path: number[] = []): Change[] {
  if (!before.sameMarkup(after)) return before.type === after.type ? [{ kind: 'attrs', path, node: after }] : [];
  if (before.isTextblock) {
    const steps = [firstOfSeveral(before, after), after];
    return steps.flatMap((node) => (node ? [{ kind: 'inline', path, node }] : []));
  }
  if (before.isLeaf) return [];

  const { from, beforeTo, afterTo } = differingChildren(before, after);
  const gone = beforeTo - from;
  const come = afterTo - from;
  const found: Change[] = [];
  if (gone > 0 && come > 0) {
    const first = after.child(from);
    if (before.child(from).type === first.type)
      found.push(...changesBetween(before.child(from), first, [...path, from]));
    if (gone === come && gone > 1) found.push({ kind: 'children', path, from, to: from + 1, nodes: [first] });
  }
  if (gone > 0 || come > 0) {
    found.push({ kind: 'children', path, from, to: beforeTo, nodes: after.children.slice(from, afterTo) });
  }
  return found;
}

/** The children in which two nodes differ, seen from both ends. */
export function differingChildren(before: Node, after: Node): { from: number; beforeTo: number; afterTo: number } {
  const shorter = Math.min(before.childCount, after.childCount);
  let from = 0;
  while (from < shorter && isSame(before.child(from), after.child(from))) from += 1;
  let beforeTo = before.childCount;
  let afterTo = after.childCount;
  while (beforeTo > from && afterTo > from && isSame(before.child(beforeTo - 1), after.child(afterTo - 1))) {
    beforeTo -= 1;
    afterTo -= 1;
  }
  return { from, beforeTo, afterTo };
}
