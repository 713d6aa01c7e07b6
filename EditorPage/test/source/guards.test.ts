import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Block } from '../../src/source/entries';
import { allGuarded, withGuards, withoutGuards } from '../../src/source/guards';
import { spliced } from '../../src/source/patch';

const block = (source: string, guards: number[] = []): Block => ({ source, guards }) as unknown as Block;

test('every escaped character of a block from nothing is guarded', () => {
  assert.deepEqual(allGuarded(block('\\# a \\\\* \\b')).guards, [0, 5]);
  assert.equal(allGuarded({ source: 'a' } as Block).guards, undefined);
});

test('a splice takes the guards near it away, and nothing else', () => {
  const before = block('1\\. \\*x\\*', [1]);
  const splice = withoutGuards(before, { from: 9, to: 9, text: 'y' })!;
  assert.equal(spliced(before.source, splice), '1. \\*x\\*y');
  assert.equal(withoutGuards(block('1\\. x', []), { from: 5, to: 5, text: 'y' }), null);
  assert.equal(withoutGuards(block(`1\\. ${'x'.repeat(200)}`, [1]), { from: 200, to: 200, text: 'y' }), null);
});

test('guards keep their places, and those that a splice puts in are added', () => {
  const guarded = (before: Block, splice: { from: number; to: number; text: string; isUnguarded?: boolean }) =>
    withGuards(block(spliced(before.source, splice)), before, splice).guards;
  assert.deepEqual(guarded(block('1\\. x', [1]), { from: 0, to: 0, text: 'ab' }), [3]);
  assert.deepEqual(guarded(block('a \\* b', []), { from: 6, to: 6, text: '\\_' }), [6]);
  assert.deepEqual(guarded(block('a \\* b', []), { from: 2, to: 6, text: '\\* \\_' }), [5]);
});

test('a fence that was made longer for what is typed is shorter again without it', () => {
  const before = block('- ```js\n  kod\n  ``\n  ```');
  const grow = { from: 2, to: before.source.length, text: '````js\n  kod\n  ```\n  ````' };
  const long = withGuards(block(spliced(before.source, grow)), before, grow);
  assert.deepEqual(long.guards, [5, long.source.length - 1]);

  const from = long.source.indexOf('\n  ```\n');
  const bare = withoutGuards(long, { from, to: from + '\n  ```'.length, text: '' })!;

  assert.equal(spliced(long.source, bare), '- ```js\n  kod\n  ```');
});
