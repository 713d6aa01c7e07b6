import assert from 'node:assert/strict';
import { test } from 'node:test';
import { labelKey, read } from '../../src/markdown/parse';

const types = (source: string, isStart = false, labels: string[] = []) =>
  read(source, isStart, new Set(labels)).blocks.map((block) => block.type);

test('labels are compared without case and runs of blanks', () => {
  assert.equal(labelKey(' Foo \n BAR '), labelKey('foo bar'));
});

test('labels that the rest of the note defines make links', () => {
  const linked = (labels: string[]) => {
    const { blocks, shift } = read('see [A b] and [^1]', false, new Set(labels));
    const [paragraph] = blocks as Array<{ children: Array<{ type: string }>; position: { start: { offset: number } } }>;
    assert.equal(paragraph!.position.start.offset, shift);
    return paragraph!.children.map((child) => child.type);
  };

  assert.deepEqual(linked([]), ['text']);
  assert.deepEqual(linked(['a b']), ['text', 'linkReference', 'text']);
  assert.deepEqual(linked(['a b', '^1']), ['text', 'linkReference', 'text', 'footnoteReference']);
});

test('labels that the rest of the note defines make links below front matter too', () => {
  const inParagraph = (source: string) => {
    const blocks = read(source, true, new Set(['x', '^1'])).blocks as Array<{ type: string; value?: string; children?: Array<{ type: string }> }>;
    return blocks.map(({ type, value, children }) => children?.map((child) => child.type) ?? `${type}: ${value}`);
  };

  assert.deepEqual(inParagraph('---\na: 1\n---\n[x] and [^1]\n'), ['yaml: a: 1', ['linkReference', 'text', 'footnoteReference']]);
  assert.deepEqual(inParagraph('---\na: 1\n---\n```\n[x]\n'), ['yaml: a: 1', 'code: [x]']);
  assert.deepEqual(inParagraph('---\na: 1\n---\n<!-- [x]\n'), ['yaml: a: 1', 'html: <!-- [x]\n']);
});

test('a footnote of the rest of the note does not take in what is read', () => {
  assert.deepEqual(types('    code [^1]', false, ['^1']), ['code']);
});

test('front matter stands at the start, with both its fences', () => {
  assert.deepEqual(types('---\na: 1\n---\n', true), ['yaml']);
  assert.deepEqual(types('---\n---\n', true), ['yaml']);
  assert.deepEqual(types('---\na: 1\n---\n', false), ['thematicBreak', 'heading']);
  assert.deepEqual(types('---\n\n> a\n', true), ['thematicBreak', 'blockquote']);
});

test('two tildes strike, and one is a tilde', () => {
  const [paragraph] = read('H~2~O and ~~gone~~', false).blocks as Array<{ children: Array<{ type: string }> }>;

  assert.deepEqual(paragraph!.children.map((child) => child.type), ['text', 'delete']);
});
