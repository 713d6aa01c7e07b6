/** Find and replace, by keys as a user does it. */
import { editor, expect, expectEqual, open, surface, turn, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

function press(key: string, more: KeyboardEventInit = {}): void {
  const target = document.activeElement ?? document.body;
  target.dispatchEvent(new KeyboardEvent('keydown', { key, bubbles: true, cancelable: true, ...more }));
}

const bar = () => document.querySelector<HTMLElement>('.find-bar');
const status = () => bar()?.querySelector('.find-status')?.textContent;
const fields = () => [...bar()!.querySelectorAll('input')];

function write(field: HTMLInputElement, text: string): void {
  field.value = text;
  field.dispatchEvent(new InputEvent('input', { bubbles: true }));
}

/** Opens a note with its caret at the start, and looks for `words` in it. */
async function look(text: string, words: string, key = 'f'): Promise<void> {
  if (bar()) editor().exec('find'), press('Escape');
  open(text);
  getSelection()?.collapse(surface().querySelector('p, h1'), 0);
  await new Promise((resolve) => requestAnimationFrame(resolve));
  await turn();
  press(key, { ctrlKey: true });
  write(fields()[0]!, words);
}

export const findTests: Test[] = [
  ['Ctrl+F counts and goes around', async () => {
    await look('möte Möte\n\nett MÖTE\n', 'möte');
    const seen = [status()];
    for (const [key, more] of [['Enter', {}], ['F3', {}], ['F3', {}], ['Enter', { shiftKey: true }]] as const) {
      press(key, more);
      seen.push(status());
    }
    expectEqual(seen, ['1 av 3', '2 av 3', '3 av 3', '1 av 3', '3 av 3'], 'status');
    expectEqual(document.querySelectorAll('.find-match').length, 3, 'drawn');
    press('Escape');
    expect(bar() === null, 'the bar is still there');
    expectEqual(document.querySelectorAll('.find-match').length, 0, 'drawn after Escape');
    expectEqual(getSelection()?.toString(), 'MÖTE', 'selected after Escape');
  }],
  ['a note from the search is shown where it holds the text, until something is done in it', async (recorder) => {
    open(`${'ett stycke\n\n'.repeat(400)}här ligger NÅLEN och nålen\n`);
    (document.activeElement as HTMLElement).blur();
    recorder.clear();
    editor().exec('showMatch', 'nålen');
    for (let frames = 0; frames < 3; frames++) await new Promise((resolve) => requestAnimationFrame(resolve));
    expect(bar() === null, 'the bar is there');
    const marked = [...document.querySelectorAll('.find-match')];
    expectEqual(marked.map((one) => one.textContent), ['NÅLEN', 'nålen'], 'marked');
    const { top, bottom } = marked[0]!.getBoundingClientRect();
    expect(top > 0 && bottom < innerHeight, `the match is at ${top}`);
    expectEqual(recorder.of('changed').length + recorder.of('edited').length, 0, 'changes told');
    surface().dispatchEvent(new PointerEvent('pointerdown', { bubbles: true }));
    expectEqual(document.querySelectorAll('.find-match').length, 0, 'marked after a click');
  }],
  ['what is not in the note, and the next note, are not marked', async () => {
    open('ett\n');
    editor().exec('showMatch', 'saknas');
    open('saknas\n');
    await turn();
    expectEqual(document.querySelectorAll('.find-match').length, 0, 'marked');
  }],
  ['nothing found is said', async () => {
    await look('a\n', 'b');
    expectEqual(status(), 'Inga träffar', 'status');
    press('Escape');
  }],
  ['a long note is looked through to its end at once', async () => {
    await look(`${'ett stycke\n\n'.repeat(3000)}nålen\n`, 'nålen');
    expectEqual(status(), '1 av 1', 'status');
    press('Escape');
  }],
  ['replacing one changes that one, in the type it stands in', async (recorder) => {
    await look('a **b** a\n\n* a\n', 'a', 'h');
    press('Enter');
    fields()[1]!.focus();
    fields()[1]!.value = 'ö';
    press('Enter');
    await turn();
    expectEqual(recorder.text, 'a **b** ö\n\n* a\n', 'text');
    expectEqual(status(), '2 av 2', 'status');
    press('Escape');
  }],
  ['what is replaced in marked text stays marked, with the markers that the file has', async (recorder) => {
    for (const [before, after] of [
      ['x __möte__ y _möte_ *a möte*\n', 'x __träff__ y _träff_ *a träff*\n'],
      ['==möte== `möte` ~~möte~~\n', '==träff== `träff` ~~träff~~\n'],
      ['[möte](möte.md) [**möte**][1]\n\n[1]: /x\n', '[träff](möte.md) [**träff**][1]\n\n[1]: /x\n'],
      ['| __möte__ |a|\n|-|-|\n', '| __träff__ |a|\n|-|-|\n'],
    ]) {
      await look(before!, 'möte', 'h');
      fields()[1]!.focus();
      fields()[1]!.value = 'träff';
      press('Enter', { ctrlKey: true });
      await turn();
      expectEqual(recorder.text, after, 'text');
      press('Escape');
    }
  }],
  ['replacing all is one step and touches nothing else', async (recorder) => {
    const before = '* a __c__\n*  b\n\n\n1) a\n\n```js\na\n```\n\n| a |c|\n|-|-|\n|  d | e|\n';
    await look(before, 'a', 'h');
    fields()[1]!.focus();
    fields()[1]!.value = 'xyz';
    press('Enter', { ctrlKey: true });
    await turn();
    expectEqual(recorder.text, before.replace(/a/g, 'xyz'), 'text');
    expectEqual(status(), '4 ersatta', 'status');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, before, 'after undo');
    editor().exec('find');
    press('Escape');
  }],
  ['the length of the note is told when asked for', async () => {
    open('ett två\n');
    const line = () => document.querySelector<HTMLElement>('.counts')!;
    const idle = () => new Promise((resolve) => requestIdleCallback(resolve));
    expect(line().hidden, 'told without being asked for');
    press('w', { ctrlKey: true, altKey: true });
    await idle();
    expectEqual(line().textContent, '2 ord, 7 tecken', 'told');
    press('w', { ctrlKey: true, altKey: true });
    expect(line().hidden, 'still told');
  }],
  ['the bar is named and its controls too', async () => {
    await look('a\n', 'a', 'h');
    expectEqual([bar()!.getAttribute('role'), bar()!.getAttribute('aria-label')], ['search', 'Sök i noten'], 'bar');
    const nameless = [...bar()!.querySelectorAll('input, button')].filter((one) => !one.getAttribute('aria-label'));
    expectEqual(nameless.length, 0, 'nameless controls');
    press('Escape');
  }],
];
