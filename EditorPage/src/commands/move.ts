/** Moving a block past its neighbour. */
import { NodeSelection, TextSelection, type Command, type EditorState } from 'prosemirror-state';
import { schema } from '../schema';

/** Moves the selected blocks, or the list item around them, one place up (-1) or down (1). */
export function moveBlock(step: -1 | 1): Command {
  return (state, dispatch) => {
    const range = movable(state);
    if (range === null) return false;
    const { parent, from, to, start, end } = range;
    const neighbour = parent.maybeChild(step < 0 ? from - 1 : to);
    if (!neighbour || neighbour.type === schema.nodes.front_matter) return false;
    if (dispatch) {
      const tr = state.tr;
      const shift = step * neighbour.nodeSize;
      // The neighbour moves, not the blocks: the selection keeps its place in them.
      if (step < 0) tr.insert(end, neighbour).delete(start - neighbour.nodeSize, start);
      else tr.delete(end, end + neighbour.nodeSize).insert(start, neighbour);
      const { selection } = state;
      const moved = (pos: number): number => pos + shift;
      if (selection instanceof NodeSelection) tr.setSelection(NodeSelection.create(tr.doc, moved(selection.from)));
      else tr.setSelection(TextSelection.between(tr.doc.resolve(moved(selection.anchor)), tr.doc.resolve(moved(selection.head))));
      dispatch(tr.scrollIntoView());
    }
    return true;
  };
}

/** The run of children that moves: items of a list, or blocks of the note or of a quote. */
function movable(state: EditorState) {
  const { $from, $to } = state.selection;
  for (let depth = $from.sharedDepth($to.pos); depth >= 0; depth--) {
    const parent = $from.node(depth);
    if (parent.inlineContent || parent.type.spec['tableRole'] !== undefined || depth > $to.depth) continue;
    const isItemsOnlyBlock = parent.childCount === 1 && depth > 0;
    if (isItemsOnlyBlock || parent.type === schema.nodes.list_item || parent.type === schema.nodes.letter_item) continue;
    const from = $from.index(depth);
    const to = Math.max($to.indexAfter(depth), from + 1);
    if (to > parent.childCount) return null;
    if (parent.maybeChild(from)?.type === schema.nodes.front_matter) return null;
    return { parent, from, to, start: $from.posAtIndex(from, depth), end: $from.posAtIndex(to, depth) };
  }
  return null;
}
