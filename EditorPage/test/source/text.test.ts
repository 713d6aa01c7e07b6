import assert from 'node:assert/strict';
import { test } from 'node:test';
import { carryOver, commonEnds, mainLineEnd, unify } from '../../src/source/text';

test('every kind of line end becomes one line feed, and offsets find their way back', () => {
  const raw = 'a\r\nb\rc\nd\r\n';
  const { text, at } = unify(raw);

  assert.equal(text, 'a\nb\nc\nd\n');
  assert.deepEqual([0, 1, 2, 3, 4, 6, 7, 8].map(at), [0, 1, 3, 4, 5, 7, 8, 10]);
});

test('the main line end is the one used most', () => {
  assert.equal(mainLineEnd(''), '\n');
  assert.equal(mainLineEnd('a\r\nb\nc\r\n'), '\r\n');
  assert.equal(mainLineEnd('a\rb\rc\n'), '\r');
  assert.equal(mainLineEnd('a\nb\nc\r\n'), '\n');
});

test('an edit is carried over without touching other line ends', () => {
  const raw = 'one\r\ntwo\nthree\rfour';

  assert.equal(
    carryOver(raw, 'one\ntwo\nthree\nfour', 'one\ntwo\nX\nthree\nfour', '\r\n'),
    'one\r\ntwo\nX\r\nthree\rfour',
  );
});

test('common ends do not overlap', () => {
  assert.deepEqual(commonEnds('aaa', 'aa'), { start: 2, end: 0 });
  assert.deepEqual(commonEnds('abc', 'abxc'), { start: 2, end: 1 });
});
