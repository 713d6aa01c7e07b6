import type { Node } from 'prosemirror-model';
import { frontMatter, labelKey } from '../markdown/parse';
import { schema } from '../schema';
import { readAnyBlock, readEntries, type Block, type Entry } from './entries';
import { isFolded } from './folded';
import { countLabels, differingLabels, type LabelCounts } from './labels';
import { isSame } from './normal';
import type { NoteText, TextChange } from './noteText';
import { Pool } from './pool';
import { differing, type Range } from './range';
import { draft, settle, spaced, type Draft } from './region';
import type { Retired } from './retired';
import { commonEnds, unify } from './text';
import type { Writing } from './writer';

/** A note: its entries, whose bytes with the mark before and the tail behind them are its text. */
export interface Note {
  /** The byte order mark, or nothing. */
  mark: string;
  entries: readonly Entry[];
  tail: string;
  text: NoteText;
  labels: LabelCounts;
  lineEnd: string;
  /** Where an entry begins that was edited last, so that the next edit's place is found quickly. */
  near?: { index: number; offset: number };
}

/** The smallest change from one text to another that stands `offset` characters into the note. */
export function changeBetween(before: string, after: string, offset = 0): TextChange | null {
  if (before === after) return null;
  const { start, end } = commonEnds(before, after);
  return { from: offset + start, to: offset + before.length - end, insert: after.slice(start, after.length - end) };
}

/** Top-level children `from` to `to` of a document, which have to become `nodes`. */
export interface Correction {
  from: number;
  to: number;
  nodes: readonly Node[];
}

/** A note after an edit, how its text has changed, and what the document has to become to say what the text says. */
export interface Updated {
  note: Note;
  change: TextChange | null;
  corrections: Correction[];
  /** The entries of the earlier state that the note is in again, as they were then. */
  found?: readonly Entry[];
}

const parsed = (entries: readonly Entry[]) => entries.map((entry) => entry.parsed);

/** The note with entries of an earlier state in place of its own, and how its text has changed. */
export function restored(note: Note, entries: readonly Entry[]): { note: Note; change: TextChange | null } {
  const { from, oldTo, nextTo } = differing(note.entries, entries);
  const labels = countLabels(note.labels, parsed(note.entries.slice(from, oldTo)), parsed(entries.slice(from, nextTo)));
  const { change, text, near } = composed(note, entries, from, oldTo, nextTo);
  return { note: { ...note, entries, labels, text, near }, change };
}

/** Brings a note in step with an edited document, which differs from its own in `range`. */
export function update(note: Note, next: Node, range: Range, retired: Retired): Updated {
  const { from, oldTo, nextTo } = range;
  if (from === oldTo && from === nextTo) return { note, change: null, corrections: [] };

  const olds = note.entries.slice(from, oldTo);
  const come = next.children.slice(from, nextTo);
  const { lineEnd } = note;
  const assumed = countLabels(note.labels, parsed(olds), come);
  const writing: Writing = { pool: new Pool(olds), lineEnd, labels: assumed };
  const drafts = draft(olds, come, writing, retired.with(writing));
  for (const old of olds) retired.add(old);

  const middle = spaced(drafts, olds, from === 0, lineEnd);
  const region = settle(middle, surrounding(note, range, drafts), writing);
  const lo = from - region.extraBefore;
  const hi = oldTo + region.extraAfter;
  const entries = replaced(note.entries, lo, hi, region.entries);
  const labels = countLabels(note.labels, parsed(note.entries.slice(lo, hi)), parsed(region.entries));
  const changedLabels = new Set([...differingLabels(note.labels, labels), ...differingLabels(assumed, labels)]);
  const relabelled = relabel(entries, changedLabels, labels);

  const regionEnd = lo + region.entries.length;
  let { change, text, near } = composed(note, entries, lo, hi, regionEnd);
  if (guardStart(entries, () => text.whole.slice(note.mark.length), lineEnd)) {
    ({ change, text, near } = composed(note, entries, 0, hi, regionEnd));
  }
  const corrections = [
    ...corrected(next, entries.slice(lo, regionEnd), lo, nextTo + region.extraAfter),
    ...correctedElsewhere(next, entries, relabelled, lo, regionEnd),
  ];
  corrections.sort((one, other) => one.from - other.from);
  return { note: { ...note, entries, labels, text, near }, change, corrections };
}

/** A copy of the entries with others in place of those from `lo` to `hi`. */
function replaced(entries: readonly Entry[], lo: number, hi: number, come: readonly Entry[]): Entry[] {
  if (hi - lo !== come.length) return entries.slice(0, lo).concat(come, entries.slice(hi));
  const copy = entries.slice();
  for (const [index, entry] of come.entries()) copy[lo + index] = entry;
  return copy;
}

/** The blocks outside of the region that read differently now, each by itself. */
function correctedElsewhere(
  next: Node,
  entries: readonly Entry[],
  indexes: readonly number[],
  lo: number,
  hi: number,
): Correction[] {
  const grown = entries.length - next.childCount;
  return indexes
    .filter((index) => index < lo || index >= hi)
    .map((index) => single(entries, index, index < lo ? index : index - grown));
}

export function single(entries: readonly Entry[], index: number, at: number): Correction {
  return { from: at, to: at + 1, nodes: [entries[index]!.node] };
}

/** The entries around the edit. The one behind it may have to take over the space of what was in front. */
function surrounding(note: Note, { from, oldTo }: Range, drafts: readonly Draft[]) {
  const { entries } = note;
  return {
    before: (count: number) => entries[from - count],
    after: (count: number): Entry | undefined => {
      const entry = entries[oldTo + count - 1];
      if (!entry || count > 1) return entry;
      if (from === 0 && drafts.length === 0) return { ...entry, gap: entries[0]!.gap };
      const isInsertion = from === 0 && oldTo === 0 && entry.source !== '';
      const hasText = drafts.some((draft) => draft.entries.some((one) => one.source !== ''));
      return isInsertion && hasText ? { ...entry, gap: '' } : entry;
    },
  };
}

/** A rule at the very start would begin front matter if another stood below: an empty line prevents that. */
function guardStart(entries: Entry[], text: () => string, lineEnd: string): boolean {
  const first = entries[0]!;
  if (first.parsed.type === schema.nodes.front_matter || !/^(---|\+\+\+)[ \t]*(\n|$)/.test(first.source)) return false;
  if (first.gap !== '' || !frontMatter.test(unify(text()).text)) return false;
  entries[0] = { ...first, gap: lineEnd };
  return true;
}

const bytes = (entries: readonly Entry[]) => entries.map((entry) => entry.gap + entry.raw).join('');

/** Where an entry's gap begins in the text of its note. Typing goes on near where it was: the walk begins there. */
function startOf(note: Note, wanted: number): number {
  let { index, offset } = note.near ?? { index: 0, offset: note.mark.length };
  for (; index < wanted; index += 1) offset += note.entries[index]!.gap.length + note.entries[index]!.raw.length;
  for (; index > wanted; index -= 1) offset -= note.entries[index - 1]!.gap.length + note.entries[index - 1]!.raw.length;
  return offset;
}

/** The note's text with the region in it that now ends at `to`. What is before and behind it is not walked over. */
function composed(note: Note, entries: readonly Entry[], lo: number, hi: number, to: number) {
  const start = startOf(note, lo);
  const before = bytes(note.entries.slice(lo, hi));
  const after = bytes(entries.slice(lo, to));
  const change = changeBetween(before, after, start);
  const text = change ? note.text.changed(change) : note.text;
  return { change, text, near: { index: lo, offset: start } };
}

/** Where the edited document differs from what the entries of the region say. */
function corrected(next: Node, entries: readonly Entry[], lo: number, to: number): Correction[] {
  let start = 0;
  let end = 0;
  const count = to - lo;
  const shorter = Math.min(count, entries.length);
  while (start < shorter && entries[start]!.node === next.child(lo + start)) start += 1;
  while (end < shorter - start && entries[entries.length - 1 - end]!.node === next.child(to - 1 - end)) end += 1;
  if (start === count && start === entries.length) return [];
  const nodes = entries.slice(start, entries.length - end).map((entry) => entry.node);
  return [{ from: lo + start, to: to - end, nodes }];
}

/**
 * Reads again the blocks that mention a label which has come or gone: their links are links no more, or now are.
 * Returns their indexes.
 */
export function relabel(entries: Entry[], labels: ReadonlySet<string>, counts: LabelCounts): number[] {
  if (labels.size === 0) return [];
  const changed: number[] = [];
  for (const [index, entry] of entries.entries()) {
    if (isFolded(entry.node) || !mentions(entry.source, labels)) continue;
    const block = readBelow(entries[index - 1], entry, counts);
    if (!block || isSame(block.parsed, entry.parsed)) continue;
    entries[index] = { ...entry, ...block, node: block.parsed };
    changed.push(index);
  }
  return changed;
}

/** Reads a block again, where no blank line parts them together with the one before: that may decide what it is. */
function readBelow(before: Entry | undefined, entry: Entry, counts: LabelCounts): Block | null {
  const gap = unify(entry.gap).text;
  const isApart = !before || before.source === '' || isFolded(before.node) || /\n[ \t]*\n/.test(gap);
  if (isApart) return readAnyBlock(entry.source, entry.parsed.type === schema.nodes.front_matter, counts);
  const { entries } = readEntries(before.source + gap + entry.source, before.parsed.type === schema.nodes.front_matter, counts);
  const found = entries.length === 2 && entries[1]!.source === entry.source ? entries[1]! : null;
  return found && { source: found.source, parsed: found.parsed, piece: found.piece };
}

function mentions(source: string, labels: ReadonlySet<string>): boolean {
  if (!source.includes('[')) return false;
  for (const [, label] of source.matchAll(/\[((?:[^[\]\\]|\\.){1,999})\]/gs)) {
    if (labels.has(labelKey(label!))) return true;
  }
  return false;
}
