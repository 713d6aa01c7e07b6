import assert from 'node:assert/strict';
import { test } from 'node:test';
import { readEntries } from '../../src/source/entries';

const shown = (text: string) => readEntries(text, true).entries[0]!.node.toString();

test('two equals signs mark text', () => {
  assert.equal(shown('a ==b== c'), 'paragraph("a ", highlight("b"), " c")');
  assert.equal(
    shown('==a *b* c=='),
    'paragraph(highlight("a "), highlight(em("b")), highlight(" c"))'.replace(
      'highlight(em("b"))',
      'em(highlight("b"))',
    ),
  );
  assert.equal(shown('*a ==b== c*'), 'paragraph(em("a "), em(highlight("b")), em(" c"))');
});

test('other equals signs are text', () => {
  for (const text of ['a == b == c', 'a =b= c', '===b===', '==a', 'x==', '\\==a==']) {
    assert.ok(!shown(text).includes('highlight'), text);
  }
});

test('marks never cross', () => {
  assert.equal(shown('==a ~~b== c~~'), 'paragraph(highlight("a ~~b"), " c~~")');
  assert.equal(shown('==a== b ==c=='), 'paragraph(highlight("a"), " b ", highlight("c"))');
});
