/** Typing over a selection that reaches over blocks which do not join: all of it goes where the selection begins. */
import { Plugin, Selection, TextSelection } from 'prosemirror-state';

export function typingOver(): Plugin {
  return new Plugin({
    props: {
      handleTextInput: (view, _from, _to, text) => {
        const { selection } = view.state;
        if (!(selection instanceof TextSelection) || selection.$from.sameParent(selection.$to)) return false;
        const tr = view.state.tr.deleteSelection();
        tr.setSelection(Selection.near(tr.doc.resolve(Math.min(selection.from, tr.doc.content.size)), 1));
        view.dispatch(tr.insertText(text).scrollIntoView());
        return true;
      },
    },
  });
}
