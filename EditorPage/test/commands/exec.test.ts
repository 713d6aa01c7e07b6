import assert from 'node:assert/strict';
import { test } from 'node:test';
import { redo, undo } from 'prosemirror-history';
import type { EditorState } from 'prosemirror-state';
import { commandFor, commandNames } from '../../src/commands/exec';
import { after, situation } from './onText';

type Value = string | number | undefined;

/** Command, value, note before, note after; null where the command has nothing to do. */
const cases: readonly (readonly [string, Value, string, string | null])[] = [
  ['bold', , 'a ‹b› c\n', 'a **‹b›** c\n'],
  ['bold', , 'a **‹b›** c\n', 'a ‹b› c\n'],
  ['bold', , '‹a b› c\n', '**‹a b›** c\n'],
  ['italic', , 'a ‹b› c\n', 'a *‹b›* c\n'],
  ['highlight', , 'a ‹b› c\n', 'a ==‹b›== c\n'],
  ['strike', , 'a ‹b› c\n', 'a ~~‹b›~~ c\n'],
  ['code', , 'a ‹b› c\n', 'a `‹b›` c\n'],
  ['heading', 1, 'a‸b\n', '# a‸b\n'],
  ['heading', 5, '# a‸b\n', '##### a‸b\n'],
  ['heading', 2, 'a‹b\n\nc›d\n', '## a‹b\n\n## c›d\n'],
  ['heading', 2, '- a‸b\n', '- ## a‸b\n'],
  ['heading', 2, '- [ ] a‸b\n', '## a‸b\n'],
  ['heading', 2, 'A. a\nB. b‸c\n', 'A. a\n\n## b‸c\n'],
  ['heading', 2, 'a\\\nb‸c\n', '## a b‸c\n'],
  ['heading', 3, '> a‸b\n', '> ### a‸b\n'],
  ['heading', 1, '| a‸b |\n| --- |\n', null],
  ['paragraph', , '## a‸b\n', 'a‸b\n'],
  ['paragraph', , '- a‸b\n', 'a‸b\n'],
  ['paragraph', , 'a‸b\n', null],
  ['blockquote', , 'a‸b\n', '> a‸b\n'],
  ['blockquote', , '> a‸b\n', 'a‸b\n'],
  ['blockquote', , 'a‹b\n\nc›d\n', '> a‹b\n>\n> c›d\n'],
  ['blockquote', , '> - a‸b\n> - c\n', '- a‸b\n- c\n'],
  ['blockquote', , '> a‹b\n\nc›d\n', '> a‹b\n>\n> c›d\n'],
  ['codeBlock', , 'a‸b\n', '```\na‸b\n```\n'],
  ['codeBlock', , 'a‹b\n\n**c›** [[d|e]]\n', '```\nab\nc‸ [[d|e]]\n```\n'],
  ['codeBlock', , '```js\na‸b\n```\n', 'a‸b\n'],
  ['codeBlock', , '- a\n- ‹b\n- c›\n- d\n', '- a\n\n```\nb\nc‸\n```\n\n- d\n'],
  ['codeBlock', , '1. ‹a\n   - **x**\n2. c›\n3. d\n', '```\na\nx\nc‸\n```\n\n3. d\n'],
  ['image', 'x.png', '```\na‸b\n```\n', '```\nab\n```\n\n![](x.png)‸\n'],
  ['link', 'http://x.se', '```\na‸b\n```\n', '```\nahttp://x.se‸b\n```\n'],
  ['wikilink', 'N', '```\na‸b\n```\n', '```\na[[N]]‸b\n```\n'],
  ['horizontalRule', , 'a‸b\n\nc\n', 'ab\n\n---\n\n‸\n\nc\n'],
  ['bulletList', , 'a‸b\n', '- a‸b\n'],
  ['bulletList', , 'a‹b\n\nc›d\n', '- a‹b\n- c›d\n'],
  ['bulletList', , '- a‸b\n', 'a‸b\n'],
  ['bulletList', , '1. a‸b\n2. c\n', '- a‸b\n- c\n'],
  ['bulletList', , '- [ ] a‸b\n- [x] c\n', '- a‸b\n- c\n'],
  ['bulletList', , 'A. a‸b\nB. c\n', '- a‸b\n- c\n'],
  ['orderedList', , 'a‸b\n', '1. a‸b\n'],
  ['orderedList', , '- a‸b\n- c\n', '1. a‸b\n2. c\n'],
  ['letterList', , 'a‹b\n\nc›d\n', 'A. a‹b\nB. c›d\n'],
  ['letterList', , '- a‸b\n- c\n', 'A. a‸b\nB. c\n'],
  ['letterList', , '- a‸b\n  - c\n', null],
  ['bulletList', , 'a‹b\n\n- c›d\n- e\n', '- a‹b\n- c›d\n- e\n'],
  ['orderedList', , '- a‹b\n\nc\n\nA. d\nB. e›f\n', '1. a‹b\n2. c\n3. d\n4. e›f\n'],
  ['letterList', , 'a‹b\n\n- c›d\n', 'A. a‹b\nB. c›d\n'],
  ['letterList', , '# a‹b\n\n- c›d\n', null],
  ['taskList', , '- [x] a‹b\n\nc›d\n', '- [x] a‹b\n- [ ] c›d\n'],
  ['bulletList', , '- a\n\nb‸c\n\n- d\n', '- a\n- b‸c\n- d\n'],
  ['orderedList', , '- a‸b\n  - c\n- d\n', '1. a‸b\n   - c\n2. d\n'],
  ['letterList', , 'A. a‸b\nB. c\n', 'a‸b\n\nA. c\n'],
  ['taskList', , 'a‸b\n', '- [ ] a‸b\n'],
  ['taskList', , '- a‸b\n- c\n', '- [ ] a‸b\n- [ ] c\n'],
  ['taskList', , '- a‹b\n- c›d\n- e\n', '- [ ] a‹b\n- [ ] c›d\n- e\n'],
  ['taskList', , '- [x] a‸b\n', 'a‸b\n'],
  ['taskList', , '| a‸b |\n| --- |\n', null],
  ['link', 'https://a.se', 'a ‹b› c\n', 'a [‹b›](https://a.se) c\n'],
  ['link', 'https://a.se', 'a [b‸c](d) e\n', 'a [b‸c](https://a.se) e\n'],
  ['link', ' x y ', 'a‹b›\n', 'a[‹b›](<x y>)\n'],
  ['link', 'https://a.se', 'a‸b\n', 'a[https://a.se](https://a.se)‸b\n'],
  ['link', '  ', 'a‸b\n', null],
  ['wikilink', 'Not', 'a‸b\n', 'a[[Not]]‸b\n'],
  ['wikilink', 'Not', 'a‹b›c\n', 'a[[Not|b]]‸c\n'],
  ['wikilink', 'Not', 'a‹Not›c\n', 'a[[Not]]‸c\n'],
  ['wikilink', 'N[1]', 'a‹b›c\n', 'a[‹b›](N%5B1%5D)c\n'],
  ['image', 'assets/x y.png', 'a‸b\n', 'a![](<assets/x y.png>)‸b\n'],
  ['youtube', 'https://youtu.be/dQw4w9WgXcQ', 'a‸b\n\nc\n', 'ab\n\n![](https://youtu.be/dQw4w9WgXcQ)\n\n‸\n\nc\n'],
  ['insertTable', , 'a‸b\n\nc\n', 'ab\n\n| ‸ |  |  |\n| - | - | - |\n|  |  |  |\n|  |  |  |\n\nc\n'],
  ['insertTable', , '| a‸b |\n| --- |\n', null],
  ['addRowBefore', , '| a | b |\n| --- | --: |\n| c‸d | e |\n', '| a | b |\n| --- | --: |\n|  |  |\n| c‸d | e |\n'],
  ['addRowAfter', , '| a‸b | c |\n| --- | --- |\n| d | e |\n', '| a‸b | c |\n| --- | --- |\n|  |  |\n| d | e |\n'],
  ['deleteRow', , '| a | b |\n| --- | --- |\n| c‸ | d |\n| e | f |\n', '| a | b |\n| --- | --- |\n| ‸e | f |\n'],
  ['deleteRow', , '| a | b |\n| - | - |\n| c‸ | d |\n', '| ‸a | b |\n| - | - |\n'],
  ['deleteColumn', , '| a | b |\n| - | - |\n| c | d‸ |\n', '| a |\n| - |\n| ‸c |\n'],
  ['youtube', 'https://youtu.be/dQw4w9WgXcQ', '| a‸ | b |\n| - | - |\n', '| a![](https://youtu.be/dQw4w9WgXcQ)‸ | b |\n| - | - |\n'],
  ['deleteRow', , '| a‸ |\n| --- |\n\nb\n', '‸b\n'],
  ['deleteTable', , 'x\n\n| a‸ | b |\n| --- | --- |\n\ny\n', 'x\n\n‸y\n'],
  ['addRowAfter', , 'a‸b\n', null],
];

/** How wide a table is drawn in the file is not this test's matter. */
function squeezed(text: string | null): string | null {
  return text === null ? null : text.replace(/^\|.*\|$/gm, (row) => row.replace(/-+/g, '-').replace(/ +/g, ' ').replace(/\| \|/g, '||').replace(/\| \|/g, '||'));
}

for (const [name, value, before, wanted] of cases) {
  test(`${name}${value === undefined ? '' : ` ${JSON.stringify(value)}`} on ${JSON.stringify(before)}`, () => {
    const command = commandFor(name, value);
    assert.ok(command);
    assert.equal(squeezed(after(command, before)), squeezed(wanted));
  });
}

test('every command that changes a note is undone and redone in one step', () => {
  for (const [name, value, before, wanted] of cases) {
    if (wanted === null) continue;
    const { source, state } = situation(before);
    const original = source.text;
    let current: EditorState = state;
    const dispatch = (tr: EditorState['tr']): void => void (current = current.apply(tr));
    commandFor(name, value)!(current, dispatch);
    source.apply(current.doc);
    const changed = source.text;
    undo(current, dispatch);
    source.apply(current.doc);
    assert.equal(source.text, original, `${name} on ${before}`);
    redo(current, dispatch);
    source.apply(current.doc);
    assert.equal(source.text, changed, `${name} on ${before}`);
  }
});

test('a command that cannot be is none', () => {
  for (const [name, value] of [['nothing', undefined], ['toString', undefined], ['__proto__', 'x'], ['heading', 0], ['heading', 6], ['heading', 1.5], ['heading', '2'], ['heading', undefined], ['link', undefined], ['link', 3]] as const) {
    assert.equal(commandFor(name, value), null, `${name} ${value}`);
  }
});

test('every command of the toolbar is there', () => {
  const wanted = 'bold italic highlight strike code paragraph heading undo redo blockquote codeBlock horizontalRule bulletList orderedList letterList taskList insertTable addRowBefore addRowAfter addColumnBefore addColumnAfter deleteRow deleteColumn toggleHeaderRow deleteTable image youtube link wikilink';
  assert.deepEqual([...commandNames].sort(), wanted.split(' ').sort());
});
