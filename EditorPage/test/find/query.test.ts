import assert from 'node:assert/strict';
import { test } from 'node:test';
import { around, indexFrom, patternOf, type Query } from '../../src/find/query';

const query = (text: string, more: Partial<Query> = {}): Query => ({ text, caseSensitive: false, wholeWords: false, ...more });
const found = (text: string, wanted: Query): string[] => [...text.matchAll(patternOf(wanted)!)].map(([match]) => match);

/** Query, text, and what of it is found. */
const cases: readonly (readonly [Query, string, string[]])[] = [
  [query('möte'), 'Möte MÖTE möten', ['Möte', 'MÖTE', 'möte']],
  [query('möte', { caseSensitive: true }), 'Möte MÖTE möten', ['möte']],
  [query('möte', { wholeWords: true }), 'Möte möten förmöte _möte', ['Möte']],
  [query('a'), 'aå', ['a']],
  [query('a'), 'aa\u030a', ['a']],
  [query('å'), 'a\u030a å', ['a\u030a', 'å']],
  [query('a\u030a'), 'a\u030a å', ['a\u030a', 'å']],
  [query('.*'), 'a.*b', ['.*']],
  [query('(a|b) [c] \\ $x^ {2} +?'), 'x(a|b) [c] \\ $x^ {2} +?', ['(a|b) [c] \\ $x^ {2} +?']],
  [query('a-b/c'), 'a-b/c', ['a-b/c']],
  [query('👍'), 'a👍b', ['👍']],
];

for (const [wanted, text, matches] of cases) {
  test(`${JSON.stringify(wanted)} in ${JSON.stringify(text)}`, () => assert.deepEqual(found(text, wanted), matches));
}

test('nothing is looked for with an empty query', () => assert.equal(patternOf(query('')), null));

test('the first match at the place or behind it is current, else the first of all', () => {
  const starts = [{ from: 2 }, { from: 5 }];
  assert.deepEqual([0, 2, 3, 6].map((place) => indexFrom(starts, place)), [0, 0, 1, 0]);
  assert.equal(indexFrom([], 3), -1);
});

test('steps go around the ends', () => {
  assert.deepEqual([around(2, 1, 3), around(0, -1, 3), around(-1, 1, 3), around(0, 1, 0)], [0, 2, 0, -1]);
});
