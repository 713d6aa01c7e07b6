import assert from 'node:assert/strict';
import { test } from 'node:test';
import { changeBetween } from '../../src/source/update';
import { ShownText } from '../../src/sourceView/shownText';
import { Random } from '../random';

/** Brings what is shown to `shown`, and checks that what is told of it makes the same of the note. */
function edit(note: ShownText, shown: string): void {
  const change = changeBetween(note.shown, shown);
  let told = note.text;
  for (const { from, to, insert } of note.edit(change === null ? [] : [change], () => shown)) told = told.slice(0, from) + insert + told.slice(to);
  assert.equal(told, note.text);
  assert.equal(note.length, note.text.length);
}

/** A note, what is edited in what is shown of it, and the note afterwards. */
const cases: readonly (readonly [string, (shown: string) => string, string])[] = [
  ['a\nb\n', (shown) => shown.replace('b', 'bx'), 'a\nbx\n'],
  ['\ufeffa\r\nb\r\n', (shown) => `${shown}c\n`, '\ufeffa\r\nb\r\nc\r\n'],
  ['a\rb\r\nc\nd', (shown) => shown.replace('d', 'dd'), 'a\rb\r\nc\ndd'],
  ['a\r\nb\nc\r\n', (shown) => shown.replace('a\n', 'a\nx\n'), 'a\r\nx\r\nb\nc\r\n'],
  ['\0 \ud800 \t', (shown) => shown, '\0 \ud800 \t'],
];

for (const [text, change, wanted] of cases) {
  test(`${JSON.stringify(text)} becomes ${JSON.stringify(wanted)}`, () => {
    const note = new ShownText(text);
    assert.equal(note.text, text);
    assert.ok(!note.shown.includes('\r'));
    edit(note, change(note.shown));
    assert.equal(note.text, wanted);
  });
}

test('an edit that is taken back gives the bytes back', () => {
  const note = new ShownText('a\r\nb\nc\r');
  const { shown } = note;
  edit(note, '');
  edit(note, shown);
  assert.equal(note.text, 'a\r\nb\nc\r');
});

test('several stretches that are changed at once are told one after the other', () => {
  for (const mark of ['', '\ufeff']) {
    const note = new ShownText(`${mark}a b a b a\n`);
    const told = note.edit([{ from: 0, to: 1, insert: 'xx' }, { from: 4, to: 5, insert: '' }], () => 'unused');

    assert.equal(note.text, `${mark}xx b  b a\n`);
    assert.deepEqual(told.map(({ from }) => from), [4 + mark.length, mark.length]);
  }
});

test('random edits of what is shown are told as they are made', () => {
  for (let seed = 1; seed <= 40; seed += 1) {
    const random = new Random(seed);
    const lineEnd = random.pick(['\n', '\r\n', '\r']);
    const note = new ShownText(random.pick(['', '\ufeff']) + `ett${lineEnd}två${lineEnd}tre${random.pick(['', '\r', '\n'])}`.repeat(random.below(4)));
    for (let step = 0; step < 12; step += 1) {
      const { shown } = note;
      const from = random.below(shown.length + 1);
      const to = from + random.below(Math.min(6, shown.length - from + 1));
      edit(note, shown.slice(0, from) + random.pick(['', 'x', '\n', 'ord\nrad']) + shown.slice(to));
    }
  }
});
