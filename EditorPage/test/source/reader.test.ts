import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Fragment, Slice } from 'prosemirror-model';
import { schema } from '../../src/schema';
import { SourceDocument } from '../../src/source/SourceDocument';
import { commonMarkExamples, edgeNotes, gfmExamples, packageFiles, variants, type Sample } from '../corpus';
import { Random } from '../random';

/** The note read in parts of about `length` characters, the document brought along by what each part tells. */
function readInParts(text: string, length: number) {
  const source = SourceDocument.load(text, length);
  const children = [...source.doc.children];
  let parts = 1;
  for (; !source.isRead; parts += 1) {
    assert.equal(source.text, text);
    const { from, to, nodes } = source.readOn(length)!;
    children.splice(from, to - from, ...nodes);
    assert.ok(children.length === source.doc.childCount && children.every((child, index) => child === source.doc.child(index)));
  }
  return { source, parts };
}

/** What reading in parts gets wrong, in one line for each sample. */
function failures(samples: readonly Sample[], length: number): string[] {
  return samples.flatMap(({ name, text }) => {
    const whole = SourceDocument.load(text);
    const { source } = readInParts(text, length);
    if (!source.doc.eq(whole.doc)) return [`${name}: another document`];
    return source.pieces.join('\u0001') === whole.pieces.join('\u0001') ? [] : [`${name}: other pieces`];
  });
}

const isLong = Boolean(process.env.LONG);
const examples = [...commonMarkExamples(), ...gfmExamples(), ...edgeNotes()].filter(({ text }) => text.length < 10_000);

/** Notes of a few examples each, with more or less between them. */
function mixtures(count: number): Sample[] {
  return Array.from({ length: count }, (_, index) => {
    const random = new Random(index);
    const texts = Array.from({ length: 2 + random.below(4) }, () => random.pick(examples).text);
    const between = random.pick(['\n', '\n\n', '\n\nOrd\n\n', '\n\n# Rubrik\n\n', '\n  ', '\n\n   ']);
    return { name: `mixture ${index}`, text: `Ord\n\n${texts.join(between)}\n\n# Slut\n\nSist\n` };
  });
}

test('a note that is read in the smallest parts is the note that is read at once', () => {
  assert.deepEqual(failures(examples.flatMap(variants), 1), []);
});

test('so are notes that hold several of the examples', () => {
  assert.deepEqual(failures(mixtures(isLong ? 20_000 : 400), 1), []);
});

test('so are the files of the installed packages', () => {
  const files = packageFiles().filter((_, index) => isLong || index % 6 === 0);

  assert.deepEqual(failures(files, 500), []);
});

test('an ordinary note is read in parts of about the length that is asked for', () => {
  const text = 'Ord och mer.\n\n- ett\n- två\n\n## Rubrik\n\n```\n# kod\n\nkod\n```\n\n'.repeat(40);

  const { parts } = readInParts(text, 100);

  assert.ok(parts >= text.length / 100 / 2 && parts <= text.length / 100, `${parts} parts of ${text.length}`);
});

test('a link is one before its definition is read', () => {
  const source = SourceDocument.load('Se [här] och [där].\n\nMellan.\n\n> [här]: https://example.org\n', 1);

  assert.equal(source.doc.childCount, 1);
  assert.equal(source.doc.child(0).child(1).marks[0]?.type.name, 'link');
});

test('what only looked like the definition of a link makes none in the end', () => {
  const source = SourceDocument.load('Se [här].\n\nMellan.\n\n```\n[här]: https://example.org\n```\n', 1);

  const correction = source.readOn()!;

  assert.deepEqual([correction.from, correction.to, correction.nodes.length], [0, 1, 3]);
  assert.equal(source.doc.child(0).childCount, 1);
});

test('an edit of a note that is not read to its end keeps the rest', () => {
  const text = 'Först [här].\n\nMellan.\n\n[här]: https://example.org\n';
  const source = SourceDocument.load(text, 1);
  const { doc } = source;
  const edited = doc.replace(1, 1, new Slice(Fragment.from(schema.text('Allra ')), 0, 0));

  const complete = source.completed(edited);
  source.apply(complete);

  assert.equal(source.text, `Allra ${text}`);
});

test('an edited document without the rest is refused', () => {
  const source = SourceDocument.load('Först.\n\nSedan.\n', 1);

  assert.throws(() => source.apply(source.doc), /not read to its end/);
});
