/**
 * The only place that talks to the host: it offers `window.VaultEditor` and posts its messages
 * through `window.webkit.messageHandlers`. Outside the host (in a plain browser) messages go nowhere.
 */

/** The formatting at the caret, as the host's toolbar shows it. */
export interface SelectionReport {
  bold: boolean;
  italic: boolean;
  highlight: boolean;
  bulletList: boolean;
  orderedList: boolean;
  inTable: boolean;
  /** 0 for body text, 1 to 5 for a heading. */
  heading: number;
}

/** A clicked link: its address as written, and whether it was a wiki link. */
export interface LinkRequest {
  href: string;
  wiki: boolean;
}

/** One change of a long note: `insert` in place of what stands from `from` to `to` of the text before it. */
export interface Edit {
  from: number;
  to: number;
  insert: string;
  /** How many edits have been told since the host had the whole text, this one too. */
  count: number;
  /** How long the text is afterwards. */
  length: number;
}

/** A picture that the host is to put into the bucket; it answers with `imageImported`. */
export interface ImageImport {
  id: number;
  name: string;
  /** The file's bytes in base64. */
  data: string;
}

interface MessageBodies {
  ready: Record<string, never>;
  changed: string;
  edited: Edit;
  selection: SelectionReport;
  openLink: LinkRequest;
  /** Asks for the names of all notes; the host answers with `setNoteNames`. */
  noteNames: Record<string, never>;
  importImage: ImageImport;
}

type MessageHandlers = { [Name in keyof MessageBodies]?: { postMessage(body: MessageBodies[Name]): void } };

/** What the host may call. */
export interface VaultEditor {
  setContent(text: string): void;
  exec(command: string, value?: string | number): void;
  setTheme(theme: string): void;
  focus(): void;
  /** Puts a text in at the caret as it is: nothing in it is taken for Markdown. */
  pasteText(text: string): void;
  /** Posts the whole note, for a host that has lost count of its edits. */
  reportWhole(): void;
  setNoteNames(names: readonly string[]): void;
  /** `path` is where the picture `id` now lies in the bucket; null when it could not be put there. */
  imageImported(id: number, path: string | null): void;
}

declare global {
  interface Window {
    VaultEditor?: VaultEditor;
    /** What the host knows already that the page is to look like and to show. */
    VaultBeginning?: () => void;
    webkit?: { messageHandlers?: MessageHandlers };
  }
}

/** Posts one message to the host; without a host it does nothing. */
export function post<Name extends keyof MessageBodies>(name: Name, body: MessageBodies[Name]): void {
  window.webkit?.messageHandlers?.[name]?.postMessage(body);
}

/** A note of up to so many characters is handed over whole with every change. */
const WHOLE_LIMIT = 32_000;

/** Tells the host how the note changes: the whole of it, or of a long one, to a host that takes that, only what has changed. */
export class ChangeReporter {
  #count = 0;

  /** To be called when the host has given the page its text: both have the same. */
  restart(): void {
    this.#count = 0;
  }

  /** The note has become what it is by `change`. The text of a long one is not asked for. */
  tell({ from, to, insert }: Pick<Edit, 'from' | 'to' | 'insert'>, note: { readonly text: string; readonly length: number }): void {
    const { length } = note;
    if (length <= WHOLE_LIMIT || !window.webkit?.messageHandlers?.edited) this.tellWhole(note.text);
    else post('edited', { from, to, insert, count: ++this.#count, length });
  }

  tellWhole(text: string): void {
    this.#count = 0;
    post('changed', text);
  }
}

/** Offers `editor` to the host, does what the page is to begin with, and tells the host that the page can be used. */
export function connect(editor: VaultEditor): void {
  window.VaultEditor = editor;
  try {
    window.VaultBeginning?.();
  } catch (error) {
    reportError(error);
  }
  post('ready', {});
}
