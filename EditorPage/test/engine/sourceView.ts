/** The note's source in place of the note. */
import { editor, expect, expectEqual, open, surface, turn, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const holder = () => document.querySelector<HTMLElement>('.source-view');
const field = () => holder()!.shadowRoot!.querySelector<HTMLElement>('.cm-content')!;
const shown = () => [...field().querySelectorAll('.cm-line')].map((line) => line.textContent).join('\n');

async function until(condition: () => boolean): Promise<void> {
  for (let round = 0; round < 1000 && !condition(); round++) await new Promise((resolve) => requestAnimationFrame(resolve));
  expect(condition(), 'waited in vain');
}

function press(target: Element, key: string, more: KeyboardEventInit = {}): void {
  target.dispatchEvent(new KeyboardEvent('keydown', { key, bubbles: true, cancelable: true, composed: true, ...more }));
}

async function showSource(): Promise<void> {
  editor().exec('source');
  await until(() => holder() !== null && holder()!.shadowRoot!.activeElement !== null);
}

async function type(text: string): Promise<void> {
  document.execCommand('insertText', false, text);
  // The field learns of the engine's own edits through its observer.
  await turn();
  await turn();
}

const NOTE = '\ufeff*  ett\r\n+ två\r\n\r\n__fet__ &amp; \\* slut\r\n';

export const sourceViewTests: Test[] = [
  ['the source and back changes no byte', async (recorder) => {
    open(NOTE);
    await showSource();
    expectEqual(shown(), NOTE.slice(1).replace(/\r\n/g, '\n'), 'source');
    expect(surface().getClientRects().length === 0, 'the note is still shown');
    editor().exec('source');
    await turn();
    expectEqual(recorder.of('changed'), [], 'changes');
    expect(holder() === null && surface().getClientRects().length > 0, 'the note is not shown again');
  }],
  ['the caret is in the same place, and what is typed there goes into the note', async (recorder) => {
    open('# Rubrik\n\n* ett **två**\n\nslut\n');
    getSelection()?.collapse(surface().querySelector('strong')!.firstChild, 1);
    await new Promise((resolve) => requestAnimationFrame(resolve));
    await turn();
    recorder.clear();
    await showSource();
    await type('X');
    expectEqual(recorder.text, '# Rubrik\n\n* ett **tXvå**\n\nslut\n', 'text');
    editor().exec('source');
    await turn();
    expectEqual(surface().querySelector('strong')!.textContent, 'tXvå', 'shown');
    document.execCommand('insertText', false, 'Y');
    await turn();
    expectEqual(recorder.text, '# Rubrik\n\n* ett **tXYvå**\n\nslut\n', 'typed after going back');
  }],
  ['text that the host pastes takes the place of what is selected', async (recorder) => {
    open('ett två\n');
    await showSource();
    press(field(), 'a', { ctrlKey: true });
    editor().pasteText('# x\n');
    await turn();
    expectEqual(recorder.text, '# x\n', 'text');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, 'ett två\n', 'after undo');
    editor().exec('source');
    await turn();
  }],
  ['what was changed in the source is one step of the history, also where the note looks the same', async (recorder) => {
    open('* ett\n\nslut\n');
    await turn();
    recorder.clear();
    await showSource();
    press(field(), 'Home', { ctrlKey: true });
    press(field(), 'Delete');
    await type('-');
    expectEqual(recorder.text, '- ett\n\nslut\n', 'in the source');
    editor().exec('source');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, '* ett\n\nslut\n', 'after undo');
    editor().exec('redo');
    await turn();
    expectEqual(recorder.text, '- ett\n\nslut\n', 'after redo');
  }],
  ['undo in the source goes on to what was done before', async (recorder) => {
    open('ett\n');
    document.execCommand('insertText', false, '!');
    await turn();
    await showSource();
    await type('?');
    const texts = [recorder.text];
    for (const key of ['z', 'z', 'y', 'y']) {
      press(field(), key, { ctrlKey: true });
      await turn();
      texts.push(recorder.text);
    }
    editor().exec('source');
    expectEqual(texts, ['ett!?\n', 'ett!\n', 'ett\n', 'ett!\n', 'ett!\n'], 'texts');
  }],
  ['a command works in the source too', async (recorder) => {
    open('ett\n');
    await showSource();
    editor().exec('heading', 2);
    await turn();
    expectEqual([recorder.text, shown()], ['## ett\n', '## ett\n'], 'text and source');
    editor().exec('source');
  }],
  ['another note is shown as source too', async (recorder) => {
    open('ett\n');
    await turn();
    recorder.clear();
    await showSource();
    await type('!');
    open('något helt annat\n');
    expectEqual(shown(), 'något helt annat\n', 'source');
    expectEqual(recorder.of('changed'), ['ett!\n'], 'changes');
    editor().exec('source');
    await turn();
    expectEqual(surface().textContent, 'något helt annat', 'note');
  }],
  ['finding and replacing works in the source', async (recorder) => {
    open('**a** b\n\n* a\n');
    await turn();
    await showSource();
    editor().exec('replace');
    const [words, replacement] = [...document.querySelectorAll<HTMLInputElement>('.find-bar input')];
    words!.value = '**';
    words!.dispatchEvent(new InputEvent('input', { bubbles: true }));
    expectEqual(document.querySelector('.find-status')!.textContent?.replace(/^\d+/, ''), ' av 2', 'status');
    replacement!.value = '__';
    press(replacement!, 'Enter', { ctrlKey: true });
    await turn();
    expectEqual(recorder.text, '__a__ b\n\n* a\n', 'text');
    press(words!, 'Escape');
    editor().exec('source');
  }],
  ['of a long note only what is changed in its source is told, and so is what is typed afterwards', async (recorder) => {
    let text = `\ufeff${'Ett stycke med några ord till.\n\n'.repeat(2_000)}`;
    open(text);
    const told: number[] = [];
    window.webkit!.messageHandlers!.edited = {
      postMessage: ({ from, to, insert, count, length }) => {
        text = text.slice(0, from) + insert + text.slice(to);
        expectEqual(text.length, length, 'length');
        told.push(count);
      },
    };
    recorder.clear();
    await showSource();
    press(field(), 'Home', { ctrlKey: true });
    await type('X');
    await type('Y');
    editor().exec('source');
    await turn();
    document.execCommand('insertText', false, 'Z');
    await turn();
    editor().exec('undo');
    await turn();
    expect(text.startsWith('\ufeffXYEtt stycke'), text.slice(0, 20));
    expectEqual([told, recorder.of('changed')], [[1, 2, 3, 4], []], 'edits and whole texts');
    delete window.webkit!.messageHandlers!.edited;
  }],
  ['the source is a named text field', async () => {
    open('ett\n');
    await showSource();
    expectEqual([field().getAttribute('role'), field().getAttribute('aria-label')], ['textbox', 'Notens källtext'], 'role and name');
    editor().exec('source');
  }],
];
