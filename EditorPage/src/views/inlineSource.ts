/** Inline nodes with a drawing and a source: a field for the source opens in the line while one is edited. */
import { closeHistory } from 'prosemirror-history';
import type { Attrs, Node } from 'prosemirror-model';
import { NodeSelection, Plugin, Selection } from 'prosemirror-state';
import type { EditorView, NodeView, NodeViewConstructor } from 'prosemirror-view';

/** What a kind of inline node looks like and how its source is read and changed. */
export interface InlineKind {
  className: string;
  /** The name of the field for the source. */
  label: string;
  read(node: Node): string;
  /** The attributes that say `source`; null when it says nothing, and the node goes. */
  write(source: string): Attrs | null;
  /** Fills `place`; throws when the source cannot be drawn. Calls `redraw` when it can be drawn better. */
  draw(place: HTMLElement, source: string, node: Node, redraw: () => void): void;
}

/** Asks the node under the caret to open its field. */
const OPEN_SOURCE = 'open-source';

class InlineSource implements NodeView {
  readonly dom = document.createElement('span');
  #drawing = document.createElement('span');
  #field: HTMLInputElement | null = null;

  constructor(
    private node: Node,
    private view: EditorView,
    private getPos: () => number | undefined,
    private kind: InlineKind,
  ) {
    this.dom.className = kind.className;
    this.dom.append(this.#drawing);
    this.dom.addEventListener('dblclick', () => this.open());
    this.dom.addEventListener(OPEN_SOURCE, () => this.open());
    this.#redraw();
  }

  update(node: Node): boolean {
    if (node.type !== this.node.type) return false;
    const isSame = node.eq(this.node);
    this.node = node;
    if (!isSame) this.#redraw();
    return true;
  }

  stopEvent(): boolean {
    return this.#field !== null;
  }

  ignoreMutation(): boolean {
    return true;
  }

  deselectNode(): void {
    this.dom.classList.remove('ProseMirror-selectednode');
  }

  selectNode(): void {
    this.dom.classList.add('ProseMirror-selectednode');
  }

  destroy(): void {
    this.#field = null;
  }

  /** Opens the field for the source. */
  open(): void {
    if (this.#field !== null) return;
    const field = document.createElement('input');
    field.className = 'inline-field';
    field.setAttribute('aria-label', this.kind.label);
    field.spellcheck = false;
    field.value = this.kind.read(this.node);
    field.size = fieldSize(field);
    // Every letter counts at once: the note may be left at any moment.
    field.addEventListener('input', () => this.#take(field));
    field.addEventListener('keydown', (event) => this.#key(event));
    field.addEventListener('blur', () => this.#close());
    this.#field = field;
    this.#drawing.hidden = true;
    this.dom.append(field);
    field.focus();
    field.select();
  }

  #key(event: KeyboardEvent): void {
    if (event.isComposing || (event.key !== 'Enter' && event.key !== 'Escape')) return;
    event.preventDefault();
    this.#close();
    this.view.focus();
  }

  #take(field: HTMLInputElement): void {
    field.size = fieldSize(field);
    const pos = this.getPos();
    const attrs = field.value.trim() === '' ? null : this.kind.write(field.value);
    if (pos === undefined || attrs === null) return;
    this.view.dispatch(this.view.state.tr.setNodeMarkup(pos, undefined, { ...this.node.attrs, ...attrs }));
  }

  /** Closes the field, with the caret after the node. A node whose source was emptied goes. */
  #close(): void {
    const field = this.#field;
    const pos = this.getPos();
    if (field === null) return;
    this.#field = null;
    field.remove();
    this.#drawing.hidden = false;
    if (pos === undefined) return;
    const isEmpty = field.value.trim() === '';
    const tr = this.view.state.tr;
    if (isEmpty) tr.delete(pos, pos + 1);
    const after = Math.min(isEmpty ? pos : pos + 1, tr.doc.content.size);
    this.view.dispatch(closeHistory(tr.setSelection(Selection.near(tr.doc.resolve(after)))));
  }

  #redraw(): void {
    const source = this.kind.read(this.node);
    this.#drawing.replaceChildren();
    this.dom.classList.remove('failed');
    try {
      this.kind.draw(this.#drawing, source, this.node, () => this.#redraw());
    } catch {
      this.dom.classList.add('failed');
      this.#drawing.textContent = source;
    }
  }
}

function fieldSize(field: HTMLInputElement): number {
  return Math.max(4, field.value.length + 1);
}

/** The node view of an inline kind. Double click, or Enter with the node selected, opens the source. */
export function inlineSource(kind: InlineKind): NodeViewConstructor {
  return (node, view, getPos) => new InlineSource(node, view, getPos, kind);
}

/** Lets Enter open the field of the selected node. */
export function inlineSourceKeys(): Plugin {
  return new Plugin({
    props: {
      handleKeyDown: (view, event) => {
        const { selection } = view.state;
        const isPlain = !event.altKey && !event.ctrlKey && !event.metaKey && !event.shiftKey;
        if (event.key !== 'Enter' || !isPlain || !(selection instanceof NodeSelection) || !selection.node.isInline) return false;
        view.nodeDOM(selection.from)?.dispatchEvent(new Event(OPEN_SOURCE));
        return true;
      },
    },
  });
}
