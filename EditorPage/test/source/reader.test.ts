import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Node } from 'prosemirror-model';
import { isFolded, sourceOf } from '../../src/source/folded';
import { isSame } from '../../src/source/normal';
import { SourceDocument } from '../../src/source/SourceDocument';
import { commonMarkExamples, edgeNotes, gfmExamples, packageFiles, variants, type Sample } from '../corpus';
import { Random, seedOf } from '../random';

/** The note with the rest behind its first part unfolded piece by piece in any order. */
function unfolded(text: string, length: number, random: Random): SourceDocument {
  const source = SourceDocument.load(text, length);
  const children = [...source.doc.children];
  for (;;) {
    const folded = children.filter(isFolded);
    if (folded.length === 0) return source;
    const node = random.pick(folded);
    const corrections = source.unfold(node, random.below(sourceOf(node).length), 1 + random.below(2 * length));
    for (const { from, to, nodes } of [...corrections].reverse()) children.splice(from, to - from, ...nodes);
    assert.ok(children.length === source.doc.childCount && children.every((child, index) => child === source.doc.child(index)));
    assert.equal(source.text, text);
    assert.equal(source.pieces.join(''), text);
  }
}

/** Whether two documents say the same block by block: HTML that nothing closes may or may not hold the line ends behind it. */
function isSameDocument(one: Node, other: Node): boolean {
  return one.childCount === other.childCount && one.children.every((child, index) => isSame(child, other.child(index)));
}

/** What unfolding gets wrong, in one line for each sample. */
function failures(samples: readonly Sample[], length: number): string[] {
  return samples.flatMap(({ name, text }) => {
    const whole = SourceDocument.load(text);
    const source = unfolded(text, length, new Random(seedOf(name)));
    return isSameDocument(source.doc, whole.doc) ? [] : [`${name}: another document`];
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

test('a note that is unfolded in the smallest parts is the note that is read at once', () => {
  assert.deepEqual(failures(examples.flatMap(variants), 1), []);
});

test('so are notes that hold several of the examples', () => {
  assert.deepEqual(failures(mixtures(isLong ? 20_000 : 400), 1), []);
});

test('so are the files of the installed packages', () => {
  const files = packageFiles().filter((_, index) => isLong || index % 6 === 0);

  assert.deepEqual(failures(files, 500), []);
});

test('an ordinary note is unfolded in parts of about the length that is asked for', () => {
  const text = 'Ord och mer.\n\n- ett\n- två\n\n## Rubrik\n\n```\n# kod\n\nkod\n```\n\n'.repeat(40);
  const source = SourceDocument.load(text, 100);

  let parts = 1;
  for (let last = source.doc.lastChild!; isFolded(last); last = source.doc.lastChild!, parts += 1) source.unfold(last, 0, 1);

  assert.ok(parts >= text.length / 100 / 2 && parts <= text.length / 100, `${parts} parts of ${text.length}`);
});

test('a link is one before its definition is read', () => {
  const source = SourceDocument.load('Se [här] och [där].\n\nMellan.\n\n> [här]: https://example.org\n', 1);

  assert.equal(source.doc.childCount, 2);
  assert.equal(source.doc.child(0).child(1).marks[0]?.type.name, 'link');
  assert.deepEqual(source.definitionFor('här'), { url: 'https://example.org', title: null });
});

test('what only looked like the definition of a link makes none once it is read', () => {
  const source = SourceDocument.load('Se [här].\n\nMellan.\n\n```\n[här]: https://example.org\n```\n', 1);

  const corrections = source.unfold(source.doc.lastChild!);

  assert.deepEqual(corrections.map(({ from, to, nodes }) => [from, to, nodes.length]), [[0, 1, 1], [1, 2, 2]]);
  assert.equal(source.doc.child(0).childCount, 1);
});
