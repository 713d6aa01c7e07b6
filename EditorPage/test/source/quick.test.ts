import assert from 'node:assert/strict';
import { test } from 'node:test';
import { EditorState } from 'prosemirror-state';
import { readBlock } from '../../src/source/entries';
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
];

function longText(random: Random): string {
  // Brackets make the rules stricter: half of the texts are without.
  const own = random.below(2) === 0 ? vocabulary : vocabulary.filter((word) => !word.includes('['));
  const words = Array.from({ length: 400 }, () => (random.below(2) === 0 ? 'plain' : random.pick(own)));
  return `Början ${words.join(' ').replace(/ ?\n ?/g, '\nrad ')} slut`;
}

const typed = ['x', 'å', ' ', ',', '.', ' ord', 'ord ', 'a b', ''];

test('what is not read back would have read the same', () => {
  const labels = new Set<string>();
  let quick = 0;
  for (let seed = 1; seed <= 60; seed += 1) {
    const random = new Random(seed);
    const block = readBlock(longText(random), SourceDocument.load('a').doc.firstChild!.type, labels);
    if (!block) continue;
    for (let attempt = 0; attempt < 40; attempt += 1) {
      const from = random.below(block.source.length);
      const splice: Splice = {
        from,
        to: Math.min(block.source.length, from + random.below(3)),
        text: random.pick(typed),
      };
      const edited = quickEdit(block, splice, block.parsed, labels);
      if (!edited) continue;
      const read = readBlock(spliced(block.source, splice), block.parsed.type, labels);
      quick += 1;
      assert.ok(read, `seed ${seed}, ${JSON.stringify(splice)}`);
      assert.equal(
        read.parsed.textContent.length - block.parsed.textContent.length,
        splice.text.length - (splice.to - splice.from),
      );
      assert.deepEqual(edited.piece.segments, read.piece.segments, `seed ${seed}, ${JSON.stringify(splice)}`);
    }
  }
  assert.ok(quick > 300, `${quick} edits were quick`);
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
