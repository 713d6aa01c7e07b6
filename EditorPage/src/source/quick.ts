import { Fragment, type Node } from 'prosemirror-model';
import type { Piece } from '../markdown/piece';
import { shifted } from '../markdown/piece';
import type { Segment } from '../markdown/segments';
import { schema } from '../schema';
import type { Block } from './entries';
import { spliced, type Splice } from './patch';
import { endOf, nodeAt, placesAlong, type Place } from './place';

const { nodes } = schema;

/**
 * Carries out an edit of a text block that cannot change how anything is read, without reading it back. `path` leads
 * from the block to the text block. Null when that is not certain.
 */
export function quickEdit(block: Block, splice: Splice, expected: Node, path: readonly number[]): Block | null {
  const places = placesAlong(block, path);
  const place = places.at(-1)!;
  if (place.piece.isMissing || !place.node.isTextblock || !block.parsed.sameMarkup(expected)) return null;
  const isCode = place.node.type === nodes.code_block;
  const isSafe = isCode ? path.length === 0 && isInsideCode(block, splice) : isInsideWords(block.source, place, splice);
  const segment = isSafe ? segmentOf(place, splice) : undefined;
  if (!segment || !saysText(place, segment, splice, nodeAt(expected, path))) return null;
  const grown = splice.text.length - (splice.to - splice.from);
  const moved = textPieceAfter(place.piece, segment, grown);
  return { source: spliced(block.source, splice), parsed: expected, piece: pieceAfter(places, path, moved, grown) };
}

const word = '\\p{L}+[,.;!?]?';
/** Words, each of letters and at most one mark of punctuation, with blanks between them and perhaps one behind. */
const words = new RegExp(`^(?:${word}(?: {1,2}${word})*)? ?$`, 'u');
/** What can stand before a blank without meaning more than itself. */
const wordEnd = /[\p{L}\p{N}][,;!?]?$|\p{L}{4}\.$/u;

/**
 * Whether an edit turns words into words, in the middle of a line or at its end, with a word and a blank before them
 * that stay. Delimiters see only the characters beside them, and those remain blanks; nothing that begins or ends a
 * block is made of letters. Within brackets, or where there may be a tag, every letter can count.
 */
function isInsideWords(whole: string, place: Place, splice: Splice): boolean {
  if (place.node.type !== nodes.paragraph && place.node.type !== nodes.heading) return false;
  const source = whole.slice(place.start, endOf(place));
  const from = splice.from - place.start;
  const to = splice.to - place.start;
  if (from < 0 || to > source.length || source.includes('<') || mayBeInBrackets(source, from)) return false;
  const start = lastBlank(source, from - 1) + 1;
  const stop = nextBlank(source, to);
  const before = source.slice(start, stop);
  const after = source.slice(start, from) + splice.text + source.slice(to, stop);
  if (!words.test(before) || !words.test(after)) return false;
  if (source[start - 1] !== ' ' || !wordEnd.test(source.slice(Math.max(0, start - 6), start - 1))) return false;
  if (source[stop] === ' ') return stop + 1 < source.length && !isBlank(source, stop + 1);
  return (stop === source.length || source[stop] === '\n') && [before, after].every((text) => /\S$/.test(text));
}

function mayBeInBrackets(source: string, at: number): boolean {
  if (!source.includes('[')) return false;
  if (source.includes(']:') || source.includes('\\') || source.includes('`')) return true;
  let depth = 0;
  for (let index = 0; index < at; index += 1) {
    if (source[index] === '[') depth += 1;
    else if (source[index] === ']') depth -= 1;
    if (depth < 0) return true;
  }
  return depth > 0;
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

/** The stretch of text that holds all of a splice. */
function segmentOf({ piece, start }: Place, { from, to }: Splice): Segment | undefined {
  const holds = (one: Segment) =>
    one.size === one.length && one.size > 0 && one.from <= from - start && to - start <= one.from + one.length;
  return piece.segments.find(holds);
}

/** Whether `expected` is the text block with the splice in it, marked as the text around it is. */
function saysText({ node, start }: Place, segment: Segment, { from, to, text }: Splice, expected: Node): boolean {
  const at = segment.at + from - start - segment.from;
  const marks = node.childAfter(segment.at).node?.marks ?? [];
  const inserted = text === '' ? Fragment.empty : Fragment.from(schema.text(text, marks));
  const content = node.content.cut(0, at).append(inserted).append(node.content.cut(at + to - from));
  return node.sameMarkup(expected) && content.eq(expected.content);
}

function textPieceAfter(piece: Piece, segment: Segment, grown: number): Piece {
  const index = piece.segments.indexOf(segment);
  const segments = piece.segments.map((one, at) => {
    if (at < index) return one;
    if (at === index) return { ...one, size: one.size + grown, length: one.length + grown };
    return { ...one, at: one.at + grown, from: one.from + grown };
  });
  return { ...piece, end: piece.end + grown, segments, inner: [piece.inner[0], piece.inner[1] + grown] };
}

/** The piece of the whole block, with `changed` at the end of the path. */
function pieceAfter(places: readonly Place[], path: readonly number[], changed: Piece, grown: number): Piece {
  let piece = changed;
  for (let depth = path.length - 1; depth >= 0; depth -= 1) {
    const outer = places[depth]!.piece;
    const index = path[depth]!;
    const children = outer.children.map((child, at) => {
      if (at < index) return child;
      return at === index ? piece : shifted(child, grown);
    });
    const inner: [number, number] = outer.inner[1] === 0 ? [0, 0] : [outer.inner[0], outer.inner[1] + grown];
    piece = { ...outer, end: outer.end + grown, inner, children };
  }
  return piece;
}
