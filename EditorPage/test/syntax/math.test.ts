import assert from 'node:assert/strict';
import { test } from 'node:test';
import { writeBlock } from '../../src/markdown/write';
import { schema } from '../../src/schema';
import { readEntries } from '../../src/source/entries';

const first = (text: string) => readEntries(text, true).entries[0]!.node;
const formulas = (text: string) =>
  first(text)
    .children.filter((child) => child.type.name === 'math_inline')
    .map((child) => child.attrs.value);

test('a formula before a digit is written so that it ends there', () => {
  const { math_inline: formula, paragraph } = schema.nodes;
  const text = writeBlock(paragraph.create(null, [formula.create({ value: 'x' }), schema.text('1')]));
  assert.equal(text, '$$x$$1');
  assert.deepEqual(formulas(text), ['x']);
});

test('dollars close to what they hold are a formula', () => {
  assert.deepEqual(formulas('a $x^2$, $$y$$ and $z_1*b*$.'), ['x^2', 'y', 'z_1*b*']);
  assert.deepEqual(formulas('$a\nb$'), ['a b']);
});

test('amounts of money are text', () => {
  for (const text of ['$5 and $10', '$ a $', 'a$5', '$5 or $x', '\\$x$', '`$x$`'])
    assert.deepEqual(formulas(text), [], text);
  assert.deepEqual(formulas('$5 and $x^2$'), ['x^2']);
});

test('a block of dollars is a block', () => {
  const block = first('$$\nx_1\n$$\n');

  assert.equal(block.type.name, 'math_block');
  assert.equal(block.textContent, 'x_1');
});
