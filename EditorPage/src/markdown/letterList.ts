import type { Node } from 'prosemirror-model';
import { schema } from '../schema';
import { readLetterMarker } from '../syntax/letters';
import type { Built, Piece } from './piece';
import type { Segment } from './segments';

const { nodes } = schema;

/** A line of a paragraph, as a range of its content, with its first text. */
interface Line {
  from: number;
  to: number;
  text: string;
}

/** The lines of a paragraph, or null when a mark reaches over a line end. */
function linesOf(paragraph: Node): Line[] | null {
  const breaks: number[] = [];
  let isCrossed = false;
  paragraph.forEach((child, offset) => {
    if (!child.isText) return;
    for (let at = child.text!.indexOf('\n'); at >= 0; at = child.text!.indexOf('\n', at + 1)) {
      breaks.push(offset + at);
      if (child.marks.length > 0) isCrossed = true;
    }
  });
  if (isCrossed || breaks.length === 0) return null;
  const starts = [0, ...breaks.map((at) => at + 1)];
  return starts.map((from, index) => {
    const to = breaks[index] ?? paragraph.content.size;
    const first = paragraph.content.cut(from, to).firstChild;
    return { from, to, text: first?.isText && first.marks.length === 0 ? first.text! : '' };
  });
}

const sourceAt = (segments: readonly Segment[], at: number) => {
  const segment = segments.find((one) => one.at <= at && at < one.at + one.size);
  return segment ? segment.from + at - segment.at : null;
};

function item(paragraph: Node, piece: Piece, line: Line, marker: number, end: number): Built | null {
  const start = sourceAt(piece.segments, line.from);
  const from = line.from + marker;
  if (start === null) return null;
  const textStart = from === line.to ? end : sourceAt(piece.segments, from);
  if (textStart === null) return null;
  const segments = piece.segments
    .filter((segment) => segment.at + segment.size > from && segment.at < line.to)
    .map((segment) => clip(segment, from, line.to))
    .map((segment) => ({ ...segment, at: segment.at - from, from: segment.from - textStart }));
  const isMissing = from === line.to;
  const range = [0, end - textStart] as const;
  const inner: Piece = { start: textStart - start, end: end - start, children: [], segments, inner: range, isMissing };
  const node = nodes.paragraph.create(null, paragraph.content.cut(from, line.to));
  return {
    node: nodes.letter_item.create(null, node),
    piece: { start, end, children: [inner], segments: [], inner: [0, 0] },
  };
}

function clip(segment: Segment, from: number, to: number): Segment {
  if (segment.size !== segment.length) return segment;
  const before = Math.max(0, from - segment.at);
  const after = Math.max(0, segment.at + segment.size - to);
  const size = segment.size - before - after;
  return { at: segment.at + before, size, from: segment.from + before, length: size };
}

/**
 * Reads a paragraph as a letter list: at least two lines, all of which begin with letters in sequence, so that
 * "A. Smith" alone stays text. Null when it is none.
 */
export function readLetterList(paragraph: Node, piece: Piece): Built | null {
  if (!/^[A-Z]{1,2}\.(?: |$)/m.test(paragraph.firstChild?.text ?? '')) return null;
  const lines = linesOf(paragraph);
  if (!lines) return null;
  const markers = lines.map((line) => readLetterMarker(line.text));
  const start = markers[0]?.number ?? 0;
  if (markers.some((marker, index) => marker?.number !== start + index)) return null;

  const items: Built[] = [];
  for (const [index, line] of lines.entries()) {
    const next = lines[index + 1];
    const nextStart = next ? sourceAt(piece.segments, next.from) : null;
    const lastSegment = piece.segments.filter((segment) => segment.at < line.to).at(-1);
    const end = lastSegment ? clip(lastSegment, 0, line.to) : null;
    if (!end || (next && nextStart === null)) return null;
    const built = item(paragraph, piece, line, markers[index]!.length, end.from + end.length);
    if (!built) return null;
    items.push(built);
  }
  return {
    node: nodes.letter_list.create(
      { start },
      items.map((one) => one.node),
    ),
    piece: { ...piece, segments: [], children: items.map((one) => one.piece) },
  };
}
