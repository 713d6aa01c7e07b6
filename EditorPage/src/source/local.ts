import { Fragment, type Node } from 'prosemirror-model';
import type { Labels } from '../markdown/parse';
import { missingPiece, shifted, type Piece } from '../markdown/piece';
import { schema } from '../schema';
import { differingChildren } from './changes';
import { readBlock, type Block } from './entries';
import { isSame, isSameButLinks } from './normal';
import { spliced, type Splice } from './patch';

const { nodes } = schema;

/** Smaller blocks are read whole. */
const wholeLimit = 3000;

/**
 * Reads a long list, quote or table after a splice only around the children that changed. An item or a block of a
 * quote can reach no further than its neighbour, which is read with it; a row needs only the header. Null when it does
 * not say what is expected, or what is `unlinked` with other links; undefined when it has to be read whole.
 */
export function readPart(block: Block, splice: Splice, expected: Node, labels: Labels, unlinked?: Node): Block | null | undefined {
  const { parsed, source } = block;
  const isLong = source.length > wholeLimit && parsed.childCount > 4;
  if (!isLong || !parsed.sameMarkup(expected)) return undefined;
  if (parsed.type !== nodes.list && parsed.type !== nodes.table && parsed.type !== nodes.blockquote) return undefined;

  const range = differingChildren(parsed, expected);
  const first = parsed.type === nodes.table ? 1 : 0;
  const from = Math.max(first, range.from - 1);
  const to = Math.min(parsed.childCount, range.beforeTo + 1);
  if (range.from < first || to - from > parsed.childCount / 2) return undefined;
  return readWindow(block, splice, expected, { from, to, expectedTo: to + range.afterTo - range.beforeTo }, labels, unlinked);
}

/** Children `from` to `to` of the block, which become `from` to `expectedTo`. */
interface Window {
  from: number;
  to: number;
  expectedTo: number;
}

function readWindow(
  block: Block,
  splice: Splice,
  expected: Node,
  window: Window,
  labels: Labels,
  unlinked: Node | undefined,
): Block | null | undefined {
  const { piece, source, parsed } = block;
  const firstPiece = piece.children[window.from]!;
  const start = source.lastIndexOf('\n', piece.start + firstPiece.start - 1) + 1;
  const end = piece.start + piece.children[window.to - 1]!.end;
  if (splice.from < piece.start + firstPiece.start || splice.to > end) return undefined;

  const grown = splice.text.length - (splice.to - splice.from);
  const next = spliced(source, splice);
  const header = parsed.type === nodes.table ? source.slice(0, piece.start + piece.children[1]!.start) : '';
  const read = readBlock(header + next.slice(start, end + grown), parsed.type, labels);
  const headerRows = header === '' ? 0 : 1;
  if (!read || read.parsed.attrs.kind !== parsed.attrs.kind) return null;
  const width = header === '' ? 0 : parsed.firstChild!.childCount;
  const found = read.parsed.children.slice(headerRows).map((row) => widerRow(row, width));
  if (found.length !== window.expectedTo - window.from) return null;
  const isExpected = found.every((child, index) => isSame(child, expected.child(window.from + index)));
  const isLinked = () => unlinked && found.every((child, index) => isSameButLinks(child, unlinked.child(window.from + index)));
  if (!isExpected && !isLinked()) return null;

  const offset = start - header.length + read.piece.start - piece.start;
  const pieces = read.piece.children.slice(headerRows).map((one) => shifted(widerPiece(one, width), offset));
  return joined(block, next, window, found, pieces, grown);
}

/** A row with the cells that it needs in a table where another row has more. Rows of no table have the width 0. */
function widerRow(row: Node, width: number): Node {
  if (row.childCount >= width) return row;
  const more = Array.from({ length: width - row.childCount }, () => nodes.table_cell.create());
  return row.copy(row.content.append(Fragment.fromArray(more)));
}

function widerPiece(piece: Piece, width: number): Piece {
  if (piece.children.length >= width) return piece;
  const more = Array.from({ length: width - piece.children.length }, () => missingPiece(piece.end - piece.start));
  return { ...piece, children: [...piece.children, ...more] };
}

function joined(block: Block, source: string, window: Window, found: Node[], pieces: Piece[], grown: number): Block {
  const { piece, parsed } = block;
  const children = [
    ...piece.children.slice(0, window.from),
    ...pieces,
    ...piece.children.slice(window.to).map((one) => shifted(one, grown)),
  ];
  const content = [...parsed.children.slice(0, window.from), ...found, ...parsed.children.slice(window.to)];
  return {
    source,
    parsed: parsed.type.create(parsed.attrs, content),
    piece: { ...piece, end: piece.end + grown, inner: [0, piece.inner[1] + grown], children },
  };
}
