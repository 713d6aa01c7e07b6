import { Fragment, type Mark, type Node } from 'prosemirror-model';
import { schema } from '../schema';
import { delimited, tidy } from './normal';
import { difference } from './patch';

/**
 * Ways to say nearly the same as `after` where Markdown cannot begin or end a mark beside some letters: words that were
 * put beside marked text get its marks; where words have come together, the punctuation at the mark's edge loses them.
 */
export function* withMovedEdges(before: Node, after: Node): Generator<Node> {
  const change = difference(before, after);
  if (!change || !change.middle.content.every((node) => node.isText)) return;
  const { from, to, middle } = change;
  const sides = [after.childAfter(from + middle.size).node, after.childBefore(from).node];
  const marks = sides.map((side) => side?.marks.filter(isDelimited) ?? []);
  if (from === to) {
    for (const one of marks) if (one.length > 0) yield remarked(after, from, from + middle.size, (set) => one.reduce((all, mark) => mark.addToSet(all), set));
  } else if (middle.size === 0) {
    const bare = (set: readonly Mark[]) => set.filter((mark) => !isDelimited(mark));
    const behind = marks[0]!.length > 0 ? lengthOf(/^[^\p{L}\p{N}\s]+/u, sides[0]) : 0;
    const front = marks[1]!.length > 0 ? lengthOf(/[^\p{L}\p{N}\s]+$/u, sides[1]) : 0;
    if (behind > 0) yield remarked(after, from, from + behind, bare);
    if (front > 0) yield remarked(after, from - front, from, bare);
  }
}

/** The block without marks on blanks at the ends of marked words in what has changed, and right beside that: nobody sees them there. */
export function* withBareBlanks(before: Node, after: Node): Generator<Node> {
  const change = difference(before, after);
  if (!change) return;
  const first = change.from - 1;
  const last = change.from + change.middle.size + 1;
  for (const sides of [[0], [2], [0, 2]]) {
    const parts: Node[] = [];
    after.forEach((child, offset) => {
      const isNear = offset + child.nodeSize > first && offset < last;
      const isMarked = child.isText && child.marks.some(isDelimited);
      parts.push(...(isNear && isMarked ? withBareEnds(child, sides) : [child]));
    });
    const next = tidy(after.copy(Fragment.fromArray(parts)));
    if (!next.eq(tidy(after))) yield next;
  }
}

/** A marked text whose blanks at the start (0) or at the end (2) have no marks. */
function withBareEnds(text: Node, sides: readonly number[]): Node[] {
  const bare = text.marks.filter((mark) => !isDelimited(mark));
  const parts = /^(\s*)(.*?)(\s*)$/s.exec(text.text!)!.slice(1);
  return parts.flatMap((part, side) => (part === '' ? [] : [schema.text(part, sides.includes(side) ? bare : text.marks)]));
}

const isDelimited = ({ type }: Mark): boolean => delimited.includes(type);

const lengthOf = (pattern: RegExp, node: Node | null | undefined): number => pattern.exec(node?.text ?? '')?.[0].length ?? 0;

/** The text block with other marks on the text from `from` to `to`. */
function remarked(block: Node, from: number, to: number, marks: (set: readonly Mark[]) => readonly Mark[]): Node {
  const { content } = block;
  const stretch = content.cut(from, to).content.map((node) => node.mark(marks(node.marks)));
  return tidy(block.copy(content.cut(0, from).append(Fragment.fromArray(stretch)).append(content.cut(to))));
}
