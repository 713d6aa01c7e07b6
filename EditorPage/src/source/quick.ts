import type { Node } from 'prosemirror-model';
import type { Labels } from '../markdown/parse';
import type { Piece } from '../markdown/piece';
import type { Segment } from '../markdown/segments';
import { schema } from '../schema';
import type { Block } from './entries';
import { spliced, type Splice } from './patch';

const { nodes } = schema;

/** Smaller blocks are read back quickly enough. */
const smallLimit = 1500;

/**
 * Carries out an edit of a long text block that cannot change how anything around it is read, without reading it
 * back. Null when that is not certain.
 */
export function quickEdit(block: Block, splice: Splice, expected: Node, labels: Labels): Block | null {
  const { parsed, source } = block;
  if (source.length < smallLimit || !parsed.isTextblock || !parsed.sameMarkup(expected)) return null;
  const isSafe = parsed.type === nodes.code_block ? isInsideCode(block, splice) : isInsideWords(block, splice, labels);
  if (!isSafe) return null;
  const piece = moved(block.piece, splice);
  return piece && { source: spliced(source, splice), parsed: expected, piece };
}

/** Words with single blanks between them, each of letters and at most one mark of punctuation. */
const words = /^\p{L}+[,.;!?]?(?: \p{L}+[,.;!?]?)*$/u;
const letters = /^\p{L}+$/u;

/**
 * Whether an edit turns words into words, with blanks around them that stay and something before and behind in the
 * same line. Delimiters see only the characters beside them, and those remain blanks; nothing that begins or ends a
 * block is made of letters. What brackets name and what may be a tag is looked at in full.
 */
function isInsideWords({ source, parsed }: Block, { from, to, text }: Splice, labels: Labels): boolean {
  if (parsed.type !== nodes.paragraph && parsed.type !== nodes.heading) return false;
  const start = lastBlank(source, from - 1) + 1;
  const stop = nextBlank(source, to);
  const before = source.slice(start, stop);
  const after = source.slice(start, from) + text + source.slice(to, stop);
  if (!words.test(before) || !words.test(after) || source.includes('<')) return false;
  if (source.includes('[') && (labels.size > 0 || !letters.test(before) || !letters.test(after))) return false;
  return hasWordBefore(source, start) && (isLast(source, stop) || hasWordBehind(source, stop));
}

const isBlank = (source: string, at: number) => source[at] === ' ' || source[at] === '\n' || source[at] === '\t';

function lastBlank(source: string, at: number): number {
  while (at >= 0 && !isBlank(source, at)) at -= 1;
  return at;
}

function nextBlank(source: string, at: number): number {
  while (at < source.length && !isBlank(source, at)) at += 1;
  return at;
}

const hasWordBefore = (source: string, start: number) =>
  source[start - 1] === ' ' && !isBlank(source, start - 2) && start > 1;
const hasWordBehind = (source: string, stop: number) => source[stop] === ' ' && !isBlank(source, stop + 1);
const isLast = (source: string, stop: number) => nextWord(source, stop) === source.length;

function nextWord(source: string, at: number): number {
  while (at < source.length && isBlank(source, at)) at += 1;
  return at;
}

/** Whether an edit stays within a line of fenced code that neither was nor becomes a fence. */
function isInsideCode({ source }: Block, { from, to, text }: Splice): boolean {
  const fence = /^(`{3,}|~{3,})/.exec(source);
  const isClosed = /\n(`{3,}|~{3,})[ \t]*$/.test(source);
  if (!fence || !isClosed || text.includes('\n') || source.slice(from, to).includes('\n')) return false;
  const start = source.lastIndexOf('\n', from - 1) + 1;
  const stop = source.indexOf('\n', to);
  const before = source.slice(start, stop);
  const after = source.slice(start, from) + text + source.slice(to, stop);
  return start > 0 && stop > 0 && [before, after].every((line) => !line.includes('```') && !line.includes('~~~'));
}

/** The piece after a splice within one of its stretches of text. Null when it is not within one. */
function moved(piece: Piece, { from, to, text }: Splice): Piece | null {
  const begin = from - piece.start;
  const end = to - piece.start;
  const grown = text.length - (to - from);
  const holds = (one: Segment) =>
    one.size === one.length && one.size > 0 && one.from <= begin && end <= one.from + one.length;
  const index = piece.segments.findIndex(holds);
  if (index < 0) return null;
  const segments = piece.segments.map((one, at) => {
    if (at < index) return one;
    if (at === index) return { ...one, size: one.size + grown, length: one.length + grown };
    return { ...one, at: one.at + grown, from: one.from + grown };
  });
  const inner: [number, number] = [piece.inner[0], piece.inner[1] + grown];
  return { ...piece, end: piece.end + grown, segments, inner };
}
