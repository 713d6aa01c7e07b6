import assert from 'node:assert/strict';
import { test } from 'node:test';
import { schema } from '../../src/schema';
import { adjusted } from '../../src/source/adjust';

const { nodes, marks } = schema;

test('what can be written stays the same node', () => {
  const block = nodes.paragraph.create(null, schema.text('a\nb'));

  assert.equal(adjusted(block), block);
});

test('only an item that begins with a paragraph keeps its box', () => {
  const heading = nodes.heading.create(null, schema.text('a'));
  const list = nodes.list.create(null, nodes.list_item.create({ checked: true }, heading));

  assert.equal(adjusted(list).firstChild!.attrs.checked, null);
});

test('lines of a low heading are joined, those of a high one stay', () => {
  const heading = (level: number) => nodes.heading.create({ level }, schema.text('a\nb'));

  assert.equal(adjusted(heading(3)).textContent, 'a b');
  assert.equal(adjusted(heading(2)).textContent, 'a\nb');
});

test('a table gets one header row, equally long rows and the alignment of its columns', () => {
  const cell = (value: string, attrs: object = {}) => nodes.table_cell.create(attrs, schema.text(value));
  const head = nodes.table_row.create(null, [cell('a', { align: 'right' }), cell('b')]);
  const body = nodes.table_row.create(null, [nodes.table_header.create(null, schema.text('c'))]);

  const [first, second] = adjusted(nodes.table.create(null, [head, body])).children;
  assert.deepEqual(
    first!.children.map((one) => one.type.name),
    ['table_header', 'table_header'],
  );
  assert.deepEqual(
    second!.children.map((one) => one.type.name),
    ['table_cell', 'table_cell'],
  );
  assert.deepEqual(
    second!.children.map((one) => one.attrs.align),
    ['right', null],
  );
});

test('a wide cell becomes several', () => {
  const row = nodes.table_row.create(null, nodes.table_header.create({ colspan: 3 }, schema.text('a')));

  assert.equal(adjusted(nodes.table.create(null, row)).firstChild!.childCount, 3);
});

test('nodes other than text are no code', () => {
  const image = nodes.image.create({ src: 'a' }, null, [marks.code.create()]);

  assert.equal(adjusted(nodes.paragraph.create(null, image)).firstChild!.marks.length, 0);
});
