/** Colours code by its language. The colours come when nothing else is to do, so they never hold up a key. */
import type { Node } from 'prosemirror-model';
import { Plugin, PluginKey, type EditorState } from 'prosemirror-state';
import { Decoration, DecorationSet, type EditorView } from 'prosemirror-view';
import { schema } from '../schema';

/** Longer code stays in one colour. */
const LONGEST = 40_000;
/** However busy the page is, colours wait no longer than this; in milliseconds. */
const LONGEST_WAIT = 400;

type Lowlight = typeof import('./lowlight.js').lowlight;
type Tree = ReturnType<Lowlight['highlight']>;

let lowlight: Lowlight | null = null;

/** The colours that a code block was given, from the start of its text. */
type Span = readonly [from: number, to: number, className: string];

const key = new PluginKey<DecorationSet>('codeColors');

/** The plugin that keeps code coloured. */
export function codeColors(): Plugin {
  return new Plugin<DecorationSet>({
    key,
    state: {
      init: () => DecorationSet.empty,
      apply: (tr, set) => (tr.getMeta(key) as DecorationSet | undefined) ?? (tr.docChanged ? set.map(tr.mapping, tr.doc) : set),
    },
    props: { decorations: (state) => key.getState(state) },
    view: (view) => new Painter(view),
  });
}

class Painter {
  #known = new WeakMap<Node, readonly Span[]>();
  #isDue = false;
  #isGone = false;

  constructor(private view: EditorView) {
    this.#plan();
  }

  update(view: EditorView, before: EditorState): void {
    if (view.state.doc !== before.doc) this.#plan();
  }

  destroy(): void {
    this.#isGone = true;
  }

  #plan(): void {
    if (this.#isDue) return;
    this.#isDue = true;
    requestIdleCallback(() => {
      this.#isDue = false;
      this.#paint().catch(console.error);
    }, { timeout: LONGEST_WAIT });
  }

  async #paint(): Promise<void> {
    if (this.#isGone || this.view.composing) return;
    const blocks = codeIn(this.view.state.doc);
    const isNew = blocks.some(({ node }) => !this.#known.has(node));
    if (!isNew) return;
    if (lowlight === null) {
      ({ lowlight } = await import('./lowlight.js'));
      this.#plan();
      return;
    }
    const made: Decoration[] = [];
    for (const { node, pos } of blocks) {
      for (const [from, to, className] of this.#spans(node)) made.push(Decoration.inline(pos + 1 + from, pos + 1 + to, { class: className }));
    }
    const set = DecorationSet.create(this.view.state.doc, made);
    this.view.dispatch(this.view.state.tr.setMeta(key, set).setMeta('addToHistory', false));
  }

  #spans(node: Node): readonly Span[] {
    const known = this.#known.get(node);
    if (known !== undefined) return known;
    const spans = spansOf(lowlight!, node.attrs['lang'] as string, node.textContent);
    this.#known.set(node, spans);
    return spans;
  }
}

/** The code blocks that name a language, and where they stand. */
function codeIn(doc: Node): { node: Node; pos: number }[] {
  const found: { node: Node; pos: number }[] = [];
  doc.descendants((node, pos) => {
    if (node.type === schema.nodes.code_block && node.attrs['lang'] && node.content.size <= LONGEST) found.push({ node, pos });
    return !node.isTextblock && node.type !== schema.nodes.table;
  });
  return found;
}

/** The colours of `code`; none for a language that is not known. */
export function spansOf(colours: Lowlight, language: string, code: string): Span[] {
  const name = language.toLowerCase();
  return colours.registered(name) ? flattened(colours.highlight(name, code)) : [];
}

function flattened(tree: Tree): Span[] {
  const spans: Span[] = [];
  let at = 0;
  const visit = (node: Tree | Tree['children'][number], className: string): void => {
    if (node.type === 'text') {
      if (className !== '') spans.push([at, at + node.value.length, className]);
      at += node.value.length;
    } else if ('children' in node) {
      const own = node.type === 'element' ? node.properties['className'] : undefined;
      for (const child of node.children) visit(child, Array.isArray(own) ? own.join(' ') : className);
    }
  };
  visit(tree, '');
  return spans;
}
