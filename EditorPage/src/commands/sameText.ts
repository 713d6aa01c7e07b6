/** Putting other blocks around the same text. */
import { Fragment, type Node } from 'prosemirror-model';
import { TextSelection, type EditorState, type Transaction } from 'prosemirror-state';

/** Puts `node`, which holds the same blocks of text in the same order, in place of a range. The selection stays on its words. */
export function withSameText(state: EditorState, from: number, to: number, node: Node): Transaction {
  const { anchor, head } = state.selection;
  const places = textPlaces(state.doc, from, to);
  const tr = state.tr.replaceWith(from, to, Fragment.from(node));
  const now = textPlaces(tr.doc, from, from + node.nodeSize);
  const moved = (pos: number): number => {
    const index = places.findIndex(({ start, end }) => start <= pos && pos <= end);
    const place = now[index];
    return place ? place.start + pos - places[index]!.start : tr.mapping.map(pos);
  };
  return tr.setSelection(TextSelection.between(tr.doc.resolve(moved(anchor)), tr.doc.resolve(moved(head)))).scrollIntoView();
}

/** Where the content of each block of text in a range begins and ends. */
function textPlaces(doc: Node, from: number, to: number): { start: number; end: number }[] {
  const found: { start: number; end: number }[] = [];
  doc.nodesBetween(from, to, (node, pos) => {
    if (node.isTextblock) found.push({ start: pos + 1, end: pos + 1 + node.content.size });
    return !node.isTextblock;
  });
  return found;
}
