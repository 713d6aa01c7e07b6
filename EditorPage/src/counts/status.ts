/** The line at the note's lower right that tells how long the note, or the selected text, is. */
import type { EditorState } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { Plugin } from 'prosemirror-state';
import type { NoteContext } from '../views/context';
import { countNote, countRange, inWords } from './count';

/** Asks for the line, or puts it away. */
export const TOGGLE_COUNTS = 'toggle-counts';

/** The plugin that shows the counts of selected text, and of the whole note when the reader has asked for them. */
export function countStatus({ peek }: Pick<NoteContext, 'peek'>): Plugin {
  return new Plugin({ view: (view) => new Status(view, peek) });
}

/** Whether the reader wants the note's counts; holds from note to note. */
let isWanted = false;

class Status {
  #line = document.createElement('div');
  #isDue = false;

  constructor(
    private view: EditorView,
    private peek: NoteContext['peek'],
  ) {
    this.#line.className = 'counts';
    this.#line.setAttribute('role', 'status');
    this.#line.setAttribute('aria-label', 'Antal ord och tecken');
    document.body.append(this.#line);
    view.dom.addEventListener(TOGGLE_COUNTS, this.#toggle);
    this.#plan();
  }

  update(view: EditorView, before: EditorState): void {
    const isSame = view.state.doc === before.doc && view.state.selection.eq(before.selection);
    if (!isSame) this.#plan();
  }

  destroy(): void {
    this.view.dom.removeEventListener(TOGGLE_COUNTS, this.#toggle);
    this.#line.remove();
  }

  #toggle = (): void => {
    isWanted = !isWanted;
    this.#plan();
  };

  /** Counting waits until nothing else is to do. */
  #plan(): void {
    const { selection } = this.view.state;
    if (selection.empty && !isWanted) {
      this.#line.hidden = true;
      return;
    }
    if (this.#isDue) return;
    this.#isDue = true;
    requestIdleCallback(() => {
      this.#isDue = false;
      this.#show();
    });
  }

  #show(): void {
    const { doc, selection } = this.view.state;
    const counts = selection.empty ? countNote(doc, this.peek) : countRange(doc, selection.from, selection.to, this.peek);
    this.#line.hidden = selection.empty && !isWanted;
    const words = inWords(counts) + (counts.isComplete ? '' : '…');
    this.#line.textContent = selection.empty ? words : `Markerat: ${words}`;
    if (!counts.isComplete) this.#plan();
  }
}
