import assert from 'node:assert/strict';
import { test } from 'node:test';
import { offered } from '../../src/completion/ranking';

const names = ['Ängen', 'Budget 2025', 'Möte om budget', 'Ombudet', 'Index', 'budgivning'];

/** What was typed, and what is offered. */
const cases: readonly (readonly [string, string[]])[] = [
  ['', names],
  ['bud', ['Budget 2025', 'budgivning', 'Möte om budget', 'Ombudet']],
  ['MÖTE', ['Möte om budget']],
  ['mo\u0308te', ['Möte om budget']],
  ['ang', []],
  [' index ', ['Index']],
];

for (const [typed, wanted] of cases) test(`${JSON.stringify(typed)} offers ${wanted.length}`, () => assert.deepEqual(offered(names, typed), wanted));

test('of a hundred thousand names no more are offered than anyone reads', () => {
  const many = Array.from({ length: 100_000 }, (_, index) => `Not ${index}`);
  assert.equal(offered(many, 'not').length, 50);
});
