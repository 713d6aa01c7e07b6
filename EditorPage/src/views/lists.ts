/** List items; those of tasks have a box that checks and unchecks them. */
import { closeHistory } from 'prosemirror-history';
import type { Node } from 'prosemirror-model';
import type { EditorView, NodeView, NodeViewConstructor } from 'prosemirror-view';

class TaskItem implements NodeView {
  readonly dom = document.createElement('li');
  readonly contentDOM = document.createElement('div');
  #box = document.createElement('input');

  constructor(
    private node: Node,
    private view: EditorView,
    private getPos: () => number | undefined,
  ) {
    this.dom.className = 'task';
    this.contentDOM.className = 'item-body';
    this.#box.type = 'checkbox';
    this.#box.className = 'task-box';
    this.#box.contentEditable = 'false';
    this.#box.setAttribute('aria-label', 'Klar');
    // The caret stays where it is.
    this.#box.addEventListener('mousedown', (event) => event.preventDefault());
    this.#box.addEventListener('change', () => this.#check(this.#box.checked));
    this.dom.append(this.#box, this.contentDOM);
    this.#show();
  }

  update(node: Node): boolean {
    if (node.type !== this.node.type || node.attrs.checked === null) return false;
    this.node = node;
    this.#show();
    return true;
  }

  stopEvent(event: Event): boolean {
    return event.target === this.#box;
  }

  ignoreMutation(mutation: { target: globalThis.Node }): boolean {
    return mutation.target === this.#box;
  }

  #show(): void {
    const isDone = this.node.attrs.checked === true;
    this.#box.checked = isDone;
    this.dom.classList.toggle('done', isDone);
  }

  #check(checked: boolean): void {
    const pos = this.getPos();
    if (pos === undefined) return;
    this.view.dispatch(closeHistory(this.view.state.tr.setNodeMarkup(pos, undefined, { ...this.node.attrs, checked })));
  }
}

const plainItem: NodeViewConstructor = (first) => {
  const dom = document.createElement('li');
  return { dom, contentDOM: dom, update: (node) => node.type === first.type && node.attrs.checked === null };
};

export const listItemView: NodeViewConstructor = (node, view, getPos, ...more) =>
  node.attrs.checked === null ? plainItem(node, view, getPos, ...more) : new TaskItem(node, view, getPos);
