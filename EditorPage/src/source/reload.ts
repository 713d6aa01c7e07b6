/** Takes over a text that was changed by somebody else, with as few new blocks as can be. */
import { isPlainLine, safeCuts } from './cuts';
import { schema } from '../schema';
import { readEntries, type Entry } from './entries';
import { foldedEntry, isFolded, lengthWithoutEmptyLines } from './folded';
import { countLabels, differingLabels } from './labels';
import { NoteText } from './noteText';
import { readNote } from './reader';
import { commonEnds, mainLineEnd, unify } from './text';
import { relabel, single, type Correction, type Note } from './update';

/** Notes up to this length, in characters, are read anew as a whole. */
const WHOLE = 20_000;
/** So much of what has changed is read at once. */
const READ_AT_ONCE = 10_000;

/** A note with a new text, and what its document has to become. */
export interface Reloaded {
  note: Note;
  corrections: Correction[];
}

export function reloaded(note: Note, text: string): Reloaded {
  const isFoldedSomewhere = note.entries.some(({ node }) => isFolded(node));
  const mayBePart = isFoldedSomewhere || text.length > WHOLE;
  return (mayBePart && inPart(note, text)) || asWhole(note, text);
}

function asWhole(note: Note, text: string): Reloaded {
  const before = note.entries;
  const isFresh = before.every(({ raw }) => raw === '');
  const next = readNote(text, isFresh || text.length > 10 * WHOLE ? WHOLE : Infinity);
  const { start, end } = commonEntries(before, next.entries);
  const offset = before.length - next.entries.length;
  const entries = next.entries.map((entry, index) => {
    if (index < start) return { ...entry, node: before[index]!.node };
    return index >= next.entries.length - end ? { ...entry, node: before[index + offset]!.node } : entry;
  });
  const nodes = entries.slice(start, entries.length - end).map((entry) => entry.node);
  return { note: { ...next, entries }, corrections: [{ from: start, to: before.length - end, nodes }] };
}

const isUnchanged = (a: Entry, b: Entry) => a.raw === b.raw && (a.parsed === b.parsed || a.parsed.eq(b.parsed));

function commonEntries(a: readonly Entry[], b: readonly Entry[]): { start: number; end: number } {
  const shorter = Math.min(a.length, b.length);
  let start = 0;
  while (start < shorter && isUnchanged(a[start]!, b[start]!)) start += 1;
  let end = 0;
  while (end < shorter - start && isUnchanged(a[a.length - 1 - end]!, b[b.length - 1 - end]!)) end += 1;
  return { start, end };
}

/** Where the blocks of a note begin. */
function startsOf({ mark, entries }: Note): number[] {
  let at = mark.length;
  return entries.map((entry) => {
    const start = at + entry.gap.length;
    at = start + entry.raw.length;
    return start;
  });
}

/** Between which old blocks the new text has changed, and where those places are in it. */
interface Middle {
  /** The blocks from `lo` to `hi` are gone, and with them the text from `from` to `oldTo`, which has become that to `to`. */
  lo: number;
  hi: number;
  from: number;
  to: number;
}

/** Reads only what stands between blocks that have stayed. Null when none has where the note can be cut. */
function inPart(note: Note, text: string): Reloaded | null {
  const middle = middleOf(note, text);
  if (!middle) return null;
  const { lo, hi, from, to } = middle;
  const body = text.slice(from, to);
  const own = lengthWithoutEmptyLines(body);
  const isLast = hi === note.entries.length;
  const gone = note.entries.slice(lo, hi);
  const assumed = countLabels(note.labels, gone.map(({ parsed }) => parsed), []);
  const read = own > READ_AT_ONCE ? { entries: [foldedEntry(body.slice(0, own), '')], tail: body.slice(own) } : readEntries(body, false, assumed);
  const [first, ...others] = read.entries;
  if (!first) return null;
  const come = [{ ...first, gap: note.entries[lo]!.gap + first.gap }, ...others];
  const next = note.entries[hi];
  const after = next ? [{ ...next, gap: read.tail }, ...note.entries.slice(hi + 1)] : [];
  return joined(note, text, middle, come, after, isLast ? read.tail : note.tail);
}

function joined(note: Note, text: string, { lo, hi }: Middle, come: readonly Entry[], after: readonly Entry[], tail: string): Reloaded {
  const entries = [...note.entries.slice(0, lo), ...come, ...after];
  const parsed = (some: readonly Entry[]) => some.map((entry) => entry.parsed);
  const labels = countLabels(note.labels, parsed(note.entries.slice(lo, hi)), parsed(come));
  const assumed = countLabels(note.labels, parsed(note.entries.slice(lo, hi)), []);
  const differing = new Set([...differingLabels(note.labels, labels), ...differingLabels(assumed, labels)]);
  const changed = relabel(entries, differing, labels);
  const end = lo + come.length;
  const nodes = entries.slice(lo, end).map(({ node }) => node);
  const elsewhere = changed.filter((at) => at < lo || at >= end).map((at) => single(entries, at, at < lo ? at : at - end + hi));
  const corrections = [{ from: lo, to: hi, nodes }, ...elsewhere].sort((one, other) => one.from - other.from);
  return { note: { ...note, entries, tail, text: NoteText.of(text), labels, lineEnd: mainLineEnd(text), near: undefined }, corrections };
}

function middleOf(note: Note, text: string): Middle | null {
  if (!text.startsWith(note.mark) || (note.mark === '' && text.startsWith('\ufeff'))) return null;
  const { start, end } = commonEnds(note.text.whole, text);
  const starts = startsOf(note);
  let lo = starts.findIndex((at) => at + 1 > start);
  lo = Math.max(0, (lo < 0 ? starts.length : lo) - 1);
  while (lo > 0 && !isCut(note.entries, lo)) lo -= 1;
  if (lo === 0 && (start < (starts[0] ?? Infinity) || mayBeginWithFrontMatter(note, text))) return null;
  const from = starts[lo]!;
  const grown = text.length - note.text.length;
  const isKept = new Map<number, number>();
  for (let index = lo + 1; index < starts.length; index += 1) {
    if (starts[index]! >= note.text.length - end && starts[index]! + grown > from) isKept.set(starts[index]! + grown, index);
  }
  // The new text itself must allow the cut: what was put in may have opened something.
  for (const cut of safeCuts(text.slice(from), false)) {
    const hi = isKept.get(from + cut);
    if (hi !== undefined && isCut(note.entries, hi)) return { lo, hi, from, to: from + cut };
  }
  return lo === 0 ? null : { lo, hi: starts.length, from, to: text.length };
}

/** Whether what stands at the start of the note may be, or have been, front matter, which nothing else can. */
const mayBeginWithFrontMatter = ({ mark, entries }: Note, text: string): boolean =>
  entries[0]?.parsed.type === schema.nodes.front_matter || /^\s*(?:---|\+\+\+)/.test(text.slice(mark.length));

/** Whether a block begins where a note can be cut: with a plain line behind an empty one. */
function isCut(entries: readonly Entry[], index: number): boolean {
  const { source, gap } = entries[index]!;
  return isPlainLine(source.split('\n', 1)[0]!) && /\n[ \t]*\n/.test(unify(gap).text);
}
