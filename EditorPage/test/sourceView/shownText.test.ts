import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ShownText } from '../../src/sourceView/shownText';

/** A note, what is edited in what is shown of it, and the note afterwards. */
const cases: readonly (readonly [string, (shown: string) => string, string])[] = [
  ['a\nb\n', (shown) => shown.replace('b', 'bx'), 'a\nbx\n'],
  ['\ufeffa\r\nb\r\n', (shown) => `${shown}c\n`, '\ufeffa\r\nb\r\nc\r\n'],
  ['a\rb\r\nc\nd', (shown) => shown.replace('d', 'dd'), 'a\rb\r\nc\ndd'],
  ['a\r\nb\nc\r\n', (shown) => shown.replace('a\n', 'a\nx\n'), 'a\r\nx\r\nb\nc\r\n'],
  ['\0 \ud800 \t', (shown) => shown, '\0 \ud800 \t'],
];

for (const [text, edit, wanted] of cases) {
  test(`${JSON.stringify(text)} becomes ${JSON.stringify(wanted)}`, () => {
    const note = new ShownText(text);
    assert.equal(note.text, text);
    assert.ok(!note.shown.includes('\r'));
    note.edit(edit(note.shown));
    assert.equal(note.text, wanted);
  });
}

test('an edit that is taken back gives the bytes back', () => {
  const note = new ShownText('a\r\nb\nc\r');
  const { shown } = note;
  note.edit('');
  note.edit(shown);
  assert.equal(note.text, 'a\r\nb\nc\r');
});
