/** Tables, in a frame of their own that scrolls when they are wider than the column. */
import type { Node } from 'prosemirror-model';
import type { NodeViewConstructor } from 'prosemirror-view';

export const tableView: NodeViewConstructor = (first) => {
  const dom = document.createElement('div');
  dom.className = 'table-frame';
  const body = dom.appendChild(document.createElement('table')).appendChild(document.createElement('tbody'));
  return { dom, contentDOM: body, update: (node) => node.type === first.type };
};

/** A cell; its column's alignment is data that the style sheet reads. */
function cellView(tag: 'td' | 'th'): NodeViewConstructor {
  return (first) => {
    const dom = document.createElement(tag);
    const show = (node: Node): void => {
      if (node.attrs.align === null) delete dom.dataset['align'];
      else dom.dataset['align'] = node.attrs.align as string;
    };
    show(first);
    return {
      dom,
      contentDOM: dom,
      update: (node) => {
        if (node.type !== first.type) return false;
        show(node);
        return true;
      },
    };
  };
}

export const tableCellView = cellView('td');
export const tableHeaderView = cellView('th');
