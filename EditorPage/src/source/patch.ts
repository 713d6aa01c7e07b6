import type { Fragment, Mark, Node } from 'prosemirror-model';
import type { Piece } from '../markdown/piece';
import { writeInline, type Style } from '../markdown/write';
import { schema } from '../schema';
import { withPlainLinks } from './normal';
import { endOf, indentLines, type Place } from './place';
import { labelledSplices } from './references';

/** A change to a block's source: `text` in place of what stands from `from` to `to`. */
export interface Splice {
  from: number;
  to: number;
  text: string;
  /** Set where the splice takes away guards and puts in nothing but what was typed. */
  isUnguarded?: boolean;
}

export function spliced(source: string, { from, to, text }: Splice): string {
  return source.slice(0, from) + text + source.slice(to);
}

/** The source offsets, relative to the piece, that an offset in a text block's content may stand for, ascending. */
export function sourceOffsets(piece: Piece, at: number, size: number): number[] {
  const offsets = new Set<number>();
  for (const segment of piece.segments) {
    if (segment.at > at) break;
    if (at > segment.at + segment.size) continue;
    if (segment.size === segment.length) offsets.add(segment.from + at - segment.at);
    else offsets.add(at === segment.at ? segment.from : segment.from + segment.length);
  }
  // Markers may stand before the first text and behind the last.
  if (at === 0) offsets.add(piece.inner[0]);
  if (at === size) offsets.add(piece.inner[1]);
  return [...offsets].sort((a, b) => a - b);
}

/** What a text block's content has to become another: `middle` in place of the content from `from` to `to`. */
interface Difference {
  from: number;
  to: number;
  middle: Fragment;
}

export function difference(before: Node, after: Node): Difference | null {
  const [old, next] = [withPlainLinks(before).content, withPlainLinks(after).content];
  const from = old.findDiffStart(next);
  const ends = from === null ? null : old.findDiffEnd(next);
  if (from === null || !ends) return null;
  const overlap = Math.max(0, from - Math.min(ends.a, ends.b));
  return { from, to: ends.a + overlap, middle: after.content.cut(from, ends.b + overlap) };
}

/** Widens a difference until both its ends have a place in the source. */
function widened(place: Place, after: Fragment, change: Difference): Difference {
  const size = place.node.content.size;
  const hasPlace = (at: number) => sourceOffsets(place.piece, at, size).length > 0;
  let { from, to } = change;
  while (from > 0 && !hasPlace(from)) from -= 1;
  while (to < size && !hasPlace(to)) to += 1;
  if (from === change.from && to === change.to) return change;
  return { from, to, middle: after.cut(from, after.size - (size - to)) };
}

/**
 * The ways to bring a change of a text block's content into its source, the most faithful first. None is certain:
 * each has to be read back. `prefix` stands before every further line.
 */
export function* inlineSplices(source: string, place: Place, next: Node, prefix: string): Generator<Splice> {
  const change = difference(place.node, next);
  if (!change) return;
  if (place.piece.isMissing) {
    yield* intoNothing(source, place, next, prefix);
    return;
  }
  for (const splice of plainSplices(source, place, next, change)) {
    const goesOn = splice.text.endsWith('\n') && /[^\n]/.test(source[splice.to] ?? '');
    yield { ...splice, text: indentLines(splice.text, prefix) + (goesOn ? prefix.slice(prefix.trimEnd().length) : '') };
  }
}

/** Blanks and letters written as numbers are nobody's wish: other ways come first. */
export const isCoded = ({ text }: Splice): boolean => /&#x\w+;/.test(text);

function* plainSplices(source: string, place: Place, next: Node, change: Difference): Generator<Splice> {
  const wide = widened(place, next.content, change);
  for (const write of [plainTexts, writtenTexts]) {
    for (const [from, to] of ranges(place, wide)) {
      for (const text of write(source, from, to, next, wide.middle, place)) yield { from, to, text };
    }
  }
  if (next.type.spec.code) return;
  if (isPlain(wide.middle)) {
    yield* labelledSplices(source, place, wide.from, wide.to, textOf(wide.middle));
    if (wide.middle.size > 0) yield* escaped(source, place, wide);
  }
  yield* rewritten(source, place, next.content, wide);
}

/** So many equal characters in a row are looked at as one marker. */
const longestRun = 8;

/** Plain text beside characters that it would make markers of: they get backslashes. */
function* escaped(source: string, place: Place, change: Difference): Generator<Splice> {
  const text = textOf(change.middle);
  for (const [from, to] of ranges(place, change)) {
    const before = /([!-/:-@[-`{-~])\1*$/.exec(source.slice(Math.max(place.start, from - longestRun), from))?.[0] ?? '';
    const after = /^([!-/:-@[-`{-~])\1*/.exec(source.slice(to, Math.min(endOf(place), to + longestRun)))?.[0] ?? '';
    for (const count of new Set([1, before.length])) {
      if (before) yield { from: from - count, to, text: `${before.slice(-count).replace(/./g, '\\$&')}${text}` };
    }
    for (const count of new Set([1, after.length])) {
      if (after) yield { from, to: to + count, text: `${text}${after.slice(0, count).replace(/./g, '\\$&')}` };
    }
  }
}

/** The source ranges that a difference may stand for. */
function* ranges(place: Place, { from, to, middle }: Difference): Generator<[number, number]> {
  const size = place.node.content.size;
  const starts = sourceOffsets(place.piece, from, size).map((at) => at + place.start);
  const ends = sourceOffsets(place.piece, to, size).map((at) => at + place.start);
  if (from === to) {
    for (const at of insertsAfter(place.node, from, middle) ? starts : starts.reverse()) yield [at, at];
    return;
  }
  for (const start of starts) {
    for (const end of ends.slice().reverse()) if (start <= end) yield [start, end];
  }
}

/** Whether new content goes with what stands before it, by its marks, rather than with what stands behind. */
function insertsAfter(block: Node, at: number, middle: Fragment): boolean {
  const marksOf = (node: Node | null | undefined): readonly Mark[] => node?.marks ?? [];
  const before = at > 0 ? marksOf(block.childBefore(at).node) : [];
  const own = marksOf(middle.firstChild);
  return before.length > 0 && before.every((mark) => mark.isInSet(own));
}

function isPlain(content: Fragment): boolean {
  return content.content.every((node) => node.isText);
}

const textOf = (content: Fragment) => content.textBetween(0, content.size);

/** New content as plain text. */
function* plainTexts(
  source: string,
  from: number,
  to: number,
  next: Node,
  middle: Fragment,
  place: Place,
): Generator<string> {
  if (!isPlain(middle)) return;
  const plain = textOf(middle);
  const wasEmpty = plain !== '' && place.node.content.size === 0;
  // An empty cell or heading keeps a blank before what closes it; an empty block of code has no line of its own yet.
  if (wasEmpty && /[ \t]/.test(source[from - 1] ?? '') && /[|#]/.test(source[to] ?? '')) yield `${plain} `;
  yield plain;
  if (wasEmpty && next.type.spec.code) yield `${plain}\n`;
  // At the start of a line as many blanks are taken for indentation as the fence has before it.
  if (next.type.spec.code && plain.startsWith(' ')) yield* [' ', '  ', '   '].map((indent) => indent + plain);
}

/** New content as Markdown, where that is not the plain text. */
function* writtenTexts(
  source: string,
  from: number,
  to: number,
  next: Node,
  middle: Fragment,
  place: Place,
): Generator<string> {
  if (middle.size === 0 || next.type.spec.code) return;
  const plain = isPlain(middle) ? textOf(middle) : null;
  const isFirst = from === place.start + place.piece.inner[0];
  const isLast = to === place.start + place.piece.inner[1];
  const around = {
    before: isFirst ? '\n' : (source[from - 1] ?? '\n'),
    after: isLast ? '\n' : (source[to] ?? '\n'),
    isCell: isCell(next),
  };
  // The delimiter that was typed is the one to keep.
  const typed = /^\\?([_*])/.exec(source.slice(from, to))?.[1];
  const model = typed === '_' ? '_a __b' : typed === '*' ? '' : source.slice(place.start, endOf(place));
  for (const style of stylesOf(model)) {
    const text = writeInline(middle, around, style);
    if (text !== plain) yield text;
  }
}

/** The markers to write with, those that a source has itself first. */
function stylesOf(source: string): ReadonlyArray<Partial<Style>> {
  const emphasis: Partial<Style> = /(?<![_\w])_(?![_\s])/.test(source) ? { emphasis: '_' } : {};
  const strong: Partial<Style> = /(?<![_\w])__(?!\s)/.test(source) ? { strong: '_' } : {};
  const own = { ...emphasis, ...strong };
  const part = emphasis.emphasis && strong.strong ? [emphasis, strong] : [];
  return [own, ...part, ...(own.emphasis || own.strong ? [{}] : []), { emphasis: '_', strong: '_', address: 'angled' }];
}

const isCell = (node: Node) => node.type === schema.nodes.table_cell || node.type === schema.nodes.table_header;

/** The content around a difference written anew, from plain text to plain text where there is any; then all of it. */
function* rewritten(source: string, place: Place, next: Fragment, change: Difference): Generator<Splice> {
  const size = place.node.content.size;
  const around = widenedToPlain(place, next, change);
  for (const { from, to, middle } of around.middle.size < next.size ? [around, { from: 0, to: size, middle: next }] : [around]) {
    const start = place.start + sourceOffsets(place.piece, from, size)[0]!;
    const end = place.start + sourceOffsets(place.piece, to, size).at(-1)!;
    const sides = {
      before: from === 0 ? '\n' : (source[start - 1] ?? '\n'),
      after: to === size ? '\n' : (source[end] ?? '\n'),
      isCell: isCell(place.node),
    };
    for (const style of stylesOf(source.slice(start, end))) yield { from: start, to: end, text: writeInline(middle, sides, style) };
  }
}

/** Widens a difference to places in text without marks, each with one place in the source, or to the ends of the content. */
function widenedToPlain(place: Place, after: Fragment, change: Difference): Difference {
  const { content } = place.node;
  const isPlainAt = (at: number) => {
    const sides = [place.node.childBefore(at).node, place.node.childAfter(at).node];
    return sides.every((side) => side?.isText && side.marks.length === 0) && sourceOffsets(place.piece, at, content.size).length === 1;
  };
  let { from, to } = change;
  while (from > 0 && !isPlainAt(from)) from -= 1;
  while (to < content.size && !isPlainAt(to)) to += 1;
  return { from, to, middle: after.cut(from, after.size - (content.size - to)) };
}

/** So many cells may be missing in a row before the one that gets its first content. */
const missingLimit = 4;

/** The first content of an item or quote that had none, or of a cell that its row did not reach. */
function* intoNothing(source: string, place: Place, next: Node, prefix: string): Generator<Splice> {
  const at = place.start;
  const written = writeInline(next.content, { before: '\n', after: '\n', isCell: isCell(next) });
  const plain = isPlain(next.content) ? textOf(next.content) : written;
  if (isCell(next)) {
    const isClosed = source[at - 1] === '|';
    for (let missing = 0; missing < missingLimit; missing += 1) {
      const text = ' |'.repeat(missing) + (isClosed ? ` ${written.trim()} |` : ` | ${written.trim()}`);
      yield { from: at, to: at, text };
    }
  }
  if (next.type !== schema.nodes.paragraph) return;
  for (const text of new Set([plain, written])) {
    const lines = indentLines(text, prefix);
    if (source[at] === ' ') yield { from: at + 1, to: at + 1, text: lines };
    yield { from: at, to: at, text: ` ${lines}` };
  }
}
