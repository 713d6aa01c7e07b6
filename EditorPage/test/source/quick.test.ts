import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Fragment, Slice, type Node } from 'prosemirror-model';
import { EditorState } from 'prosemirror-state';
import { schema } from '../../src/schema';
import { readBlock, type Block } from '../../src/source/entries';
import { isSame } from '../../src/source/normal';
import { placesAlong, withNode } from '../../src/source/place';
import { quickEdit } from '../../src/source/quick';
import { SourceDocument } from '../../src/source/SourceDocument';
import { spliced, type Splice } from '../../src/source/patch';
import { Random } from '../random';
import { disagreement } from '../editing';

const vocabulary = [
  'och',
  'ord,',
  'slut.',
  '*fet*',
  '**a',
  'b**',
  '`kod x',
  'y`',
  '[a b]',
  '(c)',
  'a_b',
  '$5',
  'x$',
  '==m',
  'n==',
  '1.',
  '#',
  '-',
  '!',
  '\\',
  '&',
  'www.x',
  'a@b',
  ':',
  '~~',
  'Å',
  '\n',
  '[[',
  ']]',
  '[a',
  'b]',
  '](/x',
  ')',
  '\\]',
  '`]`',
  ' ',
];

function someText(random: Random, length: number): string {
  // Brackets make the rules stricter: half of the texts are without.
  const own = random.below(2) === 0 ? vocabulary : vocabulary.filter((word) => !word.includes('['));
  const words = Array.from({ length }, () => (random.below(2) === 0 ? 'plain' : random.pick(own)));
  return `Början ${words.join(' ').replace(/ ?\n ?/g, '\nrad ')} slut`;
}

/** What a text block may stand in: the markers of its first line and of the further ones, and the way to it. */
const containers: ReadonlyArray<readonly [string, string, readonly number[]]> = [
  ['', '', []],
  ['# ', '', []],
  ['> ', '> ', [0]],
  ['- ', '  ', [0, 0]],
  ['1. ', '   ', [0, 0]],
  ['- [ ] ', '  ', [0, 0]],
  ['> - ', '>   ', [0, 0, 0]],
];

const typed = ['x', 'å', ' ', ',', '.', ' ord', 'ord ', 'a b', ''];

/** The block with a splice of its text carried out in the document only, and how that text was marked. Null where it is no text. */
function typedInto(block: Block, path: readonly number[], { from, to, text }: Splice): Node | null {
  const { node, piece, start } = placesAlong(block, path).at(-1)!;
  const segment = piece.segments.find((one) => one.size === one.length && start + one.from <= from && to <= start + one.from + one.length);
  if (!segment || !node.isTextblock) return null;
  const at = segment.at + from - start - segment.from;
  const marks = node.childAfter(segment.at).node!.marks;
  const slice = new Slice(text === '' ? Fragment.empty : Fragment.from(schema.text(text, marks)), 0, 0);
  return withNode(block.parsed, path, node.replace(at, at + to - from, slice));
}

test('what is not read back would have read the same', () => {
  let quick = 0;
  for (let seed = 1; seed <= (process.env.LONG ? 20_000 : 300); seed += 1) {
    const random = new Random(seed);
    const [first, further, path] = random.pick(containers);
    const text = first + someText(random, random.pick([3, 20, 100])).replace(/\n/g, first === '# ' ? ' ' : `\n${further}`);
    const type = SourceDocument.load(text).doc.firstChild!.type;
    const labels = new Set(random.below(2) === 0 ? [] : ['a b', 'plain', 'x']);
    const block = readBlock(text, type, labels);
    if (!block) continue;
    for (let attempt = 0; attempt < 40; attempt += 1) {
      const from = random.below(text.length);
      const splice: Splice = { from, to: Math.min(text.length, from + random.below(3)), text: random.pick(typed) };
      const expected = typedInto(block, path, splice);
      const edited: Block | null = expected && quickEdit(block, splice, expected, path);
      if (!edited) continue;
      quick += 1;
      const read = readBlock(spliced(text, splice), type, labels);
      const what = `seed ${seed}, ${JSON.stringify(splice)} in ${JSON.stringify(text)}`;
      assert.ok(read && expected && isSame(read.parsed, expected), what);
      assert.deepEqual(edited.piece, read.piece, what);
    }
  }
  assert.ok(quick > 1000, `${quick} edits were quick`);
});

test('text that is marked in another way than the text around it is read back', () => {
  const block = readBlock('Början med ett ord till slut', schema.nodes.paragraph)!;
  const splice: Splice = { from: 14, to: 14, text: 'x' };
  const bold = block.parsed.replace(14, 14, new Slice(Fragment.from(schema.text('x', [schema.marks.strong.create()])), 0, 0));

  assert.equal(quickEdit(block, splice, bold, []), null);
  assert.ok(quickEdit(block, splice, typedInto(block, [], splice)!, []));
});

test('taking the bold off words in a long paragraph takes it off their text', () => {
  const source = SourceDocument.load(`${'ord och '.repeat(300)}**några feta ord** ${'till sist '.repeat(50)}\n`);
  const at = 1 + source.doc.textContent.indexOf('feta');
  const state = EditorState.create({ doc: source.doc });

  source.apply(state.apply(state.tr.removeMark(at, at + 4, schema.marks.strong)).doc);

  assert.ok(source.text.includes('**några** feta **ord**'), source.text.slice(2390, 2440));
});

test('letters typed into a long paragraph need no reading, and the text agrees all the same', () => {
  const source = SourceDocument.load(`${'ord och **text**, '.repeat(800)}\n\nend\n`);
  let state = EditorState.create({ doc: source.doc });
  const words = state.doc.firstChild!.textContent.indexOf('och', 4000);
  for (const [index, letter] of [...' nya ord, skrivna.'].entries()) {
    state = state.apply(state.tr.insertText(letter, 1 + words + 3 + index));
    source.apply(state.doc);
  }

  assert.ok(source.text.includes('och nya ord, skrivna. **text**'));
  assert.equal(disagreement(source), null);
});

test('code is edited line by line without reading the rest', () => {
  const lines = Array.from({ length: 400 }, (_, index) => `line ${index};`).join('\n');
  const source = SourceDocument.load(`\`\`\`js\n${lines}\n\`\`\`\n`);
  let state = EditorState.create({ doc: source.doc });
  state = state.apply(state.tr.insertText('x', 1 + 'line 0;'.length));
  source.apply(state.doc);
  assert.ok(source.text.startsWith('```js\nline 0;x\nline 1;'));

  state = state.apply(state.tr.insertText('```', 1));
  source.apply(state.doc);
  assert.equal(disagreement(source), null);
});
