import { Fragment, type Mark, type Node } from 'prosemirror-model';
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

const isDelimited = ({ type }: Mark): boolean => delimited.includes(type);

const lengthOf = (pattern: RegExp, node: Node | null | undefined): number => pattern.exec(node?.text ?? '')?.[0].length ?? 0;

/** The text block with other marks on the text from `from` to `to`. */
function remarked(block: Node, from: number, to: number, marks: (set: readonly Mark[]) => readonly Mark[]): Node {
  const { content } = block;
  const stretch = content.cut(from, to).content.map((node) => node.mark(marks(node.marks)));
  return tidy(block.copy(content.cut(0, from).append(Fragment.fromArray(stretch)).append(content.cut(to))));
}
