/** Places of the note as it is shown, and the same places in its source. Offsets count in a source with line feeds only. */
import type { Node } from 'prosemirror-model';
import { Selection } from 'prosemirror-state';
import type { Entry } from '../source/entries';
import { isFolded } from '../source/folded';
import { childPlace, rootPlace, type Place } from '../source/place';
import { unify } from '../source/text';

/** A block of text, where it begins in the document, and where in the source of its top-level block. */
interface TextPlace extends Place {
  pos: number;
}

const sizeOf = (raw: string): number => (raw.includes('\r') ? unify(raw).text.length : raw.length);

/** The source's offset of a place in the document that `entries` make up. */
export function offsetOf(entries: readonly Entry[], pos: number): number {
  let start = 0;
  let offset = 0;
  for (const entry of entries) {
    offset += sizeOf(entry.gap);
    const end = start + entry.node.nodeSize;
    if (pos < end) return offset + offsetInEntry(entry, pos - start);
    offset += entry.source.length;
    start = end;
  }
  return offset;
}

function offsetInEntry(entry: Entry, pos: number): number {
  const block = lastOf(textPlaces(entry), (place) => place.pos <= pos);
  if (block === undefined) return pos > 0 ? entry.source.length : 0;
  const at = Math.min(Math.max(0, pos - block.pos), block.node.content.size);
  const { segments, inner } = block.piece;
  const segment = lastOf(segments, (one) => one.at <= at) ?? segments[0];
  if (segment === undefined) return block.start + inner[0];
  const within = Math.max(0, at - segment.at);
  const isLetters = segment.size === segment.length;
  return block.start + segment.from + (isLetters ? Math.min(within, segment.length) : within === 0 ? 0 : segment.length);
}

/** The place in the document for an offset of the source. */
export function placeAt(doc: Node, entries: readonly Entry[], offset: number): Selection {
  let pos = 0;
  let start = 0;
  for (const entry of entries) {
    start += sizeOf(entry.gap);
    if (offset <= start + entry.source.length) return Selection.near(doc.resolve(Math.min(pos + posInEntry(entry, offset - start), doc.content.size)));
    start += entry.source.length;
    pos += entry.node.nodeSize;
  }
  return Selection.atEnd(doc);
}

/** The folded run that holds an offset of the source, and where in it; null when a block that is read does. */
export function foldedAt(entries: readonly Entry[], offset: number): { node: Node; offset: number } | null {
  let start = 0;
  for (const { node, gap, raw, source } of entries) {
    start += sizeOf(gap);
    if (offset <= start + source.length) return isFolded(node) && offset > start ? { node, offset: inRaw(raw, offset - start) } : null;
    start += source.length;
  }
  return null;
}

const inRaw = (raw: string, offset: number): number => (raw.includes('\r') ? unify(raw).at(offset) : offset);

function posInEntry(entry: Entry, offset: number): number {
  const places = textPlaces(entry);
  const block = lastOf(places, ({ start }) => start <= offset) ?? places[0];
  if (block === undefined) return 0;
  const inner = offset - block.start;
  const segment = lastOf(block.piece.segments, ({ from }) => from <= inner) ?? block.piece.segments[0];
  if (segment === undefined) return block.pos;
  const within = Math.max(0, inner - segment.from);
  const isLetters = segment.size === segment.length;
  return block.pos + segment.at + (isLetters ? Math.min(within, segment.size) : within === 0 ? 0 : segment.size);
}

/** The blocks of text of an entry in order, with places from the start of its node. */
function textPlaces(entry: Entry): TextPlace[] {
  const found: TextPlace[] = [];
  const visit = (place: Place, pos: number): void => {
    if (place.piece.isMissing) return;
    if (place.node.isTextblock) {
      found.push({ ...place, pos: pos + 1 });
      return;
    }
    place.node.forEach((_child, childPos, index) => {
      if (place.piece.children[index] !== undefined) visit(childPlace(place, index), pos + 1 + childPos);
    });
  };
  visit(rootPlace(entry), 0);
  return found;
}

function lastOf<Item>(items: readonly Item[], matches: (item: Item) => boolean): Item | undefined {
  for (let index = items.length - 1; index >= 0; index--) {
    if (matches(items[index]!)) return items[index];
  }
  return undefined;
}
