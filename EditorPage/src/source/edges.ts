import type { Fragment, Mark, Node } from 'prosemirror-model';
import { delimited, tidy } from './normal';
import { difference } from './patch';

/**
 * A text block in which words were put beside marked text, with the marks taken over the words as well: beside some
 * letters Markdown has no way to begin or end a mark. Null when nothing of the kind was put in.
 */
export function* withMovedEdges(before: Node, after: Node): Generator<Node> {
  const change = difference(before, after);
  const isInsertion = change !== null && change.from === change.to && change.middle.size > 0;
  if (!isInsertion || !change.middle.content.every((node) => node.isText)) return;
  const { from, middle } = change;
  const neighbours = [before.childAfter(from).node, before.childBefore(from).node];
  for (const neighbour of neighbours) {
    const marks = neighbour?.marks.filter(({ type }) => delimited.includes(type)) ?? [];
    if (marks.length === 0) continue;
    const { content } = after;
    yield tidy(after.copy(content.cut(0, from).append(marked(middle, marks)).append(content.cut(from + middle.size))));
  }
}

/** The content with more marks. */
function marked(content: Fragment, marks: readonly Mark[]): Fragment {
  let result = content;
  content.forEach((node, _offset, index) => {
    result = result.replaceChild(index, node.mark(marks.reduce((set, mark) => mark.addToSet(set), node.marks)));
  });
  return result;
}
