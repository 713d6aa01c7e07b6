import assert from 'node:assert/strict';
import { test } from 'node:test';
import { TextSelection, type EditorState } from 'prosemirror-state';
import { toggleMark } from 'prosemirror-commands';
import { plainBehindLinks } from '../../src/commands/behindLink';
import { schema } from '../../src/schema';
import { situation, written } from './onText';

/** The note after words were typed at the caret, once it has come there. */
function typed(marked: string, change = (state: EditorState) => state): string {
  const { source, state } = situation(marked, [plainBehindLinks()]);
  const { head } = state.selection;
  const away = state.apply(state.tr.setSelection(TextSelection.create(state.doc, 1)));
  const there = change(away.apply(away.tr.setSelection(TextSelection.create(away.doc, head))));
  return written(source, there.apply(there.tr.insertText(' ny')));
}

test('behind a link nothing is typed in the type that only the link has', () => {
  const cases: Array<[before: string, after: string]> = [
    ['a [**b**](c)‸\n', 'a [**b**](c) ny‸\n'],
    ['a [`b`](c)‸ d\n', 'a [`b`](c) ny‸ d\n'],
    ['**a [_b_](c)‸**\n', '**a [_b_](c) ny‸**\n'],
    ['[**b**](c)‸ **d**\n', '[**b**](c) ny‸ **d**\n'],
    ['**[b](c)‸ d**\n', '**[b](c) ny‸ d**\n'],
    ['**b‸** [c](d)\n', '**b ny‸** [c](d)\n'],
    ['[**b‸b**](c)\n', '[**b ny‸b**](c)\n'],
  ];
  for (const [before, after] of cases) assert.equal(typed(before), after);
});

test('type that is switched on behind a link is what is typed there', () => {
  const bold = (state: EditorState) => {
    let next = state;
    toggleMark(schema.marks.strong)(state, (tr) => (next = state.apply(tr)));
    return next;
  };
  assert.equal(typed('a [**b**](c)‸\n', bold), 'a **[b](c) ny‸**\n');
});
