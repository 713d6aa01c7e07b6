import assert from 'node:assert/strict';
import { test } from 'node:test';
import { EditorState } from 'prosemirror-state';
import { schema } from '../../src/schema';
import { readBlock, type Block } from '../../src/source/entries';
import { readPart } from '../../src/source/local';
import { spliced, type Splice } from '../../src/source/patch';
import { withChildren } from '../../src/source/place';
import { disagreement, Session } from '../editing';

const { nodes } = schema;
const labels = new Set<string>();

const longList = Array.from({ length: 300 }, (_, index) => `- item ${index}`).join('\n');
const longTable = `| n |\n|---|\n${Array.from({ length: 400 }, (_, index) => `| row ${index} |`).join('\n')}`;
const longQuote = Array.from({ length: 200 }, (_, index) => `> paragraph ${index}`).join('\n>\n');

/** The block after a splice, read in part and read whole. */
function both(source: string, type: Block['parsed']['type'], splice: Splice) {
  const block = readBlock(source, type, labels)!;
  const whole = readBlock(spliced(source, splice), type, labels)!;
  return { part: readPart(block, splice, whole.parsed, labels), whole };
}

for (const [name, source, type, found] of [
  ['list', longList, nodes.list, 'item 150'],
  ['table', longTable, nodes.table, 'row 150'],
  ['quote', longQuote, nodes.blockquote, 'paragraph 150'],
] as const) {
  test(`a part of a long ${name} reads as the whole does`, () => {
    const at = source.indexOf(found) + found.length;
    const { part, whole } = both(source, type, { from: at, to: at, text: ' **and more**' });

    assert.ok(part);
    assert.ok(part.parsed.eq(whole.parsed));
    assert.deepEqual(part.piece, whole.piece);
  });
}

test('a row of a long table has as many cells as the widest row', () => {
  const source = `${longTable}\n| a | b | c |`;
  const at = source.indexOf('row 150') + 7;
  const { part, whole } = both(source, nodes.table, { from: at, to: at, text: ' x' });

  assert.ok(part);
  assert.ok(part.parsed.eq(whole.parsed));
  assert.deepEqual(part.piece, whole.piece);
});

test('an item that would swallow the next one is noticed', () => {
  const block = readBlock(longList, nodes.list, labels)!;
  const at = longList.indexOf('- item 150');
  const splice = { from: at, to: at, text: '  ' };

  assert.equal(
    readPart(block, splice, withChildren(block.parsed, [], 150, 151, [block.parsed.child(150)]), labels),
    undefined,
  );
  assert.equal(readPart(block, { ...splice, from: at + 1, to: at + 2, text: '' }, edited(block), labels), null);
});

/** The list with other text in item 150. */
function edited(block: Block) {
  const item = nodes.list_item.create(null, nodes.paragraph.create(null, schema.text('other')));
  return withChildren(block.parsed, [], 150, 151, [item]);
}

test('five thousand items are edited at every place', () => {
  const session = new Session(`${Array.from({ length: 5000 }, (_, index) => `- item ${index}`).join('\n')}\n`);
  for (const index of [0, 1, 2500, 4999]) {
    let pos = 1;
    for (let before = 0; before < index; before += 1) pos += session.state.doc.firstChild!.child(before).nodeSize;
    session.dispatch(session.state.tr.insertText('x', pos + 2));
  }

  assert.ok(session.source.text.startsWith('- xitem 0\n- xitem 1\n- item 2\n'));
  assert.ok(session.source.text.endsWith('- xitem 4999\n'));
  assert.equal(disagreement(session.source), null);
  assert.equal(EditorState.create({ doc: session.source.doc }).doc.firstChild!.childCount, 5000);
});
