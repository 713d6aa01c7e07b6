import assert from 'node:assert/strict';
import { test } from 'node:test';
import { isSameNote } from '../src/similarity';

const paragraph = (n: number): string => `Stycke ${n} med några ord om dagen som gick.\n\n`;
const note = Array.from({ length: 20 }, (_, n) => paragraph(n)).join('');

test('a note with a paragraph added, removed or changed elsewhere is the same note', () => {
  assert.equal(isSameNote(note, `${note}Ett nytt stycke.\n`), true);
  assert.equal(isSameNote(note, note.replace(paragraph(7), '')), true);
  assert.equal(isSameNote(note, note.replace('Stycke 3', 'Sida 3').replace('Stycke 15', 'Sida 15')), true);
});

test('another text is another note, and so is an emptied or a filled one', () => {
  assert.equal(isSameNote(note, '# Inköp\n\n- mjölk\n- bröd\n'), false);
  assert.equal(isSameNote('# Ny not\n\n', '# Ny not 2\n\n'), false);
  assert.equal(isSameNote(note, ''), false);
  assert.equal(isSameNote('', note), false);
});

test('the same line counts as often as both texts have it', () => {
  assert.equal(isSameNote('a\n', 'a\n'.repeat(100)), false);
});
