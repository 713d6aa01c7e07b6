/** Names of notes, offered while a link is typed; and pictures, dropped and pasted. */
import { editor, expect, expectEqual, open, paste, surface, turn, type, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const options = () => [...document.querySelectorAll('.note-names [role="option"]')].map((option) => option.textContent);
const press = (key: string): void => void surface().dispatchEvent(new KeyboardEvent('keydown', { key, bubbles: true, cancelable: true }));

async function start(text: string, typed: string): Promise<void> {
  open(text);
  await turn();
  editor().setNoteNames(['Budget', 'Idé', 'Möte om budget', 'N[1]']);
  for (const letter of typed) type(letter);
  await turn();
}

/** What is typed after "a ", keys, and the note then. */
const cases: readonly (readonly [string, string[], string])[] = [
  ['[[bud', ['Enter'], 'a [[Budget]]\n'],
  ['[[bud', ['ArrowDown', 'Tab'], 'a [[Möte om budget]]\n'],
  ['[[', ['ArrowUp', 'Enter'], 'a [N[1]](<N%5B1%5D>)\n'],
  ['![[id', ['Enter'], 'a ![[Idé]]\n'],
];

const choosing: Test[] = cases.map(([typed, keys, wanted]) => [
  `${typed} and ${keys.join(', ')} makes ${JSON.stringify(wanted)}`,
  async (recorder) => {
    await start('a\n', ` ${typed}`);
    for (const key of keys) press(key);
    await turn();
    expectEqual(recorder.text?.replace(/\\?\[N\\?\[1\\?\]\]\(<?N%5B1%5D>?\)/, '[N[1]](<N%5B1%5D>)'), wanted, 'text');
    expectEqual(options(), [], 'still offered');
  },
]);

function picture(name: string): File {
  const bytes = Uint8Array.from(atob('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=='), (letter) => letter.charCodeAt(0));
  return new File([bytes], name, { type: 'image/png' });
}

/** Drops a file on the left edge of an element. */
function dropFile(file: File, target: Element): void {
  const dataTransfer = new DataTransfer();
  dataTransfer.items.add(file);
  const { left, top, height } = target.getBoundingClientRect();
  const at = { clientX: left + 1, clientY: top + height / 2 };
  target.dispatchEvent(new DragEvent('drop', { dataTransfer, ...at, bubbles: true, cancelable: true }));
}

function pasteFile(file: File): void {
  const clipboardData = new DataTransfer();
  clipboardData.items.add(file);
  surface().dispatchEvent(new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true }));
}

async function sent(recorder: Recorder): Promise<{ id: number; name: string; data: string }> {
  for (let round = 0; round < 200 && recorder.of('importImage').length === 0; round++) await new Promise((resolve) => requestAnimationFrame(resolve));
  return recorder.of('importImage').at(-1) as { id: number; name: string; data: string };
}

export const completionTests: Test[] = [
  ...choosing,
  ['names are asked for, and offered to those who hear the page too', async (recorder) => {
    await start('a\n', ' [[');
    expectEqual(recorder.of('noteNames'), [{}], 'asked');
    expectEqual(options(), ['Budget', 'Idé', 'Möte om budget', 'N[1]'], 'offered');
    press('ArrowDown');
    const active = surface().getAttribute('aria-activedescendant');
    expectEqual(document.getElementById(active ?? '')?.textContent, 'Idé', 'active');
    press('Escape');
    type('x');
    await turn();
    expectEqual(options(), [], 'offered after Escape');
  }],
  ['nothing is offered in code', async () => {
    await start('```\nx\n```\n', '[[');
    expectEqual(options(), [], 'offered');
  }],
  ['a pasted picture goes to the host, and its link to where it was pasted', async (recorder) => {
    open('a\n');
    await turn();
    recorder.clear();
    pasteFile(picture('Foto.png'));
    const { id, name, data } = await sent(recorder);
    expectEqual([name, data.startsWith('iVBORw0KGgo')], ['Foto.png', true], 'message');
    type('b');
    await turn();
    editor().imageImported(id, 'assets/Foto.png');
    await turn();
    expectEqual(recorder.text?.includes('![](assets/Foto.png)'), true, 'link');
    expectEqual(recorder.text?.replace('![](assets/Foto.png)', ''), 'ab\n', 'the rest');
    editor().exec('undo');
    await turn();
    expect(!recorder.text?.includes('assets'), 'not undone');
  }],
  ['a dropped picture goes where it was dropped, and no other byte changes', async (recorder) => {
    for (const [note, onto, after] of [
      ['*  a __b__\n\n\nc\n', '.ProseMirror > p', '*  a __b__\n\n\n![](assets/Foto.png)c\n'],
      ['*  a\n*  b\n', 'li:first-child p', '*  ![](assets/Foto.png)a\n*  b\n'],
      ['*  a\n* b\n', 'li:last-child p', '*  a\n* ![](assets/Foto.png)b\n'],
      ['a\n\n```\nx\n```\n\nb\n', 'pre', 'a\n\n```\nx\n```\n\n![](assets/Foto.png)\n\nb\n'],
    ]) {
      open(note!);
      await turn();
      recorder.clear();
      dropFile(picture('Foto.png'), surface().querySelector(onto!)!);
      const { id, name } = await sent(recorder);
      expectEqual(name, 'Foto.png', 'name');
      editor().imageImported(id, 'assets/Foto.png');
      await turn();
      expectEqual(recorder.text, after, 'text');
      editor().exec('undo');
      await turn();
      expectEqual(recorder.text, note, 'after undo');
    }
  }],
  ['a picture that could not be put away leaves nothing behind', async (recorder) => {
    open('a\n');
    await turn();
    recorder.clear();
    pasteFile(picture('Foto.png'));
    const { id } = await sent(recorder);
    editor().imageImported(id, null);
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes');
    expect(surface().querySelector('.coming') === null, 'the notice is still there');
    expectEqual(document.querySelector('[role="alert"]')?.textContent, 'Bilden kunde inte läggas till', 'message');
  }],
  ['a picture for a note that was left goes into no other', async (recorder) => {
    open('a\n');
    await turn();
    recorder.clear();
    pasteFile(picture('Foto.png'));
    const { id } = await sent(recorder);
    open('b\n');
    await turn();
    recorder.clear();
    editor().imageImported(id, 'assets/Foto.png');
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes');
  }],
  ['cells of a spreadsheet are no picture', async (recorder) => {
    open('a\n');
    await turn();
    recorder.clear();
    paste({ 'text/plain': 'x\ty', 'text/html': '<table><tr><td>x</td><td>y</td></tr></table>' });
    await turn();
    expectEqual(recorder.of('importImage'), [], 'pictures');
    expect(recorder.text?.includes('| x | y |') === true, `table: ${recorder.text}`);
  }],
];
