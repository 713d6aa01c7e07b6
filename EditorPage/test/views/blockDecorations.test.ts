import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { EditorState } from 'prosemirror-state';
import type { DecorationSet } from 'prosemirror-view';
import { changedRun } from '../../src/views/blockDecorations';
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

test('the changed run is what is not the same on both sides', () => {
  const { state } = situation('a\n\nb‸\n\nc\n');
  const edited = state.apply(state.tr.insertText('x')).doc;
  assert.deepEqual(changedRun(state.doc, edited), { from: 1, to: 2, start: 3 });
  const shorter = state.apply(state.tr.delete(0, 3)).doc;
  assert.deepEqual(changedRun(state.doc, shorter), { from: 0, to: 0, start: 0 });
  assert.deepEqual(changedRun(shorter, state.doc), { from: 0, to: 1, start: 0 });
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
