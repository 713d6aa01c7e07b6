import type { Mark, Node } from 'prosemirror-model';
import { schema } from '../schema';
import { sourceOffsets, type Splice } from './patch';
import type { Place } from './place';

/**
 * Ways to write `text` into a link whose text is also the label that it is found by: the label comes behind it as it
 * was. `from` and `to` are offsets in the content of the text block, which the text stands in place of.
 */
export function* labelledSplices(source: string, place: Place, from: number, to: number, text: string): Generator<Splice> {
  const { node, piece, start } = place;
  const link = linkAround(node, from, to);
  if (!link) return;
  const size = node.content.size;
  const at = (offset: number) => sourceOffsets(piece, offset, size).map((one) => start + one);
  const open = at(link.from).reverse().find((one) => source[one] === '[');
  const close = at(link.to).find((one) => source[one - 1] === ']');
  if (open === undefined || close === undefined) return;
  const isCollapsed = source.slice(open, close).endsWith('][]');
  const textEnd = isCollapsed ? close - 3 : close - 1;
  const label = source.slice(open + 1, textEnd);
  for (const begin of at(from)) {
    for (const end of at(to)) {
      const isInside = open < begin && begin <= end && end <= textEnd;
      if (isInside) yield { from: begin, to: close, text: `${text}${source.slice(end, textEnd)}][${label}]` };
    }
  }
}

/** From where to where the link by its own text goes that holds all of a stretch. */
function linkAround(block: Node, from: number, to: number): { from: number; to: number } | null {
  const isNamed = ({ type, attrs }: Mark) =>
    type === schema.marks.link && (attrs.reference === 'shortcut' || attrs.reference === 'collapsed');
  const child = [block.childAfter(from), block.childBefore(from)].find(({ node }) => node?.marks.some(isNamed));
  const mark = child?.node?.marks.find(isNamed);
  if (!child || !mark) return null;
  const isLinked = (index: number) => mark.isInSet(block.maybeChild(index)?.marks ?? []);
  const found = { from: child.offset, to: child.offset + child.node!.nodeSize };
  for (let index = child.index - 1; isLinked(index); index -= 1) found.from -= block.child(index).nodeSize;
  for (let index = child.index + 1; isLinked(index); index += 1) found.to += block.child(index).nodeSize;
  return to <= found.to ? found : null;
}
