import assert from 'node:assert/strict';
import { mkdtempSync, readdirSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';

import { bucketOf, queries } from '../lib/buckets.mjs';

const folder = mkdtempSync(path.join(tmpdir(), 'bench-buckets-'));
after(() => rmSync(folder, { recursive: true }));

/** The files below `root`: their paths in it, and their texts. */
function filesOf(root) {
  const found = [];
  const visit = (inner) => {
    for (const entry of readdirSync(path.join(root, inner), { withFileTypes: true })) {
      const file = path.join(inner, entry.name);
      if (entry.isDirectory()) visit(file);
      else found.push({ file, text: readFileSync(path.join(root, file), 'utf8') });
    }
  };
  visit('');
  return found.sort((left, right) => (left.file < right.file ? -1 : 1));
}

const notesOf = (root) => filesOf(root).filter(({ file }) => /\.(md|txt)$/.test(file));

const hits = (notes, query) => {
  const wanted = query.normalize('NFC').toLowerCase();
  return notes.filter(({ file, text }) => `${path.basename(file)}\n${text}`.normalize('NFC').toLowerCase().includes(wanted)).length;
};

test('every word stands in as many notes as it should', () => {
  const notes = notesOf(bucketOf(200, folder));

  assert.equal(notes.length, 200);
  assert.equal(hits(notes, queries.none), 0);
  assert.equal(hits(notes, queries.one), 1);
  assert.equal(hits(notes, queries.quarter), 50);
  assert.equal(hits(notes, queries.all), 200);
});

test('a bucket is the same every time, and made once', () => {
  const first = filesOf(bucketOf(60, folder));
  const elsewhere = filesOf(bucketOf(60, path.join(folder, 'again')));

  assert.deepEqual(first, elsewhere);
  rmSync(path.join(folder, 'bucket-60', first[0].file));
  assert.equal(filesOf(bucketOf(60, folder)).length, first.length - 1);
});
