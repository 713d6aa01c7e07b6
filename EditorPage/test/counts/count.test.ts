import assert from 'node:assert/strict';
import { test } from 'node:test';
import { countNote, countRange, countText, inWords } from '../../src/counts/count';
import { SourceDocument } from '../../src/source/SourceDocument';
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
  const counts = countNote(state.doc, () => assert.fail('nothing is folded'));
  assert.deepEqual(counts, { words: 6, characters: 'Ett två'.length + 'tre fyra sju åtta '.length, isComplete: true });
});

test('a selection is counted alone', () => {
  const { state } = situation('ett ‹två\n\ntre› fyra\n');
  const { from, to } = state.selection;
  const counts = countRange(state.doc, from, to, () => assert.fail('nothing is folded'));
  assert.deepEqual(counts, { words: 2, characters: 6, isComplete: true });
});

test('what is folded is counted too', () => {
  const text = 'Ett **två** tre.\n\n- fyra\n- fem\n\n'.repeat(30);
  const source = SourceDocument.load(text, 100);
  const whole = SourceDocument.load(text);

  let counts = countNote(source.doc, (part) => source.peek(part));
  while (!counts.isComplete) counts = countNote(source.doc, (part) => source.peek(part));

  assert.equal(source.doc.lastChild!.type.name, 'folded');
  assert.deepEqual(counts, countNote(whole.doc, () => []));
});

test('large numbers are grouped', () => assert.equal(inWords({ words: 12345, characters: 67890 }).replace(/\s/g, ' '), '12 345 ord, 67 890 tecken'));
