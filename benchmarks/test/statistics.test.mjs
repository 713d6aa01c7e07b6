import assert from 'node:assert/strict';
import { test } from 'node:test';

import { median, percentile } from '../lib/statistics.mjs';

test('the median is the middle number, or the mean of the middle two', () => {
  assert.equal(median([9, 1, 5]), 5);
  assert.equal(median([10, 1, 2, 4]), 3);
});

test('a percentile is a number that was measured', () => {
  const numbers = Array.from({ length: 40 }, (_, i) => i + 1);

  assert.equal(percentile(numbers, 0.95), 39);
  assert.equal(percentile([7], 0.95), 7);
});

test('nothing measured is an error, not a number', () => {
  assert.throws(() => median([]), /nothing was measured/);
  assert.throws(() => percentile([], 0.5), /nothing was measured/);
});
