import assert from 'node:assert/strict';
import { test } from 'node:test';
import { EditorState } from 'prosemirror-state';
import { FROM_TEXT } from '../../src/folding/folding';
import { SourceDocument } from '../../src/source/SourceDocument';
import { findMarks, findOrder, foundIn } from '../../src/find/marks';
import { situation } from '../commands/onText';

const NOTE = '# Möte\n\n- möte **mö**te\n- x\n\n| möte |\n| - |\n| [[Möte]] |\n\n```\nmöte\n```\n';

function searched(text: string, words: string, from = 0): EditorState {
  const { state } = situation(text, [findMarks({ peek: () => assert.fail('nothing is folded') })]);
  const query = { text: words, caseSensitive: false, wholeWords: false };
  return state.apply(state.tr.setMeta(...findOrder.search(query, from)));
}

const words = (state: EditorState): string[] =>
  foundIn(state)!.matches.map(({ from, to, isNode }) => (isNode ? 'node' : state.doc.textBetween(from, to)));

test('finds in every kind of block, across types, and in links to notes', () => {
  assert.deepEqual(words(searched(NOTE, 'möte')), ['Möte', 'möte', 'möte', 'möte', 'node', 'möte']);
});

test('does not find across blocks', () => assert.deepEqual(words(searched('a\n\nb\n', 'ab')), []));

test('the match at the caret is the current one and drawn as such', () => {
  const state = searched(NOTE, 'möte', 10);
  const found = foundIn(state)!;
  assert.equal(found.matches[found.current]!.from, 14);
  const current = found.decorations.find().filter((one) => (one as unknown as { type: { attrs: { class: string } } }).type.attrs.class.includes('find-current'));
  assert.deepEqual(current.map(({ from }) => from), [14]);
});

test('follows what is edited', () => {
  let state = searched('ab ab\n', 'ab', 4);
  assert.equal(foundIn(state)!.current, 1);
  state = state.apply(state.tr.insertText('ab ', 1));
  assert.deepEqual([foundIn(state)!.matches.length, foundIn(state)!.current], [3, 2]);
  state = state.apply(state.tr.delete(1, state.doc.content.size - 1));
  assert.deepEqual([foundIn(state)!.matches.length, foundIn(state)!.current], [0, -1]);
});

test('an ended search shows nothing', () => {
  const state = searched(NOTE, 'möte');
  assert.equal(foundIn(state.apply(state.tr.setMeta(...findOrder.search(null, 0)))), null);
});

test('ten thousand matches are counted, and those around the current one drawn', () => {
  const found = foundIn(searched('ab '.repeat(10_000), 'ab'))!;
  assert.equal(found.matches.length, 10_000);
  assert.ok(found.decorations.find().length <= 2_001);
});

test('what is folded is looked through, and its matches keep their order when it is read', () => {
  const text = `${'Ett **mö**te.\n\nEn [länk](möte.md) &ouml; `möt`e.\n\nInget.\n\n'.repeat(20)}Sist ett möte.\n`;
  const source = SourceDocument.load(text, 60);
  let state = EditorState.create({ doc: source.doc, plugins: [findMarks({ peek: (part) => source.peek(part) })] });
  const query = { text: 'möte', caseSensitive: false, wholeWords: false };
  state = state.apply(state.tr.setMeta(...findOrder.search(query, 0)));

  while (!foundIn(state)!.finder.isComplete) state = state.apply(state.tr.setMeta(...findOrder.more()));
  assert.equal(foundIn(state)!.matches.length, 41);

  state = state.apply(state.tr.setMeta(...findOrder.goTo(30)));
  const { node, offset } = foundIn(state)!.matches[30]!.folded!;
  for (const { from, to, nodes } of source.unfold(node, offset, 1)) {
    const start = state.doc.resolve(0).posAtIndex(from, 0);
    state = state.apply(state.tr.replaceWith(start, state.doc.resolve(0).posAtIndex(to, 0), nodes).setMeta(FROM_TEXT, true));
  }

  const found = foundIn(state)!;
  assert.deepEqual([found.matches.length, found.current], [41, 30]);
  const { from, to, folded } = found.matches[30]!;
  assert.equal(folded, undefined);
  assert.equal(state.doc.textBetween(from, to), 'möte');
});
