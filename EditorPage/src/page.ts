/** The page as the host drives it: the note's editor with what stands around it. */
import type { VaultEditor } from './bridge';
import { takeNoteNames } from './completion/plugin';
import { TOGGLE_COUNTS } from './counts/status';
import type { NoteEditor } from './editor';
import { FindBar } from './find/bar';
import { FOUND } from './find/marks';
import { NoteTarget } from './find/noteTarget';
import { receiveImage } from './images/plugin';
import { SourceView } from './sourceView/sourceView';

/** Actions of the page that the host's menus may send beside the commands that change the note. */
type Actions = Readonly<Record<string, (value?: string | number) => void>>;

export class Page implements VaultEditor {
  #find: FindBar;
  #source: SourceView;
  #actions: Actions;

  constructor(
    private editor: NoteEditor,
    root: HTMLElement,
  ) {
    const shownNote = new NoteTarget(editor.view, (folded, offset) => editor.unfold(folded, offset));
    this.#find = new FindBar(root, shownNote);
    this.#source = new SourceView(editor, root, {
      opened: (target) => this.#find.lookIn(target),
      closed: () => this.#find.lookIn(shownNote),
      edited: () => this.#find.refresh(),
    });
    editor.view.dom.addEventListener(FOUND, () => this.#find.refresh());
    this.#actions = {
      find: () => this.#find.open(false),
      replace: () => this.#find.open(true),
      findNext: () => this.#find.step(1),
      findPrevious: () => this.#find.step(-1),
      source: () => void this.#source.toggle(),
      counts: () => this.#toggleCounts(),
      focusInView: () => (this.#source.isOpen ? this.#source.focus() : this.editor.focusInView()),
      showMatch: (text) => this.#find.point(String(text ?? '')),
    };
    window.addEventListener('keydown', (event) => this.#key(event), true);
  }

  setContent(text: string): void {
    this.#source.settle();
    this.editor.setContent(text);
    this.#source.reload();
  }

  reportWhole(): void {
    this.#source.settle();
    this.editor.reportWhole();
  }

  /** Runs an action of the page, or one of the toolbar's commands; unknown ones do nothing. */
  exec(command: string, value?: string | number): void {
    const action = Object.hasOwn(this.#actions, command) ? this.#actions[command] : undefined;
    if (action) action(value);
    else if (!this.#source.isOpen) this.editor.exec(command, value);
    else if (command === 'undo') this.#source.undo();
    else if (command === 'redo') this.#source.redo();
    else this.#execInSource(command, value);
  }

  setNoteNames(names: readonly string[]): void {
    takeNoteNames(this.editor.view, names);
  }

  imageImported(id: number, path: string | null): void {
    receiveImage(this.editor.view, id, path);
  }

  /** A command on the shown note, of which the source is shown afterwards. */
  #execInSource(command: string, value?: string | number): void {
    this.#source.settle();
    this.editor.exec(command, value);
    this.#source.reload();
    this.#source.focus();
  }

  setTheme(theme: string): void {
    this.editor.setTheme(theme);
  }

  focus(): void {
    if (this.#source.isOpen) this.#source.focus();
    else this.editor.focus();
  }

  pasteText(text: string): void {
    if (document.activeElement instanceof HTMLInputElement) document.execCommand('insertText', false, text);
    else if (this.#source.isOpen) this.#source.insert(text);
    else this.editor.pasteText(text);
  }

  #toggleCounts(): void {
    this.editor.view.dom.dispatchEvent(new Event(TOGGLE_COUNTS));
  }

  #key(event: KeyboardEvent): void {
    const action = event.isComposing ? undefined : ACTION_KEYS[keyName(event)];
    if (action === undefined) return;
    event.preventDefault();
    event.stopPropagation();
    this.exec(action);
  }
}

/** The keys of the page's actions, wherever the keyboard is. */
const ACTION_KEYS: Readonly<Record<string, string>> = {
  'Ctrl-f': 'find',
  'Ctrl-h': 'replace',
  'Ctrl-e': 'source',
  F3: 'findNext',
  'Shift-F3': 'findPrevious',
  'Ctrl-g': 'findNext',
  'Ctrl-Shift-g': 'findPrevious',
  'Ctrl-Alt-w': 'counts',
};

function keyName({ key, ctrlKey, metaKey, shiftKey, altKey }: KeyboardEvent): string {
  const held = [...(ctrlKey || metaKey ? ['Ctrl'] : []), ...(altKey ? ['Alt'] : []), ...(shiftKey ? ['Shift'] : [])];
  return [...held, key.length === 1 ? key.toLowerCase() : key].join('-');
}
