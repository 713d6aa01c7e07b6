import assert from 'node:assert/strict';
import { test } from 'node:test';
import { countNote, countRange, countText, inWords } from '../../src/counts/count';
import { situation } from '../commands/onText';

/** Text, words, characters. */
const cases: readonly (readonly [string, number, number])[] = [
  ['', 0, 0],
  ['  ', 0, 2],
  ['ett två', 2, 7],
  ['e-post, t.ex. kl. 10:30', 4, 23],
  ['d’accord – inte', 2, 15],
  ['åa\u030a', 1, 2],
  ['👍 ja', 1, 4],
  ['ett\ntvå', 2, 6],
  ['3,14 och 1/2', 3, 12],
];

for (const [text, words, characters] of cases) {
  test(`${JSON.stringify(text)}: ${words} and ${characters}`, () => assert.deepEqual(countText(text), { words, characters }));
}

test('a note is counted as it is read, without its signs', () => {
  const { state } = situation('# Ett två\n\n- [ ] **tre** [fyra](fem.md) [[Sex|sju åtta]] ![](nio.png)\n');
  assert.deepEqual(countNote(state.doc), { words: 6, characters: 'Ett två'.length + 'tre fyra sju åtta '.length });
});

test('a selection is counted alone', () => {
  const { state } = situation('ett ‹två\n\ntre› fyra\n');
  assert.deepEqual(countRange(state.doc, state.selection.from, state.selection.to), { words: 2, characters: 6 });
});

test('large numbers are grouped', () => assert.equal(inWords({ words: 12345, characters: 67890 }).replace(/\s/g, ' '), '12 345 ord, 67 890 tecken'));
