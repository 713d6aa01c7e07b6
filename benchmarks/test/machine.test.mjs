import assert from 'node:assert/strict';
import { test } from 'node:test';

import { busyRemark } from '../lib/machine.mjs';

test('a floor below the limit is remarked, whether before or after', () => {
  assert.match(busyRemark([1.9, 1.2], 3), /other programs held the cores/);
  assert.match(busyRemark([1.2, 1.9], 3), /other programs held the cores/);
  assert.match(busyRemark([1.8, 1.9], 0.3), /The cores were free/);
});
