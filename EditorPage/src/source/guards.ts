/**
 * Backslashes that this program has put before characters as they were typed. What is typed next may make one needless:
 * "1." alone would begin a list, and "1.5" is text.
 */
import type { Block } from './entries';
import type { Splice } from './patch';
import { commonEnds } from './text';

/** Further away nothing that is typed can make one needless; in characters. */
const reach = 80;

/** Where in a source its escaped characters begin. */
function guardsIn(source: string): number[] {
  return [...source.matchAll(/\\[!-/:-@[-`{-~]/g)].map(({ index }) => index!);
}

/** A block that this program has written from nothing. */
export function allGuarded(block: Block): Block {
  const guards = guardsIn(block.source);
  return guards.length > 0 ? { ...block, guards } : block;
}

/** The splice that also takes away the block's guards near it; null when there are none. */
export function withoutGuards({ source, guards = [] }: Block, splice: Splice): Splice | null {
  const near = guards.filter((at) => isNear(at, splice) && source[at] === '\\' && (at < splice.from || at >= splice.to));
  if (near.length === 0) return null;
  const from = Math.min(splice.from, near[0]!);
  const to = Math.max(splice.to, near.at(-1)! + 1);
  const kept = (start: number, end: number): string => [...source.slice(start, end)].filter((_, at) => !near.includes(start + at)).join('');
  return { from, to, text: kept(from, splice.from) + splice.text + kept(splice.to, to), isUnguarded: true };
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
  const same = commonEnds(source.slice(from, to), text);
  const come = guardsIn(text).filter((at) => at >= same.start && at < text.length - same.end);
  return [...kept, ...come.map((at) => from + at)].sort((a, b) => a - b);
}

const isNear = (at: number, { from, to }: Splice): boolean => at >= from - reach && at <= to + reach;
