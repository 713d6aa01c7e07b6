import type { Node } from 'prosemirror-model';
import type { Entry } from './entries';
import { foldedEntry, isFolded, readFolded, sourceOf } from './folded';
import { holds, isFoldedJointSafe, isRisky, merged, remarked, separations, standingFirst, unremarked, unspaced, type Joint } from './joins';
import { isBlank } from './normal';
import { quickEntry } from './quick';
import { withLineEnd } from './text';
import { writeEntries, type Writing } from './writer';

/** Entries on their way into a note, and which of the entries before the edit each was made from. */
export interface Draft {
  entries: Entry[];
  /** The index of the older entry whose place this takes, or -1. */
  origin: number;
}

/** What has been written before: a node that comes back gets its bytes back. */
export interface Memory {
  recall(node: Node): Entry | null;
}

/** Writes the blocks that take the place of `olds`. */
export function draft(olds: readonly Entry[], next: readonly Node[], writing: Writing, memory: Memory): Draft[] {
  const kept = new Matcher(olds);
  // The very same blocks first: equal ones may stand in other places.
  const same = next.map((node) => kept.take(node, (old) => old === node));
  const origins = next.map((node, index) => (same[index]! >= 0 ? same[index]! : kept.take(node, (old) => old.eq(node))));
  return next.map((node, index) => {
    const origin = origins[index]!;
    if (origin >= 0) return { entries: [{ ...olds[origin]!, node }], origin };
    if (isFolded(node)) return { entries: [foldedEntry(sourceOf(node), '', node)], origin };
    const model = modelFor(index, next.length, olds.length, kept);
    const quick = model >= 0 ? quickEntry(olds[model]!, node, writing.lineEnd) : null;
    if (quick) return { entries: [quick], origin: model };
    const known = isBlank(node) ? null : memory.recall(node);
    const entries = known ? [{ ...known, node }] : writeEntries(node, olds[model], writing);
    return { entries, origin: model };
  });
}

/** The older entry that stands where a new block does, if no other block has it. */
function modelFor(index: number, count: number, oldCount: number, kept: Matcher): number {
  let model = -1;
  if (count === oldCount || index === 0) model = index;
  else if (index === count - 1) model = oldCount - 1;
  return model < oldCount && !kept.isTaken(model) ? model : -1;
}

/** Finds the entries that new nodes are equal to, each once. */
class Matcher {
  private readonly byKey = new Map<string, number[]>();
  private readonly taken = new Set<number>();

  constructor(private readonly entries: readonly Entry[]) {
    for (const [index, { node }] of entries.entries()) {
      const key = `${node.type.name} ${node.nodeSize}`;
      const same = this.byKey.get(key);
      if (same) same.push(index);
      else this.byKey.set(key, [index]);
    }
  }

  take(node: Node, isIt: (old: Node) => boolean): number {
    const same = this.byKey.get(`${node.type.name} ${node.nodeSize}`) ?? [];
    const index = same.find((one) => !this.taken.has(one) && isIt(this.entries[one]!.node)) ?? -1;
    if (index >= 0) this.taken.add(index);
    return index;
  }

  isTaken(index: number): boolean {
    return this.taken.has(index);
  }
}

/** Borders that keep changing each other are left after so many changes. */
const changeLimit = 200;

/** Whether the same blocks stand in another order: the space between them stays where it is. */
function isReordered(drafts: readonly Draft[], olds: readonly Entry[]): boolean {
  const isOne = ({ entries, origin }: Draft) => origin >= 0 && entries.length === 1 && entries[0]!.source !== '';
  return drafts.length === olds.length && drafts.every(isOne) && olds.every(({ source }) => source !== '');
}

/** Gives the drafts their gaps: those of the entries that they take the place of, else a blank line. */
export function spaced(drafts: readonly Draft[], olds: readonly Entry[], isFirst: boolean, lineEnd: string): Entry[] {
  const result: Entry[] = [];
  const apart = withLineEnd('\n\n', lineEnd);
  let before = -1;
  const isMove = isReordered(drafts, olds);
  for (const [index, { entries, origin }] of drafts.entries()) {
    for (const [part, entry] of entries.entries()) {
      const isVeryFirst = index === 0 && part === 0;
      const follows = part === 0 && origin >= 0 && (isVeryFirst ? origin === 0 : origin === before + 1);
      const gap = isMove ? olds[index]!.gap : gapFor(entry, follows ? olds[origin]! : null);
      result.push({ ...entry, gap: part > 0 ? entry.gap : gap });
    }
    before = origin;
  }
  return result;

  function gapFor(entry: Entry, old: Entry | null): string {
    const isAtStart = isFirst && result.length === 0;
    if (isAtStart) return olds[0]?.gap ?? '';
    if (entry.source === '') return old && old.source === '' ? old.gap : withLineEnd('\n', lineEnd);
    if (!old || old.source === '') return apart;
    return old.gap;
  }
}

/** Entries with their neighbours, whose borders are yet to be looked at. */
export interface Region {
  entries: Entry[];
  /** How many entries in front of the edit have been drawn in because they read together with it. */
  extraBefore: number;
  extraAfter: number;
}

/** Where a region takes more neighbours from. */
export interface Surrounding {
  before(count: number): Entry | undefined;
  after(count: number): Entry | undefined;
}

/**
 * Makes sure that every two neighbours stay apart when they are read together. Where they cannot, they become what
 * the text makes of them.
 */
export function settle(middle: readonly Entry[], around: Surrounding, writing: Writing): Region {
  const region: Region = { entries: [...middle], extraBefore: 0, extraAfter: 0 };
  drawInBefore(region, around);
  drawInAfter(region, around);
  settleFirst(region, around, writing);
  let changes = 0;
  for (let index = 0; index < region.entries.length; index += 1) {
    const hasChanged = settleJoint(region, index, writing);
    if (!hasChanged || changes === changeLimit) continue;
    changes += 1;
    // What was merged or written anew has to get on with what stands before and behind it.
    index = Math.max(-1, index - 2);
    drawIn(region, around);
  }
  return region;
}

/** Looks at the first block of the note, if the region holds it. */
function settleFirst({ entries, extraBefore }: Region, around: Surrounding, writing: Writing) {
  const index = entries.findIndex(({ source }) => source !== '');
  if (index < 0 || around.before(extraBefore + 1)) return;
  const come = standingFirst(entries[index]!, writing, writing.lineEnd);
  if (come) entries.splice(index, 1, ...come);
}

/** Draws a neighbour in when the outermost entry of the region is not what it was. */
function drawIn(region: Region, around: Surrounding) {
  const isSameAs = (entry: Entry | undefined, old: Entry | undefined) =>
    entry?.source === old?.source && entry?.node === old?.node;
  const first = region.extraBefore > 0 ? around.before(region.extraBefore) : undefined;
  if (first && !isSameAs(region.entries[0], first)) drawInBefore(region, around);
  const last = region.extraAfter > 0 ? around.after(region.extraAfter) : undefined;
  if (last && !isSameAs(region.entries.at(-1), last)) drawInAfter(region, around);
}

/** Draws in what stands before, up to a block that has bytes. */
function drawInBefore(region: Region, around: Surrounding) {
  let earlier = around.before(region.extraBefore + 1);
  while (earlier) {
    region.entries.unshift(earlier);
    region.extraBefore += 1;
    earlier = earlier.source === '' ? around.before(region.extraBefore + 1) : undefined;
  }
}

/** Draws in what stands behind, up to a block that has bytes. */
function drawInAfter(region: Region, around: Surrounding) {
  let later = around.after(region.extraAfter + 1);
  while (later) {
    region.entries.push(later);
    region.extraAfter += 1;
    later = later.source === '' ? around.after(region.extraAfter + 1) : undefined;
  }
}

/** Looks at the border behind an entry. Empty paragraphs have no bytes and so no border. */
function settleJoint(region: Region, index: number, writing: Writing): boolean {
  const { entries } = region;
  const before = entries[index]!;
  if (before.source === '') return false;
  let other = index + 1;
  while (other < entries.length && entries[other]!.source === '') other += 1;
  const after = entries[other];
  if (!after) return false;

  const between = entries.slice(index + 1, other);
  const lead = between.map((entry) => entry.gap).join('');
  const joint: Joint = { before, after, gap: lead + after.gap };
  const folded = [other, index].filter((at) => isFolded(entries[at]!.node));
  if (folded.length > 0) {
    if (isFoldedJointSafe(joint)) return false;
    for (const at of folded) entries.splice(at, 1, ...readFolded(entries[at]!, writing.labels));
    return true;
  }
  const own = unremarked(joint, writing) ?? (between.length === 0 ? unspaced(joint, writing) : null);
  if (own) {
    entries[other] = own;
    return true;
  }
  if (!isRisky(joint) || holds(joint, writing)) return false;

  const ways = [separations, ...(between.length > 0 ? [remarked] : [])];
  for (const other of ways.flatMap((way) => [...way(joint, writing, writing.lineEnd)])) {
    if (!holds(other, writing)) continue;
    const isSpaced = other.gap !== joint.gap;
    const gap = isSpaced ? { gap: other.gap, ownGap: after.ownGap ?? after.gap } : { gap: after.gap };
    entries.splice(index, between.length + 2, { ...other.before, gap: before.gap }, ...between, { ...other.after, ...gap });
    return other.before !== before || other.after !== after;
  }
  entries.splice(index, between.length + 2, ...merged(joint, writing));
  return true;
}
