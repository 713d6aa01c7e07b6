import { Fragment, type Node } from 'prosemirror-model';
import { schema } from '../schema';
import type { Block } from './entries';
import { sourceOffsets } from './patch';
import { placesAlong } from './place';

/** From where to where an address stands in a text block's content. */
interface Stretch {
  from: number;
  to: number;
}

/**
 * The addresses in a text block that are links by the angle brackets around them, which nobody sees. `path` leads from
 * the block to the text block; empty when there is none at its end.
 */
export function bracketed(block: Block, path: readonly number[]): Stretch[] {
  if (!block.source.includes('<')) return [];
  const place = placeAt(block, path);
  if (!place?.node.isTextblock) return [];
  const { node, piece, start } = place;
  const found: Stretch[] = [];
  node.forEach((child, offset) => {
    if (!child.marks.some((mark) => mark.attrs.auto)) return;
    const opens = sourceOffsets(piece, offset, node.content.size).some((at) => block.source[start + at] === '<');
    if (opens) found.push({ from: offset, to: offset + child.nodeSize });
  });
  return found;
}

function placeAt(block: Block, path: readonly number[]) {
  let node: Node | null = block.parsed;
  for (const index of path) node = node?.maybeChild(index) ?? null;
  return node ? placesAlong(block, path).at(-1) : undefined;
}

/**
 * The text block with those brackets as letters. Where the stretches are those of an older state of it, `before`, they
 * are taken to where they are now.
 */
export function withBrackets(node: Node, stretches: readonly Stretch[], before = node): Node {
  const moved = movement(before, node);
  let content = Fragment.empty;
  let done = 0;
  for (const stretch of stretches) {
    const [from, to] = [moved(stretch.from, 1), moved(stretch.to, -1)];
    if (from >= to) continue;
    const marks = node.childAfter(from).node?.marks;
    content = content
      .append(node.content.cut(done, from))
      .addToEnd(schema.text('<', marks))
      .append(node.content.cut(from, to))
      .addToEnd(schema.text('>', marks));
    done = to;
  }
  return done === 0 ? node : node.copy(content.append(node.content.cut(done)));
}

/** Takes an offset in `before` to `after`. What was put in at the offset stands before it (1) or behind it (-1). */
function movement(before: Node, after: Node): (at: number, side: 1 | -1) => number {
  const start = before.content.findDiffStart(after.content);
  const ends = before.content.findDiffEnd(after.content);
  if (start === null || !ends) return (at) => at;
  const overlap = Math.max(0, start - Math.min(ends.a, ends.b));
  const grown = ends.b - ends.a;
  return (at, side) => {
    if (at < start || (at === start && side < 0)) return at;
    return at >= ends.a + overlap ? at + grown : start;
  };
}
