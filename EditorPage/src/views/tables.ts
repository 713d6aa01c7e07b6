/** Tables, in a frame of their own that scrolls when they are wider than the column. */
import type { Node } from 'prosemirror-model';
import type { NodeView, NodeViewConstructor } from 'prosemirror-view';

class Table implements NodeView {
  readonly dom = document.createElement('div');
  readonly contentDOM: HTMLElement;

  constructor(private node: Node) {
    this.dom.className = 'table-frame';
    this.contentDOM = this.dom.appendChild(document.createElement('table')).appendChild(document.createElement('tbody'));
  }

  update(node: Node): boolean {
    if (node.type !== this.node.type) return false;
    this.node = node;
    return true;
  }

  ignoreMutation(mutation: { target: globalThis.Node; type: string }): boolean {
    return mutation.type === 'attributes' && !this.contentDOM.contains(mutation.target);
  }
}

export const tableView: NodeViewConstructor = (node) => new Table(node);

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
