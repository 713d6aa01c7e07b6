import type { Fragment, Mark, Node } from 'prosemirror-model';
import { writeInline } from '../markdown/write';
import { schema } from '../schema';
import type { Block } from './entries';
import { isSame } from './normal';
import { sourceOffsets } from './patch';
import { childPlace, dedentLines, endOf, linePrefix, rootPlace, type Place } from './place';

const { nodes } = schema;

/** A block of the text before an edit, with its source free of the markers around it. */
interface Donor {
  node: Node;
  place: Place;
  source: string;
  prefix: string;
}

/** Half-matching text blocks are searched only among so many. */
const partLimit = 6;

/**
 * The sources of all blocks that an edit touched. New blocks take theirs from here where they can: whole ones that
 * were moved, and the parts of text blocks that were split or joined.
 */
export class Pool {
  private donors: Map<string, Donor[]> | null = null;
  private textDonors: Donor[] = [];

  constructor(private readonly blocks: readonly Block[]) {}

  /** The source of a node that the text before the edit has in the same form. */
  readonly whole = (node: Node): string | null => {
    if (nodes.table_row === node.type || nodes.list_item === node.type || nodes.letter_item === node.type) return null;
    for (const donor of this.all().get(keyOf(node)) ?? []) {
      if (!isSame(donor.node, node)) continue;
      const source = isCell(node) ? cellSource(donor) : sliceOf(donor);
      if (source !== null) return source;
    }
    return null;
  };

  /** The same, and for text blocks also the parts that older ones begin or end with. */
  readonly parts = (node: Node): string | null => this.whole(node) ?? this.composed(node);

  private all(): Map<string, Donor[]> {
    if (!this.donors) {
      this.donors = new Map();
      for (const block of this.blocks) this.add(block.source, rootPlace(block), '');
    }
    return this.donors;
  }

  private add(source: string, place: Place, prefix: string) {
    const { node } = place;
    if (place.piece.isMissing) return;
    const donor = { node, place, source, prefix };
    const key = keyOf(node);
    const same = this.donors!.get(key);
    if (same) same.push(donor);
    else this.donors!.set(key, [donor]);
    if (node.isTextblock) {
      if (!node.type.spec.code) this.textDonors.push(donor);
      return;
    }
    const inner = linePrefix(source, place);
    for (let index = 0; index < node.childCount; index += 1) this.add(source, childPlace(place, index), inner);
  }

  /** A paragraph from the beginning of one text block and the end of another, with new content between. */
  private composed(node: Node): string | null {
    const isInline = node.type === nodes.paragraph || isCell(node);
    if (!isInline || node.content.size === 0) return null;
    this.all();
    const count = this.textDonors.length;
    const near =
      count <= partLimit
        ? this.textDonors
        : [...this.textDonors.slice(0, partLimit / 2), ...this.textDonors.slice(-partLimit / 2)];
    const usable = near.filter((donor) => donor.prefix === '' || !sliceText(donor).includes('\n'));

    const head = best(usable, (donor) =>
      settled(donor, donor.node.content.findDiffStart(node.content) ?? node.content.size),
    );
    const rest = node.content.cut(head?.length ?? 0);
    const tail = best(usable, (donor) => commonEnd(donor, rest));
    if (!head && !tail) return null;

    const middle = rest.cut(0, rest.size - (tail?.length ?? 0));
    const before = head ? contentSource(head.donor, 0, head.length) : '';
    const after = tail ? contentSource(tail.donor, tail.donor.node.content.size - tail.length, null) : '';
    if (before === null || after === null) return null;
    const around = { before: before.at(-1) ?? '\n', after: after[0] ?? '\n', isCell: isCell(node) };
    return before + (middle.size > 0 ? writeInline(middle, around) : '') + after;
  }
}

const keyOf = (node: Node) => `${node.type.name} ${node.nodeSize}`;

const isCell = (node: Node) => node.type === nodes.table_cell || node.type === nodes.table_header;

const sliceText = ({ source, place }: Donor) => source.slice(place.start, endOf(place));

function sliceOf(donor: Donor): string | null {
  return dedentLines(sliceText(donor), donor.prefix);
}

function cellSource({ source, place }: Donor): string {
  return source.slice(place.start + place.piece.inner[0], place.start + place.piece.inner[1]);
}

interface Part {
  donor: Donor;
  length: number;
}

function best(donors: readonly Donor[], measure: (donor: Donor) => number): Part | null {
  let found: Part | null = null;
  for (const donor of donors) {
    const length = measure(donor);
    if (length > (found?.length ?? 0)) found = { donor, length };
  }
  return found;
}

function commonEnd(donor: Donor, content: Fragment): number {
  const { content: own } = donor.node;
  const ends = own.findDiffEnd(content);
  const length = ends ? own.size - ends.a : own.size;
  const limited = Math.min(length, content.size);
  return own.size - settled(donor, own.size - limited, 1);
}

function marksAt(content: Node, at: number): [readonly Mark[], readonly Mark[]] {
  const none: readonly Mark[] = [];
  const before = at > 0 ? (content.childBefore(at).node?.marks ?? none) : none;
  const after = at < content.content.size ? (content.childAfter(at).node?.marks ?? none) : none;
  return [before, after];
}

/** The nearest offset where no mark reaches over, so that the source can be cut there. */
function settled(donor: Donor, at: number, step: 1 | -1 = -1): number {
  const isOpen = (offset: number) => {
    const [before, after] = marksAt(donor.node, offset);
    return before.some((mark) => mark.isInSet(after));
  };
  while (at > 0 && at < donor.node.content.size && isOpen(at)) at += step;
  return at;
}

/** The source of a text block's content from one offset to another, or to its end. */
function contentSource(donor: Donor, from: number, to: number | null): string | null {
  const { piece, start } = donor.place;
  const size = donor.node.content.size;
  const cut = (at: number) => {
    if (at === 0) return piece.inner[0];
    if (at === size) return piece.inner[1];
    const offsets = sourceOffsets(piece, at, size);
    const [before, after] = marksAt(donor.node, at);
    return before.length > after.length ? offsets.at(-1) : offsets[0];
  };
  const begin = cut(from);
  const end = to === null ? piece.inner[1] : cut(to);
  return begin === undefined || end === undefined ? null : donor.source.slice(start + begin, start + end);
}
