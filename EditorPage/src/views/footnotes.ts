/** Footnotes where they are written out: their label beside their text. */
import type { NodeViewConstructor } from 'prosemirror-view';

export const footnoteView: NodeViewConstructor = (first) => {
  const dom = document.createElement('div');
  const label = dom.appendChild(document.createElement('span'));
  const body = dom.appendChild(document.createElement('div'));
  dom.className = 'footnote';
  label.className = 'footnote-label';
  label.contentEditable = 'false';
  label.textContent = first.attrs.label as string;
  body.className = 'footnote-body';
  return {
    dom,
    contentDOM: body,
    update: (node) => {
      if (node.type !== first.type) return false;
      label.textContent = node.attrs.label as string;
      return true;
    },
    ignoreMutation: (mutation) => label.contains(mutation.target),
  };
};
