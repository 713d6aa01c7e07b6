import { Fragment, type Node } from 'prosemirror-model';
import type { Piece } from '../markdown/piece';
import { schema } from '../schema';
import type { Block } from './entries';

const { nodes } = schema;

/** A node of a block, with where it starts in the block's source. */
export interface Place {
  node: Node;
  piece: Piece;
  start: number;
}

export function rootPlace(block: Block): Place {
  return { node: block.parsed, piece: block.piece, start: block.piece.start };
}

export function childPlace(place: Place, index: number): Place {
  const piece = place.piece.children[index]!;
  return { node: place.node.child(index), piece, start: place.start + piece.start };
}

export const endOf = (place: Place) => place.start + place.piece.end - place.piece.start;

/** The places from the block itself down to the node that the indexes lead to. */
export function placesAlong(block: Block, path: readonly number[]): Place[] {
  const places = [rootPlace(block)];
  for (const index of path) places.push(childPlace(places.at(-1)!, index));
  return places;
}

/** The node at the end of a path. */
export function nodeAt(root: Node, path: readonly number[]): Node {
  return path.reduce((node, index) => node.child(index), root);
}

/** Whether there is a node at the end of a path. */
export function leadsTo(root: Node, path: readonly number[]): boolean {
  let node: Node | null = root;
  for (const index of path) node = node?.maybeChild(index) ?? null;
  return node !== null;
}

/** The root with other nodes in place of the children from `from` to `to` of the node that the path leads to. */
export function withChildren(
  root: Node,
  path: readonly number[],
  from: number,
  to: number,
  next: readonly Node[],
): Node {
  if (path.length === 0) {
    const children = [...root.children.slice(0, from), ...next, ...root.children.slice(to)];
    return root.copy(Fragment.fromArray(children));
  }
  const [index, ...rest] = path;
  const child = withChildren(root.child(index!), rest, from, to, next);
  return root.copy(root.content.replaceChild(index!, child));
}

/** The root with another node at the end of the path. */
export function withNode(root: Node, path: readonly number[], next: Node): Node {
  if (path.length === 0) return next;
  const last = path.at(-1)!;
  return withChildren(root, path.slice(0, -1), last, last + 1, [next]);
}

const itemMarker = /^([-+*]|\d{1,9}[.)])([ \t]*)/;

/** An item's marker, with the blanks after it that its other lines are indented by as well. */
export function readItemMarker(source: string): { marker: string; blanks: string } {
  const [, marker = '-', blanks = ''] = itemMarker.exec(source) ?? [];
  return { marker, blanks: /^ {1,4}$/.test(blanks) ? blanks : ' ' };
}

/** What stands in the source before each further line of a container's children. */
export function linePrefix(source: string, container: Place): string {
  const lineStart = source.lastIndexOf('\n', container.start - 1) + 1;
  const before = source.slice(lineStart, container.start).replace(/[^>\s]/g, ' ');
  switch (container.node.type) {
    case nodes.blockquote:
      return `${before}> `;
    case nodes.footnote_definition:
      return `${before}    `;
    case nodes.list_item: {
      const { marker, blanks } = readItemMarker(source.slice(container.start, endOf(container)).split('\n', 1)[0]!);
      return before + ' '.repeat(marker.length + blanks.length);
    }
    default:
      return before;
  }
}

/** Puts the prefix before every line but the first. Blank lines get no blanks at their ends. */
export function indentLines(text: string, prefix: string): string {
  if (prefix === '' || !text.includes('\n')) return text;
  return text.replace(
    /\n(.?)/g,
    (_all, next: string) => `\n${next === '' || next === '\n' ? prefix.trimEnd() : prefix}${next}`,
  );
}

/** Takes the prefix off every line but the first, as far as each line has it. Null where tabs stand in for it. */
export function dedentLines(text: string, prefix: string): string | null {
  if (prefix === '' || !text.includes('\n')) return text;
  const lines = text.split('\n');
  for (let index = 1; index < lines.length; index += 1) {
    const line = withoutPrefix(lines[index]!, prefix);
    if (line === null) return null;
    lines[index] = line;
  }
  return lines.join('\n');
}

function withoutPrefix(line: string, prefix: string): string | null {
  let at = 0;
  for (const expected of prefix) {
    if (line[at] === '\t') return null;
    if (expected === '>') {
      const marker = /^ {0,3}>/.exec(line.slice(at));
      if (!marker) break;
      at += marker[0].length;
    } else if (line[at] === ' ') {
      at += 1;
    }
  }
  return line.slice(at);
}
