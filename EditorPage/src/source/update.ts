import type { Node } from 'prosemirror-model';
import { frontMatter, labelKey } from '../markdown/parse';
import { schema } from '../schema';
import { readBlock, type Entry } from './entries';
import { countLabels, differingLabels, type LabelCounts } from './labels';
import { isSame } from './normal';
import { Pool } from './pool';
import { differingRange, type Range } from './range';
import { draft, settle, spaced, type Draft } from './region';
import type { Retired } from './retired';
import type { Correction } from './SourceDocument';
import type { Writing } from './writer';
import { unify } from './text';

/** A note: its entries, whose bytes with the mark before and the tail behind them are its text. */
export interface Note {
  /** The byte order mark, or nothing. */
  mark: string;
  entries: readonly Entry[];
  tail: string;
  text: string;
  labels: LabelCounts;
  lineEnd: string;
}

/** A note after an edit, and what the edited document has to become to say what the note's text says. */
export interface Updated {
  note: Note;
  corrections: Correction[];
}

/** The note with entries of an earlier state in place of its own. */
export function restored(note: Note, entries: readonly Entry[]): Note {
  const parsed = (some: readonly Entry[]) => some.map((entry) => entry.parsed);
  const start = entries.findIndex((entry, index) => entry !== note.entries[index]);
  const from = start < 0 ? Math.min(entries.length, note.entries.length) : start;
  const labels = countLabels(note.labels, parsed(note.entries.slice(from)), parsed(entries.slice(from)));
  const text = note.mark + entries.map((entry) => entry.gap + entry.raw).join('') + note.tail;
  return { ...note, entries, labels, text };
}

/** Brings a note in step with an edited document. */
export function update(note: Note, next: Node, retired: Retired): Updated {
  const range = differingRange(note.entries, next);
  const { from, oldTo, nextTo } = range;
  if (from === oldTo && from === nextTo) return { note, corrections: [] };

  const olds = note.entries.slice(from, oldTo);
  const come = next.children.slice(from, nextTo);
  const { lineEnd } = note;
  const assumed = countLabels(note.labels, olds.map((entry) => entry.parsed), come);
  const writing: Writing = { pool: new Pool(olds), lineEnd, labels: assumed };
  const drafts = draft(olds, come, writing, retired.with(writing));
  for (const old of olds) retired.add(old);

  const middle = spaced(drafts, olds, from === 0, lineEnd);
  const region = settle(middle, surrounding(note, range, drafts), writing);
  const lo = from - region.extraBefore;
  const hi = oldTo + region.extraAfter;
  const entries = [...note.entries.slice(0, lo), ...region.entries, ...note.entries.slice(hi)];
  const found = region.entries.map((entry) => entry.parsed);
  const labels = countLabels(note.labels, note.entries.slice(lo, hi).map((entry) => entry.parsed), found);
  const changedLabels = new Set([...differingLabels(note.labels, labels), ...differingLabels(assumed, labels)]);
  const relabelled = relabel(entries, changedLabels, labels);

  const after: Note = { ...note, entries, labels, text: composed(note, entries, lo, hi, region.entries.length) };
  if (guardStart(entries, after)) after.text = note.mark + entries.map((entry) => entry.gap + entry.raw).join('') + note.tail;
  const regionEnd = lo + region.entries.length;
  const corrections = [
    ...relabelled.filter((index) => index < lo).map((index) => single(entries, index, index)),
    ...corrected(next, entries.slice(lo, regionEnd), lo, nextTo + region.extraAfter),
    ...relabelled
      .filter((index) => index >= regionEnd)
      .map((index) => single(entries, index, index + next.childCount - entries.length)),
  ];
  return { note: after, corrections };
}

function single(entries: readonly Entry[], index: number, at: number): Correction {
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
function guardStart(entries: Entry[], { text, mark, lineEnd }: Note): boolean {
  const first = entries[0]!;
  if (first.parsed.type === schema.nodes.front_matter || !/^(---|\+\+\+)[ \t]*(\n|$)/.test(first.source)) return false;
  if (first.gap !== '' || !frontMatter.test(unify(text.slice(mark.length)).text)) return false;
  entries[0] = { ...first, gap: lineEnd };
  return true;
}

/** The note's text with the changed region in it. What is before and behind it is not walked over. */
function composed(note: Note, entries: readonly Entry[], lo: number, hi: number, count: number): string {
  const length = (some: readonly Entry[]) => some.reduce((sum, entry) => sum + entry.gap.length + entry.raw.length, 0);
  const start = note.mark.length + length(note.entries.slice(0, lo));
  const end = start + length(note.entries.slice(lo, hi));
  const region = entries.slice(lo, lo + count).map((entry) => entry.gap + entry.raw);
  return note.text.slice(0, start) + region.join('') + note.text.slice(end);
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
function relabel(entries: Entry[], labels: ReadonlySet<string>, counts: LabelCounts): number[] {
  if (labels.size === 0) return [];
  const changed: number[] = [];
  for (const [index, entry] of entries.entries()) {
    if (!mentions(entry.source, labels)) continue;
    const block = readBlock(entry.source, entry.parsed.type, counts);
    if (!block || isSame(block.parsed, entry.parsed)) continue;
    entries[index] = { ...entry, ...block, node: block.parsed };
    changed.push(index);
  }
  return changed;
}

function mentions(source: string, labels: ReadonlySet<string>): boolean {
  if (!source.includes('[')) return false;
  for (const [, label] of source.matchAll(/\[((?:[^[\]\\]|\\.){1,999})\]/gs)) {
    if (labels.has(labelKey(label!))) return true;
  }
  return false;
}
