import assert from 'node:assert/strict';
import { test } from 'node:test';
import { NoteText } from '../../src/source/noteText';
import { Random } from '../random';

test('a text in pieces is the text that its changes make of it', () => {
  for (let seed = 1; seed <= 50; seed += 1) {
    const random = new Random(seed);
    let text = 'Början, mitten och slutet.'.repeat(random.below(3));
    let pieces = NoteText.of(text);
    for (let step = 0; step < 30; step += 1) {
      const from = random.below(text.length + 1);
      const change = { from, to: from + random.below(text.length - from + 1) * random.below(2), insert: random.pick(['', 'x', 'några ord']) };
      text = text.slice(0, change.from) + change.insert + text.slice(change.to);
      pieces = pieces.changed(change);
      assert.equal(pieces.length, text.length);
      if (random.below(4) === 0) assert.equal(pieces.whole, text);
    }
    assert.equal(pieces.whole, text);
  }
});

test('more letters than pieces are kept are all there', () => {
  let text = NoteText.of('ab');
  for (let index = 0; index < 1_000; index += 1) text = text.changed({ from: 1 + index, to: 1 + index, insert: 'x' });

  assert.equal(text.whole, `a${'x'.repeat(1_000)}b`);
});

test('an earlier text stays what it was', () => {
  const before = NoteText.of('ett två');
  before.changed({ from: 0, to: 3, insert: 'tre' });

  assert.equal(before.whole, 'ett två');
});
