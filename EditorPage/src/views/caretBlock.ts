/**
 * Names the top-level blocks that the selection ends in. The style sheet leaves blocks out of the layout until
 * they are drawn; a block that has just been made for the caret must not be, or the caret would lose its place.
 */
import { Plugin, type EditorState } from 'prosemirror-state';
import { Decoration, DecorationSet } from 'prosemirror-view';

/** The plugin that sets the class "caret-block". */
export function caretBlock(): Plugin {
  return new Plugin({ props: { decorations: mark } });
}

function mark({ doc, selection }: EditorState): DecorationSet {
  const starts = new Set([selection.$anchor, selection.$head].filter(({ depth }) => depth > 0).map(($end) => $end.before(1)));
  const made = [...starts].map((from) => Decoration.node(from, from + doc.nodeAt(from)!.nodeSize, { class: 'caret-block' }));
  return DecorationSet.create(doc, made);
}
