import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { test } from 'node:test';

import { makeNote, noteSizes } from '../lib/notes.mjs';

test('the same size always gives the same bytes', () => {
  const digest = (text) => createHash('sha256').update(text).digest('hex').slice(0, 16);

  assert.equal(digest(makeNote(10_000)), digest(makeNote(10_000)));
  assert.equal(digest(makeNote(10_000)), 'dd97b62a06950f63');
});

test('a note fills its size without going over it', () => {
  for (const bytes of Object.values(noteSizes)) {
    const size = Buffer.byteLength(makeNote(bytes));
    assert.ok(size <= bytes && size > bytes - 1_000, `${size} of ${bytes}`);
  }
});

test('a note has everything that real notes have', () => {
  const note = makeNote(100_000);
  for (const part of [
    /^# /m, /^## /m, /^- /m, /^ {2}- /m, /^1\. /m, /^- \[x\] /m, /^- \[ \] /m, /^\| --- \|/m, /^```js$/m, /^> /m,
    /\*\*[^*]+\*\*/, /==[^=]+==/, /\[\[[^\]]+\]\]/, /\]\(https:/, /[åäö]/, /\bThe /,
  ])
    assert.match(note, part);
});
