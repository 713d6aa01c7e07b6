import assert from 'node:assert/strict';
import { test } from 'node:test';

import { runRounds } from '../lib/rounds.mjs';

/** A contender that notes each run in `log` and measures the count of its runs. */
function counting(name, log) {
  let runs = 0;
  return { name, measure: async () => (log.push(name), { time: ++runs }) };
}

test('every round runs every contender once, in turns of order', async () => {
  const log = [];

  await runRounds([counting('a', log), counting('b', log)], 2);

  assert.deepEqual(log, ['a', 'b', 'b', 'a', 'a', 'b']);
});

test('the first pass warms up and does not count', async () => {
  const results = await runRounds([counting('a', []), counting('b', [])], 3);

  assert.deepEqual(results, { a: { time: [2, 3, 4] }, b: { time: [2, 3, 4] } });
});

test('a value that is no number stops the run', async () => {
  const broken = { name: 'a', measure: async () => ({ time: Number.NaN }) };

  await assert.rejects(runRounds([broken], 1), /time is not a number/);
});
