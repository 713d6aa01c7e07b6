/** What the tests inside the web engine share: a recorder in the host's place, and ways to act as a user. */

export interface Result {
  name: string;
  ok: boolean;
  message: string;
}

export interface Message {
  name: string;
  body: unknown;
}

/** Everything that the page has posted since the last `clear`. */
export class Recorder {
  readonly messages: Message[] = [];
  #before = window.webkit;

  /** Takes the host's place. */
  install(): void {
    const handler = (name: string) => ({ postMessage: (body: unknown) => void this.messages.push({ name, body }) });
    const names = ['ready', 'changed', 'selection', 'openLink', 'noteNames', 'importImage'];
    window.webkit = { messageHandlers: Object.fromEntries(names.map((name) => [name, handler(name)])) };
  }

  /** Gives the host its place back. */
  remove(): void {
    window.webkit = this.#before;
  }

  clear(): void {
    this.messages.length = 0;
  }

  of(name: string): unknown[] {
    return this.messages.filter((message) => message.name === name).map((message) => message.body);
  }

  /** The note as the page last reported it, or null. */
  get text(): string | null {
    return (this.of('changed').at(-1) as string | undefined) ?? null;
  }
}

/** The page's object, which is there once the page is ready. */
export function editor() {
  if (!window.VaultEditor) throw new Error('the page offers no VaultEditor');
  return window.VaultEditor;
}

export function surface(): HTMLElement {
  const found = document.querySelector<HTMLElement>('.ProseMirror');
  if (found === null) throw new Error('the page has no editor');
  return found;
}

/** Waits until the page has had a turn of its own: messages are posted by then. */
export function turn(): Promise<void> {
  return new Promise((resolve) => setTimeout(resolve));
}

/** Puts a text in as the engine's own editing does. */
export function edit(text: string): void {
  document.execCommand('insertText', false, text);
}

/** Types as keys do: the page is asked first, and else the engine does it. */
export function type(text: string): void {
  const asked = new InputEvent('beforeinput', { inputType: 'insertText', data: text, bubbles: true, cancelable: true });
  if ((document.activeElement ?? document.body).dispatchEvent(asked)) edit(text);
}

/** Pastes with the given clipboard content. */
export function paste(content: Record<string, string>): void {
  const clipboardData = new DataTransfer();
  for (const [kind, value] of Object.entries(content)) clipboardData.setData(kind, value);
  surface().dispatchEvent(new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true }));
}

/** Shows a note as another than the one before, with the caret at its end. */
export function open(text: string): void {
  editor().setContent(`\u2060${Math.random()}`);
  editor().setContent(text);
  editor().focus();
}

export function expect(condition: boolean, message: string): void {
  if (!condition) throw new Error(message);
}

export function expectEqual(actual: unknown, expected: unknown, what: string): void {
  const [a, b] = [JSON.stringify(actual), JSON.stringify(expected)];
  expect(a === b, `${what}: got ${a}, expected ${b}`);
}
