import assert from 'node:assert/strict';
import { test } from 'node:test';
import { readEntries } from '../../src/source/entries';
import { calloutOf } from '../../src/syntax/callout';

const callout = (text: string) => calloutOf(readEntries(text, true).entries[0]!.node);

test('a quote that begins with a kind is a callout', () => {
  assert.deepEqual(callout('> [!note] Title\n> body'), { kind: 'note', fold: '', markerLength: 8 });
  assert.deepEqual(callout('> [!WARNING]-\n> body'), { kind: 'warning', fold: '-', markerLength: 11 });
});

test('other quotes are none', () => {
  for (const text of ['> a [!note]', '> **[!note]**', '[!note]', '> # [!note]', '> [note]'])
    assert.equal(callout(text), null, text);
});
