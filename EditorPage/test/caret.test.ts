import assert from 'node:assert/strict';
import { test } from 'node:test';
import { before, placeBehind } from '../src/caret';
import { SourceDocument } from '../src/source/SourceDocument';

const read = (text: string) => SourceDocument.load(text).doc;

/** Where the caret at `caret` of one note comes to stand in another. */
function moved(old: string, caret: number, after: string): number | null {
  const next = read(after);
  return placeBehind(next, 0, next.content.size, before(read(old), 0, caret));
}

test('the caret stays behind its letters as markers become visible', () => {
  assert.equal(moved('http:y\n', 6, '\\<http:y>\n'), 7);
  assert.equal(moved('- a **b** ![](c.png) d\n', 8, '- a b\\* ![](c.png) d\n'), 9);
  assert.equal(moved('ab\n\ncd\n', 6, '# ab\n\n> c\\_d\n'), 7);
  assert.equal(moved('ab\ncd\n', 5, 'A. ab cd\n'), 8);
});

test('blanks that have gone do not hold the caret back, and those behind it are kept before it', () => {
  assert.equal(moved('```\n  a b\n```\n', 5, 'a b\n'), 3);
  assert.equal(moved('a b \n\nc\n', 3, 'a bc\n'), 3);
  assert.equal(moved('ab\n', 1, 'ab\n'), 1);
  assert.equal(moved('```\na\n\nb\n```\n', 3, 'a\n\nb\n'), 4);
});

test('what was no text may have become some', () => {
  assert.equal(moved('a $x$b c\n', 5, 'a \\$x\\$b c\n'), 7);
});

test('the caret stays at the start of its block', () => {
  assert.equal(moved('ab\n\ncd\n', 5, 'ab\n\ncd\n'), 5);
  assert.equal(moved('ab\n\ncd\n', 5, '> ab\n\n- cd\n'), 9);
  assert.equal(moved('ab\n\n- cd\n', 7, 'ab cd\n'), 3);
  assert.equal(moved('- ab\n-\n-\n- cd\n', 13, '- ab\n-\n-\n- cd\n'), 13);
});

test('where the letters are no more there is no such place', () => {
  assert.equal(moved('ab\n', 3, 'a c\n'), null);
});
