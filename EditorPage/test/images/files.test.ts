import assert from 'node:assert/strict';
import { test } from 'node:test';
import { picturesIn, withEnding } from '../../src/images/files';

const file = (name: string, type: string) => ({ name, type }) as File;
const drop = (files: File[], text = '') => ({ files: files as unknown as FileList, getData: (kind: string) => (kind === 'text/plain' ? text : '') });

test('only pictures are taken', () => {
  const [png, pdf] = [file('a.png', 'image/png'), file('b.pdf', 'application/pdf')];
  assert.deepEqual(picturesIn(drop([png, pdf])), [png]);
  assert.deepEqual(picturesIn(drop([])), []);
  assert.deepEqual(picturesIn(null), []);
});

test('what comes as text too is taken as text', () => assert.deepEqual(picturesIn(drop([file('a.png', 'image/png')], 'a\tb')), []));

/** Name and type of a file, and the name that it gets. */
const cases: readonly (readonly [string, string, string])[] = [
  ['Foto 1.JPG', 'image/jpeg', 'Foto 1.JPG'],
  ['image.png', 'image/png', 'Bild.png'],
  ['', 'image/webp', 'Bild.webp'],
  ['skiss', 'image/svg+xml', 'skiss.svg'],
];

for (const [name, type, wanted] of cases) test(`${name || 'no name'} is ${wanted}`, () => assert.equal(withEnding({ name, type }), wanted));
