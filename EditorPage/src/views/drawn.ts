/** Blocks that show a drawing of their source: the drawing always, the source while the caret is in it. */
import type { Node } from 'prosemirror-model';
import { Plugin, Selection, TextSelection, type EditorState } from 'prosemirror-state';
import { Decoration, DecorationSet, type EditorView, type NodeView, type NodeViewConstructor } from 'prosemirror-view';
import { ancestorOf } from '../commands/selection';
import { schema } from '../schema';
import { calloutOf } from '../syntax/callout';
import type { NoteContext } from './context';
import { followLink } from './links';

const { nodes } = schema;

/** The kinds of block whose source is hidden while the caret is elsewhere. */
const DRAWN = new Set([nodes.html_block, nodes.math_block, nodes.front_matter]);

/** Fills `place` with the drawing of `source`; throws when the source cannot be drawn. Calls `redraw` when it can be drawn better. */
export type Draw = (place: HTMLElement, source: string, redraw: () => void) => void;

/** What a kind of drawn block looks like. */
export interface DrawnKind {
  className: string;
  /** What stands in place of a drawing that shows nothing. */
  label: string;
  draw: Draw;
}

class DrawnBlock implements NodeView {
  readonly dom = document.createElement('div');
  readonly contentDOM: HTMLElement;
  #drawing = document.createElement('div');
  #source: string | null = null;

  constructor(
    private node: Node,
    private view: EditorView,
    private getPos: () => number | undefined,
    private kind: DrawnKind,
    context: NoteContext,
  ) {
    this.dom.className = `drawn ${kind.className}`;
    this.#drawing.className = 'drawing';
    this.#drawing.contentEditable = 'false';
    this.#drawing.addEventListener('mousedown', (event) => this.#openSource(event));
    this.#drawing.addEventListener('click', (event) => {
      if (event.target instanceof Element && event.target.closest('a')) event.preventDefault();
      followLink(event, context);
    });
    const pre = document.createElement('pre');
    this.contentDOM = pre.appendChild(document.createElement('code'));
    pre.spellcheck = false;
    this.dom.append(this.#drawing, pre);
    this.#redraw();
  }

  update(node: Node): boolean {
    if (node.type !== this.node.type) return false;
    this.node = node;
    this.#redraw();
    return true;
  }

  stopEvent(event: Event): boolean {
    return this.#isInDrawing(event.target);
  }

  ignoreMutation(mutation: { target: globalThis.Node }): boolean {
    return this.#isInDrawing(mutation.target);
  }

  #isInDrawing(target: EventTarget | null): boolean {
    return target instanceof window.Node && this.#drawing.contains(target);
  }

  #redraw(): void {
    const source = this.node.textContent;
    if (source === this.#source) return;
    this.#source = source;
    this.#draw(source);
  }

  #draw(source: string): void {
    this.#drawing.replaceChildren();
    this.#drawing.dataset['label'] = this.kind.label;
    this.dom.classList.remove('failed');
    try {
      this.kind.draw(this.#drawing, source, () => this.#draw(this.node.textContent));
    } catch (error) {
      this.dom.classList.add('failed');
      this.#drawing.textContent = source.trim() === '' ? '' : `${source}\n${error instanceof Error ? error.message : ''}`.trim();
    }
    // White space alone would hide the label of an empty drawing.
    if (this.#drawing.childElementCount === 0 && this.#drawing.textContent?.trim() === '') this.#drawing.replaceChildren();
  }

  /** A press on the drawing goes to the source, except on what can be pressed in the drawing itself. */
  #openSource(event: MouseEvent): void {
    const target = event.target as Element;
    if (event.button !== 0 || target.closest('[data-href], summary')) return;
    const pos = this.getPos();
    if (pos === undefined) return;
    event.preventDefault();
    const isOpen = this.view.state.selection.$from.parent === this.node;
    const tr = this.view.state.tr;
    const place = isOpen ? tr.doc.resolve(pos + this.node.nodeSize) : tr.doc.resolve(pos + 1);
    this.view.dispatch(tr.setSelection(TextSelection.near(place)));
    this.view.focus();
  }
}

/** The node view of a drawn kind. */
export function drawnBlock(kind: DrawnKind, context: NoteContext): NodeViewConstructor {
  return (node, view, getPos) => new DrawnBlock(node, view, getPos, kind, context);
}

/** Opens the block that holds the caret, and lets the arrow keys step into closed ones. */
export function drawnBlockPlugin(): Plugin {
  return new Plugin({
    props: {
      decorations: openBlock,
      handleKeyDown: (view, event) => stepIn(view, event),
    },
  });
}

function openBlock(state: EditorState): DecorationSet | null {
  const { $from, $to } = state.selection;
  const found = ancestorOf($from, (node) => DRAWN.has(node.type) || calloutOf(node) !== null);
  if (found === null || $from.sharedDepth($to.pos) < found.depth) return null;
  const { depth } = found;
  return DecorationSet.create(state.doc, [Decoration.node($from.before(depth), $from.after(depth), { class: 'open' })]);
}

/** Where the caret first stands in a note: in its first text, but in no block that would open for it. */
export function firstPlace(doc: Node): Selection {
  let pos = 0;
  for (const block of doc.children) {
    const opens = DRAWN.has(block.type) || calloutOf(block) !== null;
    const place = opens ? null : Selection.findFrom(doc.resolve(pos), 1, true);
    if (place !== null) return place;
    pos += block.nodeSize;
  }
  return Selection.atStart(doc);
}

/** Where writing goes on in a note: at the end of its last text. */
export function lastPlace(doc: Node): Selection {
  return Selection.findFrom(doc.resolve(doc.content.size), -1, true) ?? Selection.atEnd(doc);
}

const DIRECTIONS: Readonly<Record<string, 'up' | 'down' | 'left' | 'right'>> = {
  ArrowUp: 'up',
  ArrowDown: 'down',
  ArrowLeft: 'left',
  ArrowRight: 'right',
};

function stepIn(view: EditorView, event: KeyboardEvent): boolean {
  const direction = DIRECTIONS[event.key];
  if (!direction || event.shiftKey || event.ctrlKey || event.altKey || event.metaKey) return false;
  const { selection } = view.state;
  if (!(selection instanceof TextSelection) || !selection.empty || !view.endOfTextblock(direction)) return false;
  const forward = direction === 'down' || direction === 'right';
  const target = neighbourText(view.state, forward);
  if (target === null) return false;
  view.dispatch(view.state.tr.setSelection(target).scrollIntoView());
  return true;
}

/** The near end of the drawn block next to the caret's block, if there is one. */
function neighbourText(state: EditorState, forward: boolean): TextSelection | null {
  const { $from } = state.selection;
  if ($from.depth === 0) return null;
  const $edge = state.doc.resolve(forward ? $from.after() : $from.before());
  const neighbour = forward ? $edge.nodeAfter : $edge.nodeBefore;
  if (!neighbour || !DRAWN.has(neighbour.type)) return null;
  return TextSelection.create(state.doc, forward ? $edge.pos + 1 : $edge.pos - 1);
}
