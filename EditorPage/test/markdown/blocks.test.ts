import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Node } from 'prosemirror-model';
import type { Piece } from '../../src/markdown/piece';
import { readEntries } from '../../src/source/entries';
import { allSamples } from '../corpus';

const shown = (text: string) => readEntries(text, true).entries.map((entry) => entry.node.toString());

test('every kind of block has its node', () => {
  const cases: Array<[string, string]> = [
    ['# a', 'heading("a")'],
    ['a\nb  \nc', 'paragraph("a\\nb", hard_break, "c")'],
    ['> a\n> > b', 'blockquote(paragraph("a"), blockquote(paragraph("b")))'],
    ['- a\n- [x] b\n- [ ]', 'list(list_item(paragraph("a")), list_item(paragraph("b")), list_item(paragraph))'],
    ['A. a\nB. b', 'letter_list(letter_item(paragraph("a")), letter_item(paragraph("b")))'],
    ['    code', 'code_block("code")'],
    ['$$\nx\n$$', 'math_block("x")'],
    ['<div>\na', 'html_block("<div>\\na")'],
    ['[a]: /x', 'definition("[a]: /x")'],
    ['[^1]: a', 'footnote_definition(paragraph("a"))'],
    ['---', 'horizontal_rule'],
    ['| a |\n|---|\n| b |', 'table(table_row(table_header("a")), table_row(table_cell("b")))'],
    ['+++\na = 1\n+++', 'front_matter("a = 1")'],
  ];
  for (const [text, expected] of cases) assert.deepEqual(shown(text), [expected], text);
});

test('boxes are read with the items that have them', () => {
  const [list] = readEntries('- a\n- [x] b\n- [ ] c\n- [ ]\n', true).entries;

  assert.deepEqual(
    list!.node.children.map((item) => item.attrs.checked),
    [null, true, false, false],
  );
});

test('all rows of a table are as long as its longest', () => {
  const [table] = readEntries('| a | b |\n|:-:|---|\n| 1 |\n| 1 | 2 | 3 |\n', true).entries;

  assert.deepEqual(
    table!.node.children.map((row) => row.childCount),
    [3, 3, 3],
  );
  assert.deepEqual(
    table!.node.child(1).children.map((cell) => cell.attrs.align),
    ['center', null, null],
  );
});

test('a rule at the start does not spoil what follows', () => {
  assert.deepEqual(shown('---\n\n- a\n'), ['horizontal_rule', 'list(list_item(paragraph("a")))']);
});

test('a letter alone is no list', () => {
  assert.deepEqual(shown('A. Smith'), ['paragraph("A. Smith")']);
  assert.deepEqual(shown('A. Smith\nC. Jones'), ['paragraph("A. Smith\\nC. Jones")']);
});

/** Calls back for every text block with the source offset of its piece. */
function visit(node: Node, piece: Piece, start: number, found: (node: Node, piece: Piece, start: number) => void) {
  if (node.isTextblock) found(node, piece, start);
  else
    node.forEach((child, _offset, index) =>
      visit(child, piece.children[index]!, start + piece.children[index]!.start, found),
    );
}

test('every stretch of text stands in the source where its place says', () => {
  let compared = 0;
  for (const { text, name } of allSamples(4).filter(
    (sample) => !/[\r\0]/.test(sample.text) && sample.text.length < 100_000,
  )) {
    for (const { parsed, piece, source } of readEntries(text, true).entries) {
      visit(parsed, piece, piece.start, (node, own, start) => {
        for (const { at, size, from, length } of own.segments) {
          if (size !== length || size === 0) continue;
          const written = source.slice(start + from, start + from + length).replace(/\n/g, ' ');
          assert.equal(written, node.textBetween(at, at + size, '', ' ').replace(/\n/g, ' '), name);
          compared += 1;
        }
      });
    }
  }
  assert.ok(compared > 5000);
});
