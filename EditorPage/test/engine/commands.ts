/** The toolbar's commands, run where the user stands, and undone in one step each. */
import { editor, expectEqual, open, turn, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

/** Command, value, note with the caret at its end, and the note afterwards. */
const cases: readonly (readonly [string, string | number | undefined, string, string])[] = [
  ['heading', 2, 'a\n', '## a\n'],
  ['paragraph', undefined, '## a\n', 'a\n'],
  ['bulletList', undefined, 'a\n', '- a\n'],
  ['orderedList', undefined, '- a\n- b\n', '1. a\n2. b\n'],
  ['taskList', undefined, 'a\n', '- [ ] a\n'],
  ['blockquote', undefined, 'a\n', '> a\n'],
  ['codeBlock', undefined, 'a\n', '```\na\n```\n'],
  ['wikilink', 'Not', 'a\n', 'a[[Not]]\n'],
  ['image', 'assets/a.png', 'a\n', 'a![](assets/a.png)\n'],
  ['youtube', 'https://youtu.be/dQw4w9WgXcQ', '', '![](https://youtu.be/dQw4w9WgXcQ)'],
  ['addRowAfter', undefined, '| a | b |\n| --- | --- |\n| c | d |\n', '| a | b |\n| --- | --- |\n| c | d |\n| | |\n'],
];

export const commandTests: Test[] = cases.map(([command, value, before, after]) => [
  `${command} on ${JSON.stringify(before)} and back`,
  async (recorder) => {
    open(before);
    await turn();
    recorder.clear();
    editor().exec(command, value);
    await turn();
    expectEqual(recorder.text, after, 'after the command');
    editor().exec('undo');
    await turn();
    expectEqual(recorder.text, before, 'after undo');
    editor().exec('redo');
    await turn();
    expectEqual(recorder.text, after, 'after redo');
  },
]);
