import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Node } from 'prosemirror-model';
import type { EditorState } from 'prosemirror-state';
import type { DecorationSet } from 'prosemirror-view';
import { changedPart } from '../../src/views/blockDecorations';
import { textDecorations } from '../../src/views/textDecorations';
import { situation } from '../commands/onText';

const plugin = textDecorations();

function styled(state: EditorState): string[] {
  const set = plugin.props.decorations!.call(plugin, state) as DecorationSet;
  return set.find().map(({ from, to }) => state.doc.textBetween(from, to, '|'));
}

function load(text: string): EditorState {
  return situation(text, [plugin]).state;
}

function runOf(before: Node, after: Node): number[] {
  const { from, to, start, end } = changedPart(before, after);
  return [from, to, start, end];
}

test('the changed part is what is not the same on both sides', () => {
  const { state } = situation('a\n\nb‸\n\nc\n');
  const edited = state.apply(state.tr.insertText('x')).doc;
  assert.deepEqual(runOf(state.doc, edited), [1, 2, 3, 7]);
  const shorter = state.apply(state.tr.delete(0, 3)).doc;
  assert.deepEqual(runOf(state.doc, shorter), [0, 0, 0, 0]);
  assert.deepEqual(runOf(shorter, state.doc), [0, 1, 0, 3]);
});

test('of a list the item that was edited is the changed part, of a quote the whole of it', () => {
  const inList = situation('a\n\n- b\n- c\n  - d‸\n- e\n').state;
  const edited = inList.apply(inList.tr.insertText('x'));
  const { parent, from, to, start } = changedPart(inList.doc, edited.doc);
  assert.deepEqual([parent.textContent, from, to, edited.doc.nodeAt(start)!.textContent], ['dx', 0, 1, 'dx']);

  const inQuote = situation('a\n\n> - b‸\n').state;
  const quoted = inQuote.apply(inQuote.tr.insertText('x'));
  assert.equal(changedPart(inQuote.doc, quoted.doc).parent, quoted.doc);
});

test('tags, comments and names of blocks are styled', () => {
  assert.deepEqual(styled(load('en #tagg och %%dolt%% ^namn\n')), ['#tagg', '%%dolt%%', '^namn']);
});

test('what only looks like a tag is not', () => {
  assert.deepEqual(styled(load('nr #12, a#b, &#62; och `#kod`\n')), []);
  assert.deepEqual(styled(load('```\n#kod %%x%%\n```\n')), []);
});

test('a callout is framed, and its marker and title are styled', () => {
  assert.deepEqual(styled(load('> [!note] Titel\n> text\n')), ['[!note] Titel\ntext', '[!note] ', 'Titel']);
  assert.deepEqual(styled(load('> vanligt citat\n')), []);
});

test('styles follow edits before, in and after them', () => {
  let state = load('a‸\n\n#tagg\n\nslut\n');
  state = state.apply(state.tr.insertText('bc'));
  assert.deepEqual(styled(state), ['#tagg']);
  const inTag = state.doc.firstChild!.nodeSize + 1 + '#tagg'.length;
  state = state.apply(state.tr.insertText('ar', inTag));
  assert.deepEqual(styled(state), ['#taggar']);
  state = state.apply(state.tr.insertText('x', inTag - 5));
  assert.deepEqual(styled(state), []);
  state = state.apply(state.tr.insertText(' #ny', state.doc.content.size - 1));
  assert.deepEqual(styled(state), ['#ny']);
});

test('a callout stays one while its neighbours are edited', () => {
  for (const text of ['a‸\n\n> [!note] T\n> text\n', '> [!note] T\n> text\n\na‸\n', '- a‸\n- > [!note] T\n  > text\n']) {
    const state = load(text);
    const before = styled(state.apply(state.tr.insertText('x')));
    assert.deepEqual(before, ['[!note] T\ntext', '[!note] ', 'T'], text);
  }
});

test('styles in a long list follow edits of its items', () => {
  let state = load('- en #ett\n- två‸\n- tre #tre\n');
  state = state.apply(state.tr.insertText(' #ny'));
  assert.deepEqual(styled(state), ['#ett', '#ny', '#tre']);
  const { $from } = state.selection;
  state = state.apply(state.tr.delete($from.before(2), $from.after(2)));
  assert.deepEqual(styled(state), ['#ett', '#tre']);
});
