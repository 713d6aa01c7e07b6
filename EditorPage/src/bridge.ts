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
  setNoteNames(names: readonly string[]): void;
  /** `path` is where the picture `id` now lies in the bucket; null when it could not be put there. */
  imageImported(id: number, path: string | null): void;
}

declare global {
  interface Window {
    VaultEditor?: VaultEditor;
    webkit?: { messageHandlers?: MessageHandlers };
  }
}

/** Posts one message to the host; without a host it does nothing. */
export function post<Name extends keyof MessageBodies>(name: Name, body: MessageBodies[Name]): void {
  window.webkit?.messageHandlers?.[name]?.postMessage(body);
}

/** Offers `editor` to the host and tells it that the page can be used. */
export function connect(editor: VaultEditor): void {
  window.VaultEditor = editor;
  post('ready', {});
}
