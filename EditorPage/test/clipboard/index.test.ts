import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Slice } from 'prosemirror-model';
import { CellSelection } from 'prosemirror-tables';
import { copiedText, literalText } from '../../src/clipboard/index';
import { withPlainTables } from '../../src/clipboard/tables';
import { schema } from '../../src/schema';
import { situation } from '../commands/onText';

function selected(marked: string): Slice {
  return situation(marked).state.selection.content();
}

const copies: readonly (readonly [string, string])[] = [
  ['a ‹b› c\n', 'b'],
  ['a **‹b c›** d\n', '**b c**'],
  ['- a\n- b‹c›d\n', 'c'],
  ['> - a‹b›\n', 'b'],
  ['# a‹b›\n', 'b'],
  ['a‹b\n\n# c›d\n', 'b\n\n# c'],
  ['- a‹b\n- c›d\n', '- b\n- c'],
  ['```\na‹ **b›**\n```\n', ' **b'],
  ['‹a [[B|c]] $x$›\n', 'a [[B|c]] $x$'],
];

for (const [marked, text] of copies) {
  test(`copies ${JSON.stringify(marked)} as Markdown`, () => {
    assert.equal(copiedText(selected(marked)), text);
  });
}

test('copied cells are one table', () => {
  const { state } = situation('| a | b |\n| - | - |\n| c | d |\n| e | f |\n');
  const cells: number[] = [];
  state.doc.descendants((node, pos) => void (/_cell|_header/.test(node.type.name) && cells.push(pos)));
  const copied = (from: number, to: number) => copiedText(CellSelection.create(state.doc, cells[from]!, cells[to]!).content());
  assert.equal(copied(2, 5), '| c | d |\n| - | - |\n| e | f |');
  assert.equal(copied(1, 3), '| b |\n| - |\n| d |');
  assert.equal(copied(0, 5), '| a | b |\n| - | - |\n| c | d |\n| e | f |');
});

test('a pasted table becomes a full grid with one head', () => {
  const { table, table_row: row, table_cell: cell, table_header: header, doc } = schema.nodes;
  const text = (word: string) => schema.text(word);
  const ragged = table.create(null, [
    row.create(null, [cell.create({ colspan: 2 }, text('a'))]),
    row.create(null, [header.create(null, text('b')), cell.create(null, text('c')), cell.create(null, text('d'))]),
  ]);
  const shaped = withPlainTables(doc.create(null, ragged).slice(0)).content.firstChild!;
  assert.deepEqual(shaped.children.map((each) => each.children.map((one) => `${one.type.name} ${one.textContent}`)), [
    ['table_header a', 'table_header ', 'table_header '],
    ['table_cell b', 'table_cell c', 'table_cell d'],
  ]);
});

test('cells that reach over rows leave their columns to nobody else', () => {
  const { table, table_row: row, table_cell: cell, doc } = schema.nodes;
  const text = (word: string) => schema.text(word);
  const spanning = table.create(null, [
    row.create(null, [cell.create({ rowspan: 2 }, text('a')), cell.create(null, text('b'))]),
    row.create(null, [cell.create(null, text('c'))]),
    row.create(null, [cell.create({ colspan: 2, rowspan: 9 }, text('d'))]),
  ]);
  const shaped = withPlainTables(doc.create(null, spanning).slice(0)).content.firstChild!;
  assert.deepEqual(shaped.children.map((each) => each.children.map((one) => one.textContent)), [['a', 'b'], ['', 'c'], ['d', '']]);
});

test('text to be taken letter by letter keeps its lines and its empty lines', () => {
  const paragraphs = (text: string) => literalText(text).content.content.map((node) => node.textContent);
  assert.deepEqual(paragraphs('# a\r\n- b'), ['# a\n- b']);
  assert.deepEqual(paragraphs('a\n\nb\n\n\nc'), ['a', 'b', '', 'c']);
  assert.deepEqual(paragraphs('a\n'), ['a\n']);
});
