import assert from 'node:assert/strict';
import { test } from 'node:test';
import { EditorState, TextSelection } from 'prosemirror-state';
import { correct } from '../src/corrections';
import { SourceDocument } from '../src/source/SourceDocument';

/** What is selected after the first block of one note has become that of another. */
function selected(before: string, from: number, to: number, after: string): string {
  const { doc } = SourceDocument.load(before);
  const state = EditorState.create({ doc, selection: TextSelection.create(doc, from, to) });
  const tr = correct(state.tr, [{ from: 0, to: 1, nodes: [SourceDocument.load(after).doc.child(0)] }]);
  return tr.doc.textBetween(tr.selection.from, tr.selection.to, '|');
}

test('what is selected stays selected when markers become visible', () => {
  assert.equal(selected('ett **två** tre\n', 5, 8, 'A. ett två tre\n'), 'två');
  assert.equal(selected('ett två tre\n', 8, 5, 'A. ett två tre\n'), 'två');
});

test('a selection into the next block keeps its end', () => {
  assert.equal(selected('ett två\n\ntre\n', 5, 12, '## A. ett två\n\ntre\n'), 'två|tr');
});

test('a caret stays a caret', () => {
  assert.equal(selected('ett två\n', 5, 5, 'A. ett två\n'), '');
});
