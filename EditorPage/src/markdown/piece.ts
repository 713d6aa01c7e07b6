import type { Node } from 'prosemirror-model';
import type { Segment } from './segments';

/**
 * Where a block stands in its source, as a tree beside the block's own: `children` has one piece for every child
 * block. Offsets count from the start of the parent's piece, so a piece stays as it is when what stands before its
 * parent changes.
 */
export interface Piece {
  start: number;
  end: number;
  children: readonly Piece[];
  /** In a text block: where its content stands, counted from this piece's start. */
  segments: readonly Segment[];
  /** In a text block: from where to where its content is written, counted from this piece's start. */
  inner: readonly [number, number];
  /** Set when the source has nothing at all for this node: a cell that its row does not reach, an empty item. */
  isMissing?: boolean;
}

/** A node together with its place in the source. */
export interface Built {
  node: Node;
  piece: Piece;
}

/** The same piece, moved within its parent. */
export function shifted(piece: Piece, by: number): Piece {
  if (by === 0) return piece;
  if (piece.isMissing) return { ...piece, start: piece.start + by, end: piece.end + by };
  // Named one by one: of a long list thousands are moved at a time.
  const { start, end, children, segments, inner } = piece;
  return { start: start + by, end: end + by, children, segments, inner };
}

/** The piece of a node that the source has nothing for. `at` is where it would stand, counted from the parent's start. */
export function missingPiece(at: number): Piece {
  return { start: at, end: at, children: [], segments: [], inner: [0, 0], isMissing: true };
}
