import assert from 'node:assert/strict';
import { test } from 'node:test';
import { schema } from '../src/schema';

const { nodes } = schema;
const paragraph = (text = '') => nodes.paragraph.create(null, text ? schema.text(text) : null);

test('front matter stands first or nowhere', () => {
  const front = nodes.front_matter.create(null, schema.text('a: 1'));

  assert.ok(nodes.doc.validContent(nodes.doc.create(null, [front, paragraph()]).content));
  assert.ok(!nodes.doc.validContent(nodes.doc.create(null, [paragraph(), front]).content));
});

test('headings and table cells hold no line break', () => {
  const line = [schema.text('a'), nodes.hard_break.create(), schema.text('b')];

  assert.ok(nodes.paragraph.validContent(nodes.paragraph.create(null, line).content));
  assert.ok(!nodes.heading.validContent(nodes.heading.create(null, line).content));
  assert.ok(!nodes.table_cell.validContent(nodes.table_cell.create(null, line).content));
});

test('a letter item is one paragraph', () => {
  const two = nodes.letter_item.create(null, [paragraph('a'), paragraph('b')]);

  assert.ok(!nodes.letter_item.validContent(two.content));
});
