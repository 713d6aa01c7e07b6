/** Every command on every kind of block: with a caret, with some of it selected, and with a selection over the next block. */
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { redo, undo } from 'prosemirror-history';
import type { EditorState, Transaction } from 'prosemirror-state';
import { commandFor, commandNames } from '../../src/commands/exec';
import { correct } from '../../src/corrections';
import { selectionReport } from '../../src/commands/selection';
import { SourceDocument } from '../../src/source/SourceDocument';
import { disagreement } from '../editing';
import { situation, written } from './onText';

/** A kind of block; "_" stands where the caret or the selection begins. */
const blocks: Readonly<Record<string, string>> = {
  paragraph: 'ett _två tre\n',
  'empty paragraph': '_\n',
  'paragraph of types': '**ett _två** *tre* `fyra` ==fem==\n',
  'paragraph of lines': 'ett _två  \ntre\\\nfyra\nfem\n',
  'paragraph of links': '[ett _två](tre.md) [[fyra]] ![](assets/fem.png)\n',
  heading: '## ett _två tre\n',
  'underlined heading': 'ett _två tre\n===\n',
  quote: '> ett _två tre\n',
  callout: '> [!note] titel\n> ett _två tre\n',
  bullets: '- ett _två tre\n- fyra\n',
  numbers: '3. ett _två tre\n4. fyra\n',
  letters: 'A. ett _två tre\nB. fyra\n',
  tasks: '- [x] ett _två tre\n- [ ] fyra\n',
  'nested list': '- ett\n  - två _tre fyra\n    1. fem\n- sex\n',
  'item of blocks': '- ett\n\n  två _tre fyra\n\n  > fem\n',
  'list in quote': '> - ett _två tre\n> - fyra\n',
  'table head': '| ett _två tre | fyra |\n| --- | :-: |\n| fem | sex |\n',
  'table cell': '| ett | två |\n| --- | --: |\n| tre _fyra fem | sex |\n',
  code: '```js\nett _två tre\nfyra\n```\n',
  'indented code': '    ett _två tre\n',
  formula: '$$\nett _två tre\n$$\n',
  html: '<div>ett _två tre</div>\n',
  'link definition': '[ett]: _två.md "tre fyra"\n\n[ett]\n',
  footnote: 'a[^1]\n\n[^1]: ett _två tre\n',
  'loose list': '- ett _två tre\n\n- fyra\n',
  'nested tasks': '- [x] ett\n  - [ ] två _tre fyra\n',
  'quote in quote': '> ett\n>\n> > två _tre fyra\n',
  'reference link': '[ett _två][x] tre\n\n[x]: /y\n',
};

const values: Readonly<Record<string, string | number>> = {
  heading: 2,
  link: 'https://exempel.se',
  wikilink: 'Not',
  image: 'assets/bild.png',
  youtube: 'https://youtu.be/dQw4w9WgXcQ',
};

type Marker = (block: string) => string;

const selections: Readonly<Record<string, Marker>> = {
  'a caret': (block) => `före\n\n${block.replace('_', '‸')}\nefter\n`,
  'a selection within': (block) => `före\n\n${block.replace(/_(\S*)/, '‹$1›')}\nefter\n`,
  'a selection over two blocks': (block) => `före\n\n${block.replace('_', '‹')}\nef›ter\n`,
  'a selection from the block before': (block) => `fö‹re\n\n${block.replace('_', '›')}\nefter\n`,
};

/** Commands that leave the words as they are, and the caret or the selection on the same ones. */
const keepsWords = new Set(
  'bold italic highlight strike code paragraph heading blockquote bulletList orderedList letterList taskList addRowBefore addRowAfter addColumnBefore addColumnAfter toggleHeaderRow'.split(' '),
);

/** Markers that the page shows as text where Markdown does not take them for more: of a lone letter, of a link to nowhere. */
const markers = /^A\.|\]\[x\]|[[\]]/g;

/** The words that are selected, and those before them in the block where the selection begins. */
function selectedWords({ doc, selection: { $from, from, to } }: EditorState): string[] {
  const words = (start: number, end: number) => doc.textBetween(start, end, ' ', ' ').replace(markers, '').replace(/\s+/g, ' ').trim();
  return [words(from, to), words($from.start(), from)];
}

/** Runs the command and looks after each step whether everything agrees. Null when the command has nothing to do there. */
function run(name: string, marked: string): EditorState | null {
  const { source, state } = situation(marked);
  source.apply(state.doc);
  const before = source.text;
  let current = state;
  let last = state.tr;
  const dispatch = (tr: Transaction): void => {
    last = tr;
    current = current.apply(tr);
  };
  const settle = (): void => {
    const { corrections } = source.apply(current.doc);
    if (corrections.length === 0) return;
    const tr = correct(current.tr, corrections);
    current = current.apply(tr.setMeta('appendedTransaction', last));
  };
  if (!commandFor(name, values[name])!(current, dispatch)) return null;
  if (current.doc.eq(state.doc)) return current;
  current.doc.check();
  settle();
  assert.equal(disagreement(source), null, `${name} on ${JSON.stringify(marked)}`);
  const after = source.text;
  const ran = current;
  assert.ok(ran.selection.$head.parent.inlineContent, 'the caret is in no text');
  if (keepsWords.has(name)) assert.deepEqual(selectedWords(ran), selectedWords(state), 'the selection has moved');
  assert.ok(undo(current, dispatch), 'nothing to undo');
  settle();
  assert.equal(source.text, before, 'after undo');
  assert.deepEqual(selectedWords(current), selectedWords(state), 'the selection after undo');
  assert.ok(redo(current, dispatch), 'nothing to redo');
  settle();
  assert.equal(source.text, after, 'after redo');
  return ran;
}

/** What the toolbar is told must be what it would be told of the same text and place after opening the note anew. */
function assertReport(state: EditorState, what: string): void {
  const plain = state.apply(state.tr.setStoredMarks(null));
  const marked = written(SourceDocument.load(''), plain);
  if (!/[‹›‸]/.test(marked)) return;
  const anew = situation(marked).state;
  if (anew.doc.textContent !== plain.doc.textContent) return;
  // At the edge of bold text a caret may stand in it or behind it: only of a selection the text says its type.
  const told = ({ bulletList, orderedList, inTable, heading, ...type }: ReturnType<typeof selectionReport>) => ({
    bulletList,
    orderedList,
    inTable,
    heading,
    ...(plain.selection.empty ? {} : type),
  });
  assert.deepEqual(told(selectionReport(plain)), told(selectionReport(anew)), `${what}: ${JSON.stringify(marked)}`);
}

for (const name of commandNames.filter((one) => one !== 'undo' && one !== 'redo')) {
  test(`${name} is one step on every block, and the toolbar is told what it did`, () => {
    let ran = 0;
    const wrong: string[] = [];
    for (const [kind, block] of Object.entries(blocks)) {
      for (const [how, mark] of Object.entries(selections)) {
        const what = `${name} on ${kind} with ${how}`;
        try {
          const state = run(name, mark(block));
          if (state === null) continue;
          ran += 1;
          assertReport(state, what);
        } catch (error) {
          wrong.push(`${what}: ${(error as Error).message}`);
        }
      }
    }
    assert.deepEqual(wrong, []);
    assert.ok(ran > 0, 'ran nowhere');
  });
}

test('bold, italic, highlight and the like tell that they are on, and then that they are off', () => {
  for (const name of ['bold', 'italic', 'highlight'] as const) {
    const on = run(name, 'ett ‹två› tre\n')!;
    assert.equal(selectionReport(on)[name], true);
    let off: EditorState = on;
    commandFor(name)!(on, (tr) => (off = on.apply(tr)));
    assert.equal(selectionReport(off)[name], false);
  }
});
