import assert from 'node:assert/strict';
import { test } from 'node:test';

import { formatTable, rowsOf } from '../lib/report.mjs';

const results = { ours: { key: [2, 4, 3] }, peer: { key: [2, 1, 3] } };
const onCase = (reach) => ({ name: 'key', ours: ['ours', 'key'], base: ['peer', 'key'], reach });

test('a row holds medians, minima and their ratio', () => {
  const [row] = rowsOf([onCase(2)], results);

  assert.equal(row.ours, 3);
  assert.equal(row.base, 2);
  assert.equal(row.oursMinimum, 2);
  assert.equal(row.baseMinimum, 1);
  assert.equal(row.ratio, 1.5);
});

test('the reach decides the verdict', () => {
  assert.equal(rowsOf([onCase(1.5)], results)[0].verdict, 'reached');
  assert.equal(rowsOf([onCase(1.49)], results)[0].verdict, 'missed');
  assert.equal(rowsOf([onCase(undefined)], results)[0].verdict, 'info');
});

test('a case without a base is held to a value of its own', () => {
  const row = (most) => rowsOf([{ name: 'memory', ours: ['ours', 'key'], most, unit: 'MB' }], results)[0];

  assert.equal(row(3).verdict, 'reached');
  assert.equal(row(2.9).verdict, 'missed');
  assert.match(formatTable([row(3)]), /\| memory \| 3\.00 MB \| +- \| +- \| 3\.00 MB \| reached \| - +\|/);
});

test('the table calls a base as the case does', () => {
  const [row] = rowsOf([{ ...onCase(2), baseName: 'rg -i -l' }], results);

  assert.equal(row.baseName, 'rg -i -l');
});

test('a value that was not measured is an error', () => {
  const unknown = { name: 'key', ours: ['ours', 'paint'], base: ['peer', 'key'] };

  assert.throws(() => rowsOf([unknown], results), /"ours" did not measure "paint"/);
});

test('the table has one line per case and aligned columns', () => {
  const lines = formatTable(rowsOf([onCase(2), onCase(undefined)], results)).split('\n');

  assert.equal(lines.length, 4);
  assert.match(lines[2], /^\| key +\| 3\.00 ms \| 2\.00 ms \| +1\.50 \| +2\.00 \| reached \| peer +\|$/);
  assert.equal(new Set(lines.map((line) => line.length)).size, 1);
});
