import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Node } from 'prosemirror-model';
import { schema } from '../../src/schema';
import { isBlank, isSame, isSameButLinks, tidy } from '../../src/source/normal';

const { nodes, marks } = schema;
const strong = marks.strong.create();
const paragraph = (...content: Node[]) => nodes.paragraph.create(null, content);
const text = (value: string, ...own: Parameters<typeof schema.text>[1] & object) => schema.text(value, own);

test('blanks at the ends of lines do not count', () => {
  const written = paragraph(text('a'), nodes.hard_break.create(), text('b\nc'));
  const shown = paragraph(text(' a '), nodes.hard_break.create(), text(' b \n c\t'), nodes.hard_break.create());

  assert.ok(isSame(shown, written));
  assert.ok(!isSame(paragraph(text('a b')), paragraph(text('ab'))));
});

test('a mark does not hold on blanks at its edges', () => {
  const shown = paragraph(text('a'), text(' b ', strong), text('c'));
  const written = paragraph(text('a '), text('b', strong), text(' c'));

  assert.ok(tidy(shown).eq(written));
});

test('a mark holds on blanks between what it marks', () => {
  const block = paragraph(text('a b', strong));

  assert.equal(tidy(block), block);
});

test('blanks in code count', () => {
  assert.ok(!isSame(paragraph(text('a', marks.code.create())), paragraph(text('a ', marks.code.create()))));
});

test('no break spaces count', () => {
  assert.ok(!isBlank(paragraph(text('\u00a0'))));
  assert.ok(isBlank(paragraph(text(' \t'))));
});

test('empty paragraphs beside others in a quote do not count', () => {
  const quote = nodes.blockquote.create(null, [paragraph(), paragraph(text('a')), paragraph()]);

  assert.ok(isSame(quote, nodes.blockquote.create(null, paragraph(text('a')))));
});

test('the empty paragraph of a task with a list below counts', () => {
  const list = nodes.list.create(null, nodes.list_item.create(null, paragraph(text('a'))));
  const task = nodes.list_item.create({ checked: false }, [paragraph(), list]);

  assert.equal(tidy(task).childCount, 2);
});

test('how a link names its definition does not count, but where it points does', () => {
  const link = (attrs: object) => paragraph(text('a', marks.link.create(attrs)));

  assert.ok(isSame(link({ reference: 'shortcut', label: 'a' }), link({ reference: 'full', label: 'a' })));
  assert.ok(!isSame(link({ reference: 'full', label: 'a' }), link({ reference: 'full', label: 'b' })));
  assert.ok(!isSame(link({ href: 'a' }), link({ href: 'b' })));
});

test('links that addresses become by themselves can be left out', () => {
  const link = marks.link.create({ href: 'http://www.x.se', auto: true });

  assert.ok(isSameButLinks(paragraph(text('www.x.se', link), text(' a')), paragraph(text('www.x.se a'))));
  assert.ok(!isSameButLinks(paragraph(text('a', marks.link.create({ href: 'x' }))), paragraph(text('a'))));
});
