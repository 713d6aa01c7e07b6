/** Runs of blocks that the document holds as their source only: they are read when somebody comes near. */
import type { Node } from 'prosemirror-model';
import type { Labels } from '../markdown/parse';
import { schema } from '../schema';
import { safeCuts } from './cuts';
import { readEntries, type Entry } from './entries';
import { unify } from './text';

/** A long run is read in parts of about so many characters. */
const PART = 1_200;

export const isFolded = (node: Node): boolean => node.type === schema.nodes.folded;

export const sourceOf = (folded: Node): string => folded.attrs['source'] as string;

/** The entry of a run whose bytes are `raw`: it begins where a note can be cut, and ends with no empty line. */
export function foldedEntry(raw: string, gap: string, node = schema.nodes.folded.create({ source: raw })): Entry {
  const source = unify(raw).text;
  const piece = { start: 0, end: source.length, children: [], segments: [], inner: [0, source.length] as const };
  return { node, parsed: node, piece, source, raw, gap };
}

/** Reads a run. */
export function readFolded(entry: Entry, labels: Labels): Entry[] {
  const { entries, tail } = readEntries(entry.raw, false, labels);
  const last = entries.length - 1;
  return entries.map((one, index) => ({
    ...one,
    gap: index === 0 ? entry.gap + one.gap : one.gap,
    // Blanks at the end stay with the last block: what follows keeps its own space.
    ...(index === last && tail !== '' ? { raw: one.raw + tail, source: one.source + unify(tail).text } : {}),
  }));
}

/** The length of `text` without the empty lines at its end. */
export function lengthWithoutEmptyLines(text: string): number {
  let end = text.length;
  while (end > 0 && ' \t\r\n'.includes(text[end - 1]!)) end -= 1;
  if (end === 0) return 0;
  while (end < text.length && text[end] !== '\r' && text[end] !== '\n') end += 1;
  return end;
}

/** A part of a run: where it begins and ends in the run's source. */
export interface Part {
  from: number;
  to: number;
}

/** Where a long run can be cut, found as far as somebody has asked. Runs that were cut out of it share it. */
class Cuts {
  readonly #starts = [0];
  readonly #coming: Iterator<number, void>;
  #isDone = false;

  constructor(
    private readonly source: string,
    private readonly part: number,
  ) {
    this.#coming = safeCuts(source, false);
  }

  /** The last start of a part at or before `offset`. */
  before(offset: number): number {
    this.#findUntil(offset + 1);
    let low = 0;
    for (let high = this.#starts.length; high - low > 1;) {
      const middle = (low + high) >> 1;
      if (this.#starts[middle]! <= offset) low = middle;
      else high = middle;
    }
    return low;
  }

  start(index: number): number {
    while (index >= this.#starts.length && !this.#isDone) this.#findUntil(this.#starts.at(-1)! + 1);
    return this.#starts[index] ?? this.source.length;
  }

  #findUntil(offset: number) {
    while (!this.#isDone && this.#starts.at(-1)! < offset) {
      const { value, done } = this.#coming.next();
      if (done) this.#isDone = true;
      else if (value! - this.#starts.at(-1)! >= this.part) this.#starts.push(value!);
    }
  }
}

/** Which part of a longer run a run is. */
interface Origin {
  cuts: Cuts;
  base: number;
}

const origins = new WeakMap<Node, Origin>();

function originOf(folded: Node): Origin {
  let origin = origins.get(folded);
  if (!origin) origins.set(folded, (origin = { cuts: new Cuts(sourceOf(folded), PART), base: 0 }));
  return origin;
}

/** Has a run read in parts of about `length` characters, or of what is usual where that is less. */
export function readInParts(folded: Node, length: number) {
  origins.set(folded, { cuts: new Cuts(sourceOf(folded), Math.min(PART, length)), base: 0 });
}

/** The part of a run that holds the character at `offset`. */
export function partAt(folded: Node, offset: number): Part {
  const { cuts, base } = originOf(folded);
  const { length } = sourceOf(folded);
  const index = cuts.before(base + Math.max(0, Math.min(offset, length - 1)));
  return { from: Math.max(0, cuts.start(index) - base), to: Math.min(length, cuts.start(index + 1) - base) };
}

/** A part of a run as others remember it: runs that are cut out of one another share their parts. */
export interface SharedPart {
  owner: object;
  start: number;
  /** Where it begins in this run. */
  offset: number;
  text: string;
}

/** All parts of a run. */
export function* partsOf(folded: Node): Generator<SharedPart> {
  const { cuts, base } = originOf(folded);
  const source = sourceOf(folded);
  for (let at = 0; at < source.length;) {
    const { from, to } = partAt(folded, at);
    yield { owner: cuts, start: base + from, offset: from, text: source.slice(from, to) };
    at = to;
  }
}

/** What was found out about parts, until they go. */
export class PartMemory<Value> {
  readonly #known = new WeakMap<object, Map<number, Value>>();

  get({ owner, start }: SharedPart): Value | undefined {
    return this.#known.get(owner)?.get(start);
  }

  set({ owner, start }: SharedPart, value: Value): Value {
    const own = this.#known.get(owner) ?? new Map<number, Value>();
    this.#known.set(owner, own.set(start, value));
    return value;
  }
}

/** A run as several: the parts that hold the characters from `offset` on, `length` of them, each by itself, and what is before and behind. */
export function cutOut(entry: Entry, offset: number, length: number): { entries: Entry[]; first: number; last: number } {
  const { raw, node } = entry;
  const bounds = [0];
  const first = partAt(node, offset);
  let part = first;
  if (first.from > 0) bounds.push(first.from);
  const begin = bounds.length - 1;
  while (part.to < raw.length && part.to < offset + length) {
    bounds.push(part.to);
    part = partAt(node, part.to);
  }
  const end = bounds.length;
  if (part.to < raw.length) bounds.push(part.to);
  if (bounds.length === 1) return { entries: [entry], first: 0, last: 1 };
  return { entries: bounds.map((from, index) => pieceOf(entry, from, bounds[index + 1] ?? raw.length, index === 0 ? null : bounds[index - 1]!)), first: begin, last: end };
}

/** The run from one cut to the next; the empty lines behind the one before it are its gap. */
function pieceOf({ node, raw, gap }: Entry, from: number, to: number, before: number | null): Entry {
  const text = raw.slice(from, to);
  const own = to === raw.length ? text : text.slice(0, lengthWithoutEmptyLines(text));
  const space = before === null ? gap : raw.slice(before + lengthWithoutEmptyLines(raw.slice(before, from)), from);
  const piece = foldedEntry(own, space);
  const { cuts, base } = originOf(node);
  origins.set(piece.node, { cuts, base: base + from });
  return piece;
}
