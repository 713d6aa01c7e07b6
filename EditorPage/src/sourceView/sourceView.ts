/** The note's source in place of the note as it is shown: the same text, the same caret, the same history. */
import type { NoteEditor } from '../editor';
import type { TextChange } from '../source/noteText';
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
  #untold: TextChange[] = [];

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
    else if (!this.#isOpening && this.editor.view.editable) await this.#show();
  }

  /** Brings the note in step with the source, so that others can work on it. */
  settle(): void {
    if (!this.#open) return;
    const { field, text } = this.#open;
    this.#tellNow();
    this.editor.rewrite(text.text);
    this.editor.caret = field.caret;
  }

  /** Shows what the note has become. */
  reload(): void {
    if (!this.#open) return;
    if (!this.editor.view.editable) {
      this.#close();
      return;
    }
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

  /** Puts a text in place of what is selected. */
  insert(text: string): void {
    this.#open?.field.insert(text);
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
        changed: (changes) => this.#changed(changes),
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

  #changed(changes: readonly TextChange[]): void {
    const { text, target, field } = this.#open!;
    const isTellingDue = this.#untold.length > 0;
    this.#untold.push(...text.edit(changes, () => field.text));
    target.refresh();
    this.events.edited();
    if (!isTellingDue) queueMicrotask(() => this.#tellNow());
  }

  #tellNow(): void {
    if (this.#open) this.editor.tell(this.#untold.splice(0), this.#open.text);
  }

  #beyond(direction: 'undo' | 'redo'): void {
    this.settle();
    this.editor.exec(direction);
    this.reload();
    this.focus();
  }
}
