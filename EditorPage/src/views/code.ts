/** Code blocks, with the name of their language in the corner. */
import type { Node } from 'prosemirror-model';
import type { NodeViewConstructor } from 'prosemirror-view';

export const codeBlockView: NodeViewConstructor = (first) => {
  const dom = document.createElement('div');
  const pre = dom.appendChild(document.createElement('pre'));
  const code = pre.appendChild(document.createElement('code'));
  dom.className = 'code-block';
  pre.spellcheck = false;
  // Drawn by the style sheet: an element after the code would be a place that typed text could slip into.
  const show = (node: Node): void => void (dom.dataset['language'] = (node.attrs.lang as string | null) ?? '');
  show(first);
  return {
    dom,
    contentDOM: code,
    update: (node) => {
      if (node.type !== first.type) return false;
      show(node);
      return true;
    },
  };
};
