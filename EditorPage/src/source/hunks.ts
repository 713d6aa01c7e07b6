import type { Node } from 'prosemirror-model';
import { schema } from '../schema';

/** Text that two texts have in common counts as kept from this length on. */
const KEPT = 4;
/** So far behind a difference it is looked for where the texts agree again. */
const REACH = 80;
/** More changes than this are carried out at once. */
const MOST = 30;

interface Hunk {
  /** The index of the text among the block's children. */
  child: number;
  from: number;
  to: number;
  insert: string;
}

/**
 * The text block with the first of several changes to its words, such as replacing all matches of a search makes: what
 * stands between them is to keep its bytes. Null when there is but one change, or when more than words have changed.
 */
export function firstOfSeveral(before: Node, after: Node): Node | null {
  const start = before.content.findDiffStart(after.content);
  const ends = before.content.findDiffEnd(after.content);
  if (start === null || !ends || Math.min(ends.a, ends.b) - start < KEPT) return null;
  const hasSameShape =
    before.childCount === after.childCount && before.children.every((child, index) => child.sameMarkup(after.child(index)));
  if (!hasSameShape) return null;
  const hunks = before.children.flatMap((child, index) => hunksOf(child.text ?? '', after.child(index).text ?? '', index));
  if (hunks.length < 2 || hunks.length > MOST) return null;
  const { child, from, to, insert } = hunks[0]!;
  const { text = '', marks } = before.child(child);
  const changed = text.slice(0, from) + insert + text.slice(to);
  return changed === '' ? null : before.copy(before.content.replaceChild(child, schema.text(changed, marks)));
}

/** The changes from one text to another. */
function hunksOf(a: string, b: string, child: number): Hunk[] {
  const found: Hunk[] = [];
  if (a === b) return found;
  let [at, other] = [0, 0];
  while (at < a.length || other < b.length) {
    if (at < a.length && a[at] === b[other]) {
      at += 1;
      other += 1;
      continue;
    }
    const [to, otherTo] = agreement(a, b, at, other);
    found.push({ child, from: at, to, insert: b.slice(other, otherTo) });
    [at, other] = [to, otherTo];
  }
  return found;
}

/** Where two texts agree again behind a difference; their ends where they do not. */
function agreement(a: string, b: string, at: number, other: number): [number, number] {
  for (let distance = 1; distance <= REACH; distance += 1) {
    for (let skipped = 0; skipped <= distance; skipped += 1) {
      const [from, to] = [at + skipped, other + distance - skipped];
      const kept = a.slice(from, from + KEPT);
      if (kept.length === KEPT && kept === b.slice(to, to + KEPT)) return [from, to];
    }
  }
  return [a.length, b.length];
}
