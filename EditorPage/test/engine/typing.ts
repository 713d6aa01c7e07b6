/** Letters that go into their text before the page is laid out, and those that are left to the engine. */
import { editor, expect, expectEqual, open, surface, turn, type, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

/** The first text on the screen that holds `words`. */
function textWith(words: string): Text {
  const walker = document.createTreeWalker(surface(), NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) if ((walker.currentNode as Text).data.includes(words)) return walker.currentNode as Text;
  throw new Error(`no text with ${words}`);
}

async function putCaret(text: Text, offset: number): Promise<void> {
  surface().focus();
  getSelection()!.collapse(text, offset);
  await turn();
}

/** Whether the page takes a letter itself. */
function takes(data: string, more: InputEventInit = {}): boolean {
  return !surface().dispatchEvent(new InputEvent('beforeinput', { inputType: 'insertText', data, bubbles: true, cancelable: true, ...more }));
}

const placeOfCaret = (): [string | null, number] => [getSelection()!.focusNode!.nodeValue, getSelection()!.focusOffset];

export const typingTests: Test[] = [
  ['a letter is told while it is typed, and its text on the screen stays the same one', async (recorder) => {
    for (const [note, words, offset, after] of [
      ['ett ord till\n', 'ett ord', 5, 'ett oxrd till\n'],
      ['ett ord\n', 'ett ord', 7, 'ett ordx\n'],
      ['- a\n- **fet** b\n', 'fet', 1, '- a\n- **fxet** b\n'],
      ['| a | b |\n| - | - |\n| c | d |\n', 'd', 1, '| a | b |\n| - | - |\n| c | dx |\n'],
      ['```\nrad ett\n```\n', 'rad', 1, '```\nrxad ett\n```\n'],
      ['> # Rubrik\n', 'Rubrik', 6, '> # Rubrikx\n'],
      ['en #tagg här\n', 'tagg', 2, 'en #txagg här\n'],
    ] as const) {
      open(note);
      const text = textWith(words);
      await putCaret(text, offset);
      recorder.clear();
      expect(takes('x'), `the engine is left to type in ${note}`);
      expectEqual(recorder.text, after, 'told at once');
      expectEqual([placeOfCaret(), text.isConnected], [[text.data, offset + 1], true], 'caret, and its text on the screen');
      await turn();
      editor().exec('undo');
      await turn();
      expectEqual(recorder.text, note, 'undone');
    }
  }],
  ['what the engine has marked in a text stays where a letter is typed', async () => {
    open('fel stavat\n');
    const text = textWith('fel');
    const marked = new Range();
    marked.setStart(text, 4);
    marked.setEnd(text, 10);
    await putCaret(text, 3);
    expect(takes('x'), 'the engine is left to type');
    expectEqual([marked.toString(), text.data, text === textWith('felx')], ['stavat', 'felx stavat', true], 'range and text');
  }],
  ['a letter goes where the caret was put a moment ago', async (recorder) => {
    open('ett två\n');
    await putCaret(textWith('ett'), 7);
    getSelection()!.collapse(textWith('ett'), 3);
    type('x');
    await turn();
    expectEqual(recorder.text, 'ettx två\n', 'told');
  }],
  ['edges of markup, compositions and selected text are the engine\'s', async () => {
    open('ett **fet** två\n');
    await putCaret(textWith('fet'), 3);
    expect(!takes('x'), 'taken at the end of bold text');
    await putCaret(textWith(' två'), 0);
    expect(!takes('x'), 'taken before text behind bold');
    await putCaret(textWith('två'), 2);
    expect(!takes('x', { isComposing: true }), 'taken in a composition');
    expect(!takes('x', { inputType: 'insertReplacementText' }), 'a correction is taken');
    getSelection()!.setBaseAndExtent(textWith('två'), 1, textWith('två'), 3);
    await turn();
    expect(!takes('x'), 'taken over selected text');
  }],
  ['a shortcut works in the middle of a text', async (recorder) => {
    open('ett ==två= tre\n');
    await putCaret(textWith('två'), 10);
    type('=');
    await turn();
    expectEqual([recorder.text, surface().querySelector('mark')?.textContent], ['ett ==två== tre\n', 'två'], 'highlighted');
  }],
];
