import assert from 'node:assert/strict';
import { test } from 'node:test';
import { alignLines, readInlineCode } from '../../src/markdown/align';

test('lines are found behind what stands before them', () => {
  assert.deepEqual(alignLines('a\n\n b', 'a\n>\n>  b', 10), [
    { at: 0, from: 10, length: 1 },
    { at: 2, from: 13, length: 0 },
    { at: 3, from: 16, length: 2 },
  ]);
});

test('inline code loses one blank at each end when both have one', () => {
  assert.deepEqual(readInlineCode('`` a` ``', 'a`'), { text: 'a`', from: 3 });
  assert.deepEqual(readInlineCode('` a`', ' a'), { text: ' a', from: 1 });
});
