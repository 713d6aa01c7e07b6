import assert from 'node:assert/strict';
import { test } from 'node:test';
import { NodeSelection } from 'prosemirror-state';
import { moveBlock } from '../../src/commands/move';
import { after, situation } from './onText';

const cases: readonly (readonly [1 | -1, string, string | null])[] = [
  [1, 'a‸\n\nb\n', 'b\n\na‸\n'],
  [-1, 'a\n\nb‹c\n\nd›e\n', 'b‹c\n\nd›e\n\na\n'],
  [-1, 'a‸\n\nb\n', null],
  [1, '- a‸\n- b\n', '- b\n- a‸\n'],
  [1, '- a\n  - b‸\n  - c\n', '- a\n  - c\n  - b‸\n'],
  [-1, '---\na: 1\n---\n\nb‸\n', null],
];

for (const [step, before, wanted] of cases) {
  test(`moving ${step < 0 ? 'up' : 'down'} in ${JSON.stringify(before)}`, () => {
    assert.equal(after(moveBlock(step), before), wanted);
  });
}

test('a block that is selected as a whole moves too, and stays selected', () => {
  const { state } = situation('a\n\n---\n');
  const selected = state.apply(state.tr.setSelection(NodeSelection.create(state.doc, 3)));
  let moved = selected;
  assert.ok(moveBlock(-1)(selected, (tr) => (moved = selected.apply(tr))));
  assert.deepEqual(moved.doc.children.map((node) => node.type.name), ['horizontal_rule', 'paragraph']);
  assert.equal((moved.selection as NodeSelection).node.type.name, 'horizontal_rule');
  assert.equal(moveBlock(1)(selected), false);
});
