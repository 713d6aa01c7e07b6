import { Fragment, type Node } from 'prosemirror-model';
import type { Piece } from '../markdown/piece';
import { shifted } from '../markdown/piece';
import type { Segment } from '../markdown/segments';
import { schema } from '../schema';
import type { Block, Entry } from './entries';
import { spliced, type Splice } from './patch';
import { endOf, nodeAt, placesAlong, type Place } from './place';
import { differing } from './range';
import { carryOver, commonEnds } from './text';

const { nodes } = schema;

/**
 * The entry for a block that has become `next` by typing or deleting in one of its texts. Nothing but that text is looked
 * at, however long the block is. Null when more has changed, or when the text has to be read back, as near guards or where
 * it was source. The entry has no gap.
 */
export function quickEntry(old: Entry, next: Node, lineEnd: string): Entry | null {
  const path = old.node === old.parsed && !old.guards && !old.wasSource ? pathToChange(old.parsed, next) : null;
  const splice = path && typed(placesAlong(old, path).at(-1)!, nodeAt(next, path));
  const block = splice && quickEdit(old, splice, next, path!);
  return block && { ...block, node: next, raw: carryOver(old.raw, old.source, block.source, lineEnd), gap: '' };
}

/** The way to the only text block in which two blocks differ. */
function pathToChange(before: Node, after: Node): number[] | null {
  const path: number[] = [];
  let [old, next] = [before, after];
  while (!old.isTextblock) {
    const { from, oldTo, nextTo } = differing(old.children, next.children);
    if (oldTo !== from + 1 || nextTo !== oldTo || !old.sameMarkup(next)) return null;
    path.push(from);
    [old, next] = [old.child(from), next.child(from)];
  }
  return next.isTextblock ? path : null;
}

/** The change of a text in its source, where letters have come or gone within one stretch of it. */
function typed({ node, piece, start }: Place, next: Node): Splice | null {
  const { from: index, oldTo, nextTo } = differing(node.children, next.children);
  const old = node.maybeChild(index);
  const changed = next.maybeChild(index);
  if (oldTo !== index + 1 || nextTo !== oldTo || !old?.isText || !changed?.isText) return null;
  const { start: same, end } = commonEnds(old.text!, changed.text!);
  const from = offsetOf(node, index) + same;
  const to = from - same + old.text!.length - end;
  const segment = piece.segments.find((one) => one.size === one.length && one.at <= from && to <= one.at + one.size);
  if (!segment) return null;
  const at = start + segment.from - segment.at;
  return { from: at + from, to: at + to, text: changed.text!.slice(same, changed.text!.length - end) };
}

/** Where a child begins in its parent. */
function offsetOf(parent: Node, index: number): number {
  let offset = 0;
  for (let before = 0; before < index; before += 1) offset += parent.child(before).nodeSize;
  return offset;
}

/**
 * Carries out an edit of a text block that cannot change how anything is read, without reading it back. `path` leads
 * from the block to the text block. Null when that is not certain.
 */
export function quickEdit(block: Block, given: Splice, expected: Node, path: readonly number[]): Block | null {
  const splice = beforeBlank(block.source, given);
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

/** The same edit with the first of two blanks in place of the second, so that it is the word before that changes. */
function beforeBlank(source: string, splice: Splice): Splice {
  const { from, to, text } = splice;
  const moved = from === to ? text : text === '' ? source.slice(from, to) : '';
  if (source[from - 1] !== ' ' || !moved.endsWith(' ')) return splice;
  return { from: from - 1, to: to - 1, text: text === '' ? '' : ` ${text.slice(0, -1)}` };
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
  if (from < 0 || to > source.length || source.includes('<')) return false;
  if (source.includes('[') && (source.includes(']:') || mayBeInLabel(source, from) || mayBeInTarget(source, from))) return false;
  const start = lastBlank(source, from - 1) + 1;
  const stop = nextBlank(source, to);
  const before = source.slice(start, stop);
  const after = source.slice(start, from) + splice.text + source.slice(to, stop);
  if (!words.test(before) || !words.test(after)) return false;
  const blanks = source[start - 2] === ' ' ? 2 : 1;
  const wordBefore = source.slice(Math.max(0, start - blanks - 5), start - blanks);
  if (source[start - 1] !== ' ' || !wordEnd.test(wordBefore)) return false;
  if (source[stop] === ' ') return stop + 1 < source.length && !isBlank(source, stop + 1);
  return (stop === source.length || source[stop] === '\n') && [before, after].every((text) => /\S$/.test(text));
}

/** No label is longer than this, in characters. */
const longestLabel = 1_000;

/**
 * Whether a place may be between the brackets of a label or a wiki link. Neither goes on behind a closing bracket,
 * wherever that stands, unless a backslash is before it.
 */
function mayBeInLabel(source: string, at: number): boolean {
  for (let index = at - 1; index >= Math.max(0, at - longestLabel); index -= 1) {
    if (source[index] === '[') return true;
    if (source[index] === ']' && source[index - 1] !== '\\') return false;
  }
  return false;
}

/** Whether a place may be between the parentheses behind a link's text: without a word there they might make a link. */
function mayBeInTarget(source: string, at: number): boolean {
  const open = source.lastIndexOf('](', at);
  return open >= 0 && !source.slice(open, at).includes(')');
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
