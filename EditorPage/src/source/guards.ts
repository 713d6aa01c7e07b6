/**
 * Backslashes that this program has put before characters as they were typed, and backticks by which it has made fences longer
 * than three. What is typed next may make one needless: "1." alone would begin a list, and "1.5" is text; three backticks in
 * code are code until Enter takes them for its end.
 */
import type { Block } from './entries';
import type { Splice } from './patch';
import { commonEnds } from './text';

/** Further away nothing that is typed can make one needless; in characters. */
const reach = 80;

/** Where in a source its escaped characters begin. */
function escapesIn(source: string): number[] {
  return [...source.matchAll(/\\[!-/:-@[-`{-~]/g)].map(({ index }) => index!);
}

/** The backticks of a source's fences, but for the three that each needs. */
function longFencesIn(source: string): number[] {
  return [...source.matchAll(/(?<=(?:^|[ >\t])`{3,})`(?=`*[^`\n]*$)/gm)].map(({ index }) => index!);
}

/** A block that this program has written from nothing. */
export function allGuarded(block: Block): Block {
  const guards = [...escapesIn(block.source), ...longFencesIn(block.source)].sort((a, b) => a - b);
  return guards.length > 0 ? { ...block, guards } : block;
}

/** The splice that also takes away the block's guards near it; null when there are none. */
export function withoutGuards({ source, guards = [] }: Block, splice: Splice): Splice | null {
  const isGuard = (at: number): boolean => source[at] === '`' || (source[at] === '\\' && isNear(at, splice));
  const near = guards.filter((at) => isGuard(at) && (at < splice.from || at >= splice.to));
  return near.length === 0 ? null : without(source, near, splice);
}

/** The splice that also takes away the characters at `places`, which are in order and outside of it. */
function without(source: string, places: readonly number[], splice: Splice): Splice {
  const from = Math.min(splice.from, places[0]!);
  const to = Math.max(splice.to, places.at(-1)! + 1);
  const kept = (start: number, end: number): string => {
    const inside = places.filter((at) => at >= start && at < end);
    return [start, ...inside.map((at) => at + 1)].map((piece, index) => source.slice(piece, inside[index] ?? end)).join('');
  };
  return { from, to, text: kept(from, splice.from) + splice.text + kept(splice.to, to), isUnguarded: true };
}

/** So many guards are tried without, in blocks so long: each try reads the block. */
const triedAtMost = 40;
const triedIn = 4_000;

/**
 * The block without the escapes of those characters that it need not escape, where it has more guards than `before`: a
 * paragraph in which one character must be escaped was written with all of them. The stars around a word stay alike, and
 * of two that will do the first is kept.
 * `readBack` gives a block after a splice if it still says the same.
 */
export function withNeededGuards(block: Block, before: Block, readBack: (block: Block, splice: Splice) => Block | null): Block {
  const { guards = [], source } = block;
  const isTried = guards.length > Math.max(1, before.guards?.length ?? 0) && guards.length <= triedAtMost && source.length <= triedIn;
  const escaped = guards.filter((at) => source[at] === '\\').map((at) => source[at + 1]!);
  return isTried ? [...new Set(escaped)].reduceRight((lean, letter) => withoutEscapesOf(letter, lean, readBack), block) : block;
}

function withoutEscapesOf(letter: string, block: Block, readBack: (block: Block, splice: Splice) => Block | null): Block {
  const { guards = [], source } = block;
  const own = guards.filter((at) => source[at] === '\\' && source[at + 1] === letter);
  const read = readBack(block, without(source, own, { from: own[0]!, to: own[0]!, text: '' }));
  if (!read) return block;
  const others = guards.filter((at) => !own.includes(at));
  return { ...read, guards: others.map((at) => at - own.filter((one) => one < at).length) };
}

/** The block that a splice has made of another, with the guards that it has now. */
export function withGuards(next: Block, before: Block, splice: Splice): Block {
  const guards = guardsAfter(before, splice);
  return guards.length > 0 ? { ...next, guards } : next;
}

function guardsAfter({ source, guards = [] }: Block, splice: Splice): number[] {
  const { from, to, text, isUnguarded } = splice;
  const grown = text.length - (to - from);
  const outside = guards.filter((at) => (at < from || at >= to) && isNear(at, splice));
  const kept = outside.map((at) => (at < from ? at : at + grown));
  if (isUnguarded) return kept;
  const old = source.slice(from, to);
  const same = commonEnds(old, text);
  const escapes = escapesIn(text).filter((at) => at >= same.start && at < text.length - same.end);
  // A fence grows at both ends of its code or at none.
  const fences = longFencesIn(old).length > 0 ? [] : longFencesIn(text);
  return [...kept, ...[...escapes, ...fences].map((at) => from + at)].sort((a, b) => a - b);
}

const isNear = (at: number, { from, to }: Splice): boolean => at >= from - reach && at <= to + reach;
