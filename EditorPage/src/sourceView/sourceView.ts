/** The note's source in place of the note as it is shown: the same text, the same caret, the same history. */
import { post } from '../bridge';
import type { NoteEditor } from '../editor';
import type { SourceField } from './codeMirror';
import { ShownText } from './shownText';
import { SourceTarget } from './sourceTarget';

/** What the page does when the source comes and goes, or is edited. */
export interface SourceViewEvents {
  opened(target: SourceTarget): void;
  closed(): void;
  edited(): void;
}

export class SourceView {
  #holder = document.createElement('div');
  #open: { field: SourceField; text: ShownText; target: SourceTarget } | null = null;
  #isOpening = false;
  #isPostDue = false;

  constructor(
    private editor: NoteEditor,
    private root: HTMLElement,
    private events: SourceViewEvents,
  ) {
    this.#holder.className = 'source-view';
    this.#holder.attachShadow({ mode: 'open' });
  }

  get isOpen(): boolean {
    return this.#open !== null;
  }

  /** Opens the source, or goes back to the note as it is shown. */
  async toggle(): Promise<void> {
    if (this.#open) this.#close();
    else if (!this.#isOpening) await this.#show();
  }

  /** Brings the note in step with the source, so that others can work on it. */
  settle(): void {
    if (!this.#open) return;
    const { field, text } = this.#open;
    this.#postNow();
    this.editor.rewrite(text.text);
    this.editor.caret = field.caret;
  }

  /** Shows what the note has become. */
  reload(): void {
    if (!this.#open) return;
    const { field, target } = this.#open;
    const text = new ShownText(this.editor.text);
    this.#open.text = text;
    field.show(text.shown, this.editor.caret);
    target.refresh();
    this.events.edited();
  }

  /** Undo and redo, first in what was typed here, then in the note's history. */
  undo(): void {
    this.#open?.field.undo();
  }

  redo(): void {
    this.#open?.field.redo();
  }

  focus(): void {
    this.#open?.field.view.focus();
  }

  async #show(): Promise<void> {
    this.#isOpening = true;
    try {
      const { SourceField } = await import('./codeMirror.js');
      const text = new ShownText(this.editor.text);
      this.root.append(this.#holder);
      const caret = this.editor.caret;
      const field = new SourceField({
        root: this.#holder.shadowRoot!,
        text: text.shown,
        caret,
        changed: (shown) => this.#changed(shown),
        beyond: (direction) => this.#beyond(direction),
      });
      const target = new SourceTarget(field);
      this.#open = { field, text, target };
      this.editor.isHidden = true;
      field.select(caret);
      field.view.focus();
      this.events.opened(target);
    } finally {
      this.#isOpening = false;
    }
  }

  #close(): void {
    const { field } = this.#open!;
    this.settle();
    this.#open = null;
    field.destroy();
    this.#holder.remove();
    this.editor.isHidden = false;
    this.editor.focus();
    this.editor.showCaret();
    this.events.closed();
  }

  #changed(shown: string): void {
    const { text, target } = this.#open!;
    text.edit(shown);
    target.refresh();
    this.events.edited();
    if (this.#isPostDue) return;
    this.#isPostDue = true;
    queueMicrotask(() => this.#postNow());
  }

  #postNow(): void {
    if (!this.#isPostDue || !this.#open) return;
    this.#isPostDue = false;
    post('changed', this.#open.text.text);
  }

  #beyond(direction: 'undo' | 'redo'): void {
    this.settle();
    this.editor.exec(direction);
    this.reload();
    this.focus();
  }
}
