/** Long notes, of which only what is near the window is drawn. */
import { editor, expect, expectEqual, surface, turn, type, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const frame = () => new Promise((resolve) => requestAnimationFrame(resolve));

async function until(condition: () => boolean, what: string): Promise<void> {
  for (let round = 0; round < 1000 && !condition(); round++) await frame();
  expect(condition(), `waited in vain: ${what}`);
}

const block = (index: number): string => `Stycke ${index} med *några* ord till, så att det blir en rad eller två av det hela, och lite till.`;
const LONG = `# Lång\n\n${Array.from({ length: 2_000 }, (_, index) => (index % 7 === 3 ? `*   punkt ${index}\n*   till` : block(index))).join('\n\n')}\n`;

/** Shows the long note at its top. */
async function openLong(recorder: Recorder, text = LONG): Promise<void> {
  // Whole texts are easier to compare.
  delete window.webkit!.messageHandlers!.edited;
  editor().setContent('annat\n');
  editor().setContent(text);
  window.scrollTo(0, 0);
  await turn();
  recorder.clear();
}

const folded = () => [...surface().querySelectorAll('.folded')];

/** The paragraph that begins with `Stycke` nearest below the middle of the window; null while there is none. */
function shown(): HTMLElement | null {
  const found = [...surface().children].find((one) => {
    const { top, bottom } = one.getBoundingClientRect();
    return one.tagName === 'P' && top > innerHeight * 0.3 && bottom < innerHeight * 0.9;
  });
  return (found as HTMLElement | undefined) ?? null;
}

/** Where a text differs from another, for the message of a failure. */
function difference(text: string | null, from: string): string {
  const at = text === null ? 0 : [...text].findIndex((letter, index) => letter !== from[index]);
  return JSON.stringify(text?.slice(Math.max(0, at - 30), at + 60) ?? null);
}

function press(key: string, more: KeyboardEventInit = {}): void {
  surface().dispatchEvent(new KeyboardEvent('keydown', { key, bubbles: true, cancelable: true, ...more }));
}

async function putCaret(element: Element, offset: number): Promise<void> {
  getSelection()?.collapse(document.createTreeWalker(element, NodeFilter.SHOW_TEXT).nextNode(), offset);
  await frame();
  await turn();
}

export const foldingTests: Test[] = [
  ['a long note that takes the keyboard shows its end, where the caret is', async (recorder) => {
    (document.activeElement as HTMLElement | null)?.blur();
    await openLong(recorder);
    editor().focus();
    const last = () => surface().lastElementChild!.getBoundingClientRect();
    await until(() => last().bottom > 0 && last().bottom <= innerHeight, 'the last block in the window');
    expect(surface().lastElementChild!.contains(getSelection()!.focusNode), 'the caret is in it');
    await frame();
    expect(last().bottom > 0 && last().bottom <= innerHeight, 'it stays there');
  }],
  ['a window opens a long note at its beginning, and a short one where writing goes on', async (recorder) => {
    (document.activeElement as HTMLElement | null)?.blur();
    await openLong(recorder);
    editor().exec('focusInView');
    await frame();
    expectEqual(scrollY, 0, 'scrolled');
    expect(surface().firstElementChild!.contains(getSelection()!.focusNode), 'the caret is in the first block');

    (document.activeElement as HTMLElement).blur();
    editor().setContent('ett\n\ntvå\n');
    editor().exec('focusInView');
    type('!');
    await turn();
    expectEqual(recorder.text, 'ett\n\ntvå!\n', 'the text');
  }],
  ['a long note is drawn where the window is, and what is typed there is all that changes', async (recorder) => {
    await openLong(recorder);
    expect(folded().length > 0 && surface().childElementCount < 200, `${surface().childElementCount} blocks are drawn`);
    for (const share of [0.5, 0.9, 0.2]) {
      window.scrollTo(0, document.documentElement.scrollHeight * share);
      await until(() => shown() !== null, 'text in the window');
      const words = shown()!.textContent!;
      const number = /^Stycke (\d+)/.exec(words)![1]!;
      await putCaret(shown()!, 6);
      type('x');
      await turn();
      expect(recorder.text === LONG.replace(`Stycke ${number} `, `Styckex ${number} `), `${share}: another text than with an x in ${words}: ${difference(recorder.text, LONG)}`);
      editor().exec('undo');
      await turn();
      expect(recorder.text === LONG, 'undo does not bring the text back');
    }
  }],
  ['what is not drawn says to a screen reader that the note goes on there', async (recorder) => {
    await openLong(recorder);
    const said = new Set(folded().map((one) => `${one.getAttribute('role')}: ${one.getAttribute('aria-label')}`));
    expectEqual([...said], ['note: Här fortsätter anteckningen'], 'role and name');
  }],
  ['what the window shows stays where it is while blocks around it are drawn', async (recorder) => {
    await openLong(recorder);
    window.scrollTo(0, document.documentElement.scrollHeight / 2);
    await until(() => shown() !== null, 'text in the window');
    const element = shown()!;
    const top = element.getBoundingClientRect().top;
    const isFar = (one: Element): boolean => {
      const box = one.getBoundingClientRect();
      return box.bottom < -innerHeight * 0.9 || box.top > innerHeight * 1.9;
    };
    await until(() => folded().every(isFar), 'all near the window is drawn');
    expect(Math.abs(element.getBoundingClientRect().top - top) < 2, `moved by ${element.getBoundingClientRect().top - top}`);
  }],
  ['blocks far away are folded again', async (recorder) => {
    await openLong(recorder);
    for (let share = 0; share < 1; share += 0.04) {
      window.scrollTo(0, document.documentElement.scrollHeight * share);
      await until(() => shown() !== null, 'text in the window');
    }
    await until(() => surface().childElementCount < 600, 'blocks are folded');
    window.scrollTo(0, 0);
    await until(() => surface().firstElementChild!.getBoundingClientRect().top >= 0, 'the top');
    expectEqual(recorder.of('changed'), [], 'changes');
  }],
  ['who rushes through a long note has it read where the rush ends, and glimpses before', async (recorder) => {
    await openLong(recorder);
    await until(() => folded().every((one) => Math.abs(one.getBoundingClientRect().top) > innerHeight), 'the top is read');
    let readings = 0;
    const observer = new MutationObserver((records) => (readings += records.some(({ addedNodes }) => addedNodes.length > 1) ? 1 : 0));
    observer.observe(surface(), { childList: true });
    const start = performance.now();
    for (let frames = 0; frames < 25; frames++) {
      window.scrollBy(0, 3 * innerHeight);
      await frame();
    }
    const most = 2 + (performance.now() - start) / 250;
    observer.disconnect();
    expect(readings <= most, `read ${readings} times, at most ${most} wanted`);
    await until(() => shown() !== null, 'text in the window');
  }],
  ['the whole of a long note is selected, copied, deleted and brought back', async (recorder) => {
    await openLong(recorder);
    surface().focus();
    press('a', { ctrlKey: true });
    const clipboardData = new DataTransfer();
    surface().dispatchEvent(new ClipboardEvent('copy', { clipboardData, bubbles: true, cancelable: true }));
    expect(clipboardData.getData('text/plain') === LONG, 'the copy is another text');
    expectEqual(clipboardData.getData('text/html'), '', 'formatted copy');
    press('Backspace');
    await turn();
    expectEqual(recorder.text?.trim(), '', 'after deleting');
    editor().exec('undo');
    await turn();
    expect(recorder.text === LONG, 'undo does not bring the text back');
  }],
  ['a deletion from the top to far below takes what is folded between', async (recorder) => {
    await openLong(recorder);
    window.scrollTo(0, document.documentElement.scrollHeight / 2);
    await until(() => shown() !== null, 'text in the window');
    const last = shown()!;
    const number = /^Stycke (\d+)/.exec(last.textContent!)![1]!;
    const first = surface().querySelector('h1')!.firstChild!;
    getSelection()?.setBaseAndExtent(first, 2, last.firstChild!, 6);
    await frame();
    await turn();
    press('Delete');
    await turn();
    expect(recorder.text === `# Lå${LONG.slice(LONG.indexOf(`Stycke ${number} `) + 6)}`, 'another text');
    editor().exec('undo');
    await turn();
    expect(recorder.text === LONG, 'undo does not bring the text back');
  }],
  ['Backspace behind folded blocks joins with the one before', async (recorder) => {
    const text = LONG.replace(/^\*   (punkt \d+\n)\*   /gm, 'En $1');
    await openLong(recorder, text);
    window.scrollTo(0, document.documentElement.scrollHeight / 2);
    await until(() => shown() !== null, 'text in the window');
    const behind = folded().map((one) => one.nextElementSibling).find((one) => one?.tagName === 'P');
    expect(behind?.tagName === 'P', 'no paragraph behind folded blocks');
    const words = behind!.textContent!.slice(0, 12);
    await putCaret(behind!, 0);
    press('Backspace');
    await turn();
    const at = text.indexOf(words);
    expect(recorder.text === text.slice(0, at).trimEnd() + text.slice(at), difference(recorder.text, text));
  }],
  ['a search finds what is folded and goes there', async (recorder) => {
    await openLong(recorder);
    editor().exec('find');
    const field = document.querySelector<HTMLInputElement>('.find-bar input')!;
    field.value = 'stycke 1500 ';
    field.dispatchEvent(new InputEvent('input', { bubbles: true }));
    await until(() => document.querySelector('.find-status')!.textContent === '1 av 1', 'the only match');
    await until(() => surface().querySelector('.find-current')?.textContent === 'Stycke 1500 ', 'the match is shown');
    const { top } = surface().querySelector('.find-current')!.getBoundingClientRect();
    expect(top > 0 && top < innerHeight, 'the match is not in the window');
    field.dispatchEvent(new KeyboardEvent('keydown', { key: 'Escape', bubbles: true }));
  }],
  ['another state of a long note keeps the caret and what can be undone', async (recorder) => {
    await openLong(recorder);
    window.scrollTo(0, document.documentElement.scrollHeight / 2);
    await until(() => shown() !== null, 'text in the window');
    const number = /^Stycke (\d+)/.exec(shown()!.textContent!)![1]!;
    await putCaret(shown()!, 6);
    type('x');
    await turn();
    editor().setContent(LONG.replace(`Stycke ${number} `, `Styckex ${number} `).replace('Stycke 1900 ', 'Det nittonhundrade '));
    type('y');
    await turn();
    const wanted = LONG.replace('Stycke 1900 ', 'Det nittonhundrade ');
    expect(recorder.text === wanted.replace(`Stycke ${number} `, `Styckexy ${number} `), 'the caret has moved');
    for (let steps = 0; steps < 3 && recorder.text !== wanted; steps++) {
      editor().exec('undo');
      await turn();
    }
    expect(recorder.text === wanted, 'undo does not bring back what was there');
  }],
];
