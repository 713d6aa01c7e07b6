/** Typing as a person does: letters one by one, keys, and what the note is afterwards. */
import { expect, expectEqual, open, paste, surface, turn, type, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

/** A key with the keys that are held down: "Ctrl+Alt+2". */
class Key {
  constructor(readonly name: string) {}
}

const key = (name: string) => new Key(name);

const codes: Readonly<Record<string, number>> = { Enter: 13, Tab: 9, Backspace: 8, Shift: 16, ArrowUp: 38, ArrowDown: 40, Delete: 46 };

/** Presses a key; false when the page took it. */
function press({ name }: Key): boolean {
  const held = name.split('+');
  const last = held.pop()!;
  const keyCode = codes[last] ?? last.toUpperCase().charCodeAt(0);
  const flags = { ctrlKey: held.includes('Ctrl'), altKey: held.includes('Alt'), shiftKey: held.includes('Shift') || last === 'Shift' };
  return surface().dispatchEvent(new KeyboardEvent('keydown', { key: last, keyCode, ...flags, bubbles: true, cancelable: true } as KeyboardEventInit));
}

async function act(steps: readonly (string | Key)[]): Promise<void> {
  for (const step of steps) {
    for (const one of step instanceof Key ? [step] : step) {
      if (one instanceof Key) press(one);
      else type(one);
      await turn();
    }
  }
}

const [enter, tab, back] = [key('Enter'), key('Tab'), key('Backspace')];

/** What is done, the note before with the caret at its end, the steps, and the note afterwards. */
const cases: readonly (readonly [string, string, readonly (string | Key)[], string])[] = [
  ['a heading', 'a\n', [enter, '## b', enter, 'c'], 'a\n\n## b\n\nc\n'],
  ['a list, left by Enter twice', 'a\n', [enter, '- b', enter, 'c', enter, enter, 'd'], 'a\n\n- b\n- c\n\nd\n'],
  ['a list with its own marker', 'a\n', [enter, '* b', enter, 'c'], 'a\n\n* b\n* c\n'],
  ['a numbered list', 'a\n', [enter, '1. b', enter, 'c', enter, 'd'], 'a\n\n1. b\n2. c\n3. d\n'],
  ['tasks', 'a\n', [enter, '- [ ] b', enter, 'c'], 'a\n\n- [ ] b\n- [ ] c\n'],
  ['Tab and Shift+Tab in a list', '- a\n', [enter, 'b', tab, enter, 'c', key('Shift+Tab')], '- a\n  - b\n- c\n'],
  ['Backspace at the start of an item', '- a\n', [enter, back, 'b'], '- a\n\nb\n'],
  ['a quote, left by Enter twice', 'a\n', [enter, '> b', enter, enter, 'c'], 'a\n\n> b\n\nc\n'],
  ['code by three backticks', 'a\n', [enter, '```js', enter, 'b*', enter, enter, enter, 'c'], 'a\n\n```js\nb*\n```\n\nc\n'],
  ['a rule by three dashes', 'a\n', [enter, '---', 'b'], 'a\n\n---\n\nb\n'],
  ['types by their delimiters', 'a\n', [' **b** *c* ==d== ~~e~~ `f` g'], 'a **b** *c* ==d== ~~e~~ `f` g\n'],
  ['a shortcut taken back', 'a\n', [enter, '# ', back, 'b'], 'a\n\n\\# b\n'],
  ['a table by Enter, filled by Tab', 'a\n', [enter, '| b | c |', enter, 'd', tab, 'e', tab, 'f'], 'a\n\n| b | c |\n| - | - |\n| d | e |\n| f | |\n'],
  ['cells of a table with aligned columns', '| a | b |\n|:-:|--:|\n| c | d |\n', ['x', tab, 'y'], '| a | b |\n|:-:|--:|\n| c | dx |\n| y | |\n'],
  ['a table, left by Enter twice', '| a | b |\n| - | - |\n| c | d |\n', [enter, enter, 'e'], '| a | b |\n| - | - |\n| c | d |\n\ne\n'],
  ['a table at the end, left by the arrow', '| a | b |\n| - | - |\n| c | d |\n', [key('ArrowDown'), 'e'], '| a | b |\n| - | - |\n| c | d |\n\ne\n'],
  ['blocks moved up and down', 'a\n\nb\n\n\nc\n', [key('Alt+ArrowUp'), 'x'], 'a\n\ncx\n\n\nb\n'],
  ['an item moved up', '1. a\n2. b\n', [key('Alt+ArrowUp')], '1. b\n2. a\n'],
  ['bold and italic by their keys', 'a\n', [' ', key('Ctrl+b'), 'b', key('Ctrl+b'), ' ', key('Ctrl+i'), 'c', key('Ctrl+i'), ' d'], 'a **b** *c* d\n'],
  ['struck by its keys', 'a\n', [' ', key('Ctrl+Shift+x'), 'b', key('Ctrl+Shift+x'), ' c'], 'a ~~b~~ c\n'],
  ['a heading by Ctrl+Alt+2 and text again', 'a\n', [key('Ctrl+Alt+2'), 'b', enter, 'c', key('Ctrl+Alt+3'), key('Ctrl+Alt+0')], '## ab\n\nc\n'],
  ['a link by its letters', 'a\n', [' [b](c.md) d'], 'a [b](c.md) d\n'],
  ['a picture and a formula by their letters', 'a\n', [' ![b](c.png) $x^2$ d'], 'a ![b](c.png) $x^2$ d\n'],
  ['lines that begin like markers', 'a\n', [enter, '1.5 dl', enter, '#tagg', enter, '- ', '+46 70'], 'a\n\n1.5 dl\n\n#tagg\n\n- +46 70\n'],
  ['a list left in its middle', '*  a\n*  b\n', [key('Alt+ArrowUp'), enter, enter, 'c'], '*  b\n\nc\n\n*  a\n'],
  ['a line of a list joined with the next', '- a\n- b\n', [key('Alt+ArrowUp'), key('Delete')], '- ba\n'],
  ['a word before an embed with its width', '![[bild.png|300]]\n', [' å'], '![[bild.png|300]] å\n'],
];

const typingTests: Test[] = cases.map(([what, before, steps, after]) => [
  `typing: ${what}`,
  async (recorder) => {
    open(before);
    await turn();
    await act(steps);
    expectEqual(recorder.text, after, 'after typing');
  },
]);

export const comfortTests: Test[] = [
  ...typingTests,
  ['Tab in running text stays in the note, and goes to a control of it', async (recorder) => {
    const isTaken = (one: Key): boolean => !press(one);
    open('a\n\nb\n');
    await turn();
    recorder.clear();
    expectEqual([isTaken(tab), isTaken(key('Shift+Tab')), recorder.of('changed').length], [true, true, 0], 'taken, and told');
    open('![v](https://www.youtube.com/watch?v=dQw4w9WgXcQ)\n\nb\n');
    await turn();
    expectEqual([isTaken(tab), isTaken(key('Shift+Tab'))], [true, false], 'taken behind a control');
  }],
  ['text pasted with Shift is taken letter by letter', async (recorder) => {
    open('a\n');
    await turn();
    press(key('Shift'));
    press(key('Ctrl+Shift+v'));
    paste({ 'text/plain': ' **b**', 'text/html': ' <b>b</b>' });
    await turn();
    surface().dispatchEvent(new KeyboardEvent('keyup', { key: 'Shift', keyCode: 16, bubbles: true } as KeyboardEventInit));
    expectEqual(recorder.text, 'a \\*\\*b\\*\\*\n', 'pasted');
  }],
  ['a picture is as wide as its embed says', async () => {
    open('a ![[bild.png|120]] b\n');
    // At once: a picture that is not there is soon shown as missing.
    const image = surface().querySelector('img');
    expect(image !== null, 'no picture is shown');
    expectEqual(image!.getAttribute('width') ?? image!.style.width, '120', 'width');
  }],
  ['columns keep their alignment when a range is pasted into them', async (recorder) => {
    open('| a | b |\n|:-:|--:|\n| c | d |\n');
    await turn();
    paste({ 'text/plain': '1\t2\n3\t4\n' });
    await turn();
    expect(/^\|\s*:-+:\s*\|\s*-+:\s*\|/m.test(recorder.text ?? ''), `alignment is lost: ${recorder.text}`);
  }],
];
