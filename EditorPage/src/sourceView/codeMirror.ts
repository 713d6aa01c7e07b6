/** The field for the note's source. A file of its own in the built page: it is loaded when the source is first asked for. */
import { defaultKeymap, history, historyKeymap, indentWithTab, redo, redoDepth, undo, undoDepth } from '@codemirror/commands';
import { markdown, markdownKeymap, markdownLanguage } from '@codemirror/lang-markdown';
import { HighlightStyle, syntaxHighlighting } from '@codemirror/language';
import { Compartment, EditorSelection, EditorState, StateEffect, StateField, Transaction, type ChangeSet, type Extension } from '@codemirror/state';
import { Decoration, EditorView, keymap, type DecorationSet } from '@codemirror/view';
import { tags } from '@lezer/highlight';

export interface SourceFieldOptions {
  root: ShadowRoot;
  text: string;
  caret: number;
  /** What was changed at once, in ascending order, in offsets of the text before. */
  changed(changes: readonly { from: number; to: number; insert: string }[]): void;
  /** Undo where this field's own history ends; likewise redo. */
  beyond(direction: 'undo' | 'redo'): void;
}

/** Places in the source that were found; `current` is an index or -1. */
export interface Places {
  ranges: readonly { from: number; to: number }[];
  current: number;
}

const setPlaces = StateEffect.define<Places>();
/** So many places on either side of the current one are drawn. */
const DRAWN_PLACES = 1_000;

const places = StateField.define<DecorationSet>({
  create: () => Decoration.none,
  update(drawn, tr) {
    let next = drawn.map(tr.changes);
    for (const effect of tr.effects) if (effect.is(setPlaces)) next = draw(effect.value);
    return next;
  },
  provide: (field) => EditorView.decorations.from(field),
});

function draw({ ranges, current }: Places): DecorationSet {
  const first = Math.max(0, current - DRAWN_PLACES);
  const near = ranges.slice(first, first + 2 * DRAWN_PLACES + 1).filter(({ from, to }) => to > from);
  return Decoration.set(near.map((range) => {
    const isCurrent = range === ranges[current];
    return Decoration.mark({ class: isCurrent ? 'find-match find-current' : 'find-match' }).range(range.from, range.to);
  }));
}

const style = HighlightStyle.define([
  { tag: tags.heading, fontWeight: '650' },
  { tag: tags.strong, fontWeight: '650' },
  { tag: tags.emphasis, fontStyle: 'italic' },
  { tag: tags.strikethrough, textDecoration: 'line-through' },
  { tag: [tags.link, tags.url], color: 'var(--accent)' },
  { tag: [tags.monospace, tags.quote], color: 'var(--muted)' },
  { tag: [tags.processingInstruction, tags.contentSeparator, tags.comment, tags.meta], color: 'var(--faint-text)' },
]);

const look = EditorView.theme({
  '&': { height: '100vh', color: 'var(--text)', backgroundColor: 'var(--paper)' },
  '&.cm-focused': { outline: 'none' },
  '.cm-scroller': {
    fontFamily: 'var(--mono-font)',
    fontSize: 'calc(var(--body-size) * var(--scale) * 0.92)',
    lineHeight: '1.55',
    overflow: 'auto',
  },
  '.cm-content': { boxSizing: 'border-box', width: '100%', maxWidth: '52em', margin: '0 auto', padding: '44px 32px 40vh', caretColor: 'var(--accent)' },
  '.cm-line': { padding: '0' },
  '.cm-content ::selection, .cm-line::selection': { backgroundColor: 'var(--selection)' },
  '.find-match': { borderRadius: '2px', backgroundColor: 'var(--found)' },
  '.find-current': { backgroundColor: 'var(--found-current)', outline: '1px solid var(--found-line)' },
});

function changesIn(changes: ChangeSet): { from: number; to: number; insert: string }[] {
  const found: { from: number; to: number; insert: string }[] = [];
  changes.iterChanges((from, to, _fromAfter, _toAfter, inserted) => void found.push({ from, to, insert: inserted.toString() }));
  return found;
}

/** The field: a plain text editor that the rest of the page need know nothing about. */
export class SourceField {
  readonly view: EditorView;
  #options: SourceFieldOptions;
  #history = new Compartment();

  constructor(options: SourceFieldOptions) {
    this.#options = options;
    const { root, text, caret } = options;
    this.view = new EditorView({ root, parent: root, state: EditorState.create({ doc: text, selection: { anchor: Math.min(caret, text.length) }, extensions: this.#extensions() }) });
  }

  get text(): string {
    return this.view.state.doc.toString();
  }

  get caret(): number {
    return this.view.state.selection.main.head;
  }

  get selection(): { from: number; to: number } {
    const { from, to } = this.view.state.selection.main;
    return { from, to };
  }

  /** Selects a stretch and brings it into sight. */
  select(from: number, to = from): void {
    this.view.dispatch({ selection: EditorSelection.single(from, to), effects: EditorView.scrollIntoView(from, { y: 'center' }) });
  }

  /** Puts a text in place of what is selected, as one step. */
  insert(text: string): void {
    this.view.dispatch(this.view.state.replaceSelection(text), { scrollIntoView: true, userEvent: 'input.paste' });
  }

  /** Changes several stretches at once, as one step. */
  change(changes: readonly { from: number; to: number; insert: string }[]): void {
    this.view.dispatch({ changes: [...changes], userEvent: 'input.replace' });
  }

  /** Shows another text. The one that is shown already changes nothing; what can be undone begins anew. */
  show(text: string, caret: number): void {
    if (text !== this.text) {
      this.view.dispatch({ changes: { from: 0, to: this.view.state.doc.length, insert: text }, annotations: [Transaction.addToHistory.of(false), Transaction.remote.of(true)] });
    }
    this.view.dispatch({ effects: this.#history.reconfigure([]) });
    this.view.dispatch({ effects: this.#history.reconfigure(history()) });
    this.select(Math.min(caret, text.length));
  }

  undo(): void {
    if (undoDepth(this.view.state) > 0) undo(this.view);
    else this.#options.beyond('undo');
  }

  redo(): void {
    if (redoDepth(this.view.state) > 0) redo(this.view);
    else this.#options.beyond('redo');
  }

  mark(found: Places): void {
    this.view.dispatch({ effects: setPlaces.of(found) });
  }

  destroy(): void {
    this.view.destroy();
  }

  #extensions(): Extension {
    const step = (run: () => void) => () => (run(), true);
    return [
      this.#history.of(history()),
      markdown({ base: markdownLanguage, addKeymap: false }),
      syntaxHighlighting(style),
      look,
      places,
      EditorView.lineWrapping,
      EditorState.tabSize.of(4),
      EditorView.contentAttributes.of({ 'aria-label': 'Notens källtext', spellcheck: 'true', lang: 'sv', autocorrect: 'off', translate: 'no' }),
      keymap.of([
        { key: 'Mod-z', run: step(() => this.undo()), preventDefault: true },
        { key: 'Mod-y', run: step(() => this.redo()), preventDefault: true },
        { key: 'Mod-Shift-z', run: step(() => this.redo()), preventDefault: true },
      ]),
      keymap.of([...markdownKeymap, ...defaultKeymap, ...historyKeymap, indentWithTab]),
      EditorView.updateListener.of((update) => {
        const isRemote = update.transactions.some((tr) => tr.annotation(Transaction.remote));
        if (update.docChanged && !isRemote) this.#options.changed(changesIn(update.changes));
      }),
    ];
  }
}
