import type { Node } from 'prosemirror-model';
import { writeBlock, type Style } from '../markdown/write';
import { schema } from '../schema';
import type { Splice } from './patch';
import { childPlace, endOf, indentLines, linePrefix, readItemMarker, type Place } from './place';
import type { Pool } from './pool';

const { nodes } = schema;

/** Which children of a container are to be replaced by which nodes. */
export interface Replacement {
  from: number;
  to: number;
  nodes: readonly Node[];
}

/**
 * The ways to replace children of a container in its source, so that the other children keep their bytes. New items
 * copy the marker of the one beside them, and the space between items is what it is between the others.
 */
export function* childSplices(source: string, place: Place, change: Replacement, pool: Pool): Generator<Splice> {
  const container = place.node;
  const count = container.childCount - (change.to - change.from) + change.nodes.length;
  const isWritable = container.type !== nodes.letter_list && container.type !== nodes.table_row;
  if (!isWritable || count === 0 || place.piece.children.some((child) => child.isMissing)) return;
  if (container.type === nodes.table && change.from === 0) return;
  if (change.nodes.length === 0) {
    yield removal(source, place, change);
    return;
  }
  const prefix = linePrefix(source, place);
  for (const texts of childTexts(source, place, change, pool, prefix)) {
    for (const gap of gaps(source, place, change, prefix)) yield placed(place, change, texts.join(gap), gap);
  }
}

function removal(source: string, place: Place, { from, to }: Replacement): Splice {
  if (from > 0) return { from: endOf(childPlace(place, from - 1)), to: endOf(childPlace(place, to - 1)), text: '' };
  const next = childPlace(place, to).start;
  const start = childPlace(place, 0).start;
  if (place.node.attrs.kind !== 'ordered') return { from: start, to: next, text: '' };
  // The next item is the first now, and says where the numbers start.
  const digits = /^\d*/.exec(source.slice(next, next + 10))![0].length;
  return { from: start, to: next + digits, text: String(place.node.attrs.start) };
}

function placed(place: Place, { from, to }: Replacement, text: string, gap: string): Splice {
  const children = place.node.childCount;
  if (to > from) return { from: childPlace(place, from).start, to: endOf(childPlace(place, to - 1)), text };
  if (from > 0 || children === 0) {
    const at = endOf(childPlace(place, from - 1));
    return { from: at, to: at, text: gap + text };
  }
  const at = childPlace(place, 0).start;
  return { from: at, to: at, text: text + gap };
}

/** What may stand between the children: what stands between those nearby, else what suits the container. */
function gaps(source: string, place: Place, replaced: Replacement, prefix: string): Set<string> {
  const { from, to } = replaced;
  const close = `\n${prefix}`;
  const apart = `\n${prefix.trimEnd()}\n${prefix}`;
  const isClose = place.node.type === nodes.list || place.node.type === nodes.table || isSublist(place, replaced);
  const usual = isClose ? [close, apart] : [apart, close];
  if (place.node.type !== nodes.list) return new Set(usual);
  const between = (index: number) => {
    if (index < 1 || index >= place.node.childCount) return [];
    const gap = source.slice(endOf(childPlace(place, index - 1)), childPlace(place, index).start);
    return gap.includes('\n') ? [gap] : [];
  };
  return new Set([from, to, from - 1, to + 1].flatMap(between).concat(usual));
}

/** Lists below the text of an item. */
const isSublist = ({ node }: Place, { from, nodes: next }: Replacement) =>
  node.type === nodes.list_item && from > 0 && next.every((one) => one.type === nodes.list);

function* childTexts(
  source: string,
  place: Place,
  change: Replacement,
  pool: Pool,
  prefix: string,
): Generator<string[]> {
  for (const known of [pool.parts, pool.whole, undefined]) {
    if (place.node.type === nodes.list) yield itemTexts(source, place, change, prefix, known);
    else if (place.node.type === nodes.table) yield change.nodes.map((row) => rowText(place.node, row, known));
    else yield change.nodes.map((node) => indentLines(writeBlock(node, {}, known), prefix));
  }
}

type Known = ((node: Node) => string | null) | undefined;

/** A table row, written below the header and without it. */
function rowText(table: Node, row: Node, known: Known): string {
  const small = nodes.table.create(null, [table.firstChild!, row]);
  return writeBlock(small, {}, known).split('\n')[2] ?? '';
}

/** The item whose marker a new one copies. */
const modelIndex = ({ from, to }: Replacement): number => (to > from ? from : Math.max(0, from - 1));

/** Whether all items of a list have the same number, as far as its first two and the one at `index` tell. */
function isNumberedAlike(source: string, place: Place, index: number): boolean {
  if (place.node.childCount < 2) return false;
  const numbers = [0, 1, index].map((one) => Number.parseInt(source.slice(childPlace(place, one).start, childPlace(place, one).start + 10), 10));
  return numbers.every((number) => number === numbers[0]);
}

function itemTexts(source: string, place: Place, change: Replacement, prefix: string, known: Known): string[] {
  const index = modelIndex(change);
  const sibling = childPlace(place, index);
  const line = source.slice(sibling.start, endOf(sibling)).split('\n', 1)[0]!;
  const { marker, blanks } = readItemMarker(line);
  const number = Number.parseInt(marker, 10);
  const step = isNumberedAlike(source, place, index) ? 0 : 1;
  const first = change.from === change.to && change.from > 0 ? number + step : number;
  return change.nodes.map((item, position) => {
    const own = Number.isNaN(number) ? marker : `${first + step * position}${marker.at(-1)}`;
    return indentLines(itemText(place.node, item, own, blanks, known), prefix);
  });
}

/** An item with the given marker, its further lines indented to match. */
function itemText(list: Node, item: Node, marker: string, blanks: string, known: Known): string {
  const isOrdered = list.attrs.kind === 'ordered';
  const style: Partial<Style> = isOrdered
    ? { bulletOrdered: marker.at(-1) as Style['bulletOrdered'] }
    : { bullet: marker as Style['bullet'] };
  const start = isOrdered ? Number.parseInt(marker, 10) : 1;
  const text = writeBlock(nodes.list.create({ ...list.attrs, start }, item), style, known);
  const written = readItemMarker(text.split('\n', 1)[0]!);
  const rest = text.slice(written.marker.length).replace(/^ /, '');
  const more = blanks.length - 1;
  return (marker + blanks + indentLines(rest, ' '.repeat(more))).trimEnd();
}
