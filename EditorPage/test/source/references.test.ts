import assert from 'node:assert/strict';
import { test } from 'node:test';
import { typedBehind } from './typing';

const definition = '\n\n[FOO BAR]: /url\n';

test('a link by its own text keeps its definition when its text changes, and the words around it their bytes', () => {
  const cases: Array<[before: string, after: string]> = [
    ['a __b__ [[c [foo bar] *d*', 'a __b__ [[c [foo ny bar][foo bar] *d*'],
    ['_[foo bar][]_ __x__', '_[foo ny bar][foo bar]_ __x__'],
    ['[foo bar] and [a][foo bar]', '[foo ny bar][foo bar] and [a][foo bar]'],
    ['[foo bar][foo bar] __x__', '[foo ny bar][foo bar] __x__'],
  ];
  for (const [before, after] of cases) {
    assert.equal(typedBehind(before + definition, 'foo', ' ny'), after + definition);
  }
});
