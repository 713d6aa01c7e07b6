/** What random folding has found wrong once, as the shortest edits that show it. */
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { wrapIn } from 'prosemirror-commands';
import { schema } from '../../src/schema';
import { isFolded, sourceOf } from '../../src/source/folded';
import { Session } from '../editing';

const { nodes } = schema;

/** Unfolds what holds `words`. */
function unfold(session: Session, words: string): void {
  const folded = session.state.doc.children.find((node) => isFolded(node) && sourceOf(node).includes(words))!;
  session.refold(session.source.unfold(folded, sourceOf(folded).indexOf(words), 1));
}

/** Where a top-level block begins that holds `words`. */
function startOf(session: Session, words: string): number {
  let start = -1;
  session.state.doc.forEach((node, offset) => {
    if (start < 0 && node.textContent.includes(words)) start = offset;
  });
  return start;
}

test('blocks that were read while a label was gone do not keep undo from the states before', () => {
  const text = `Ett.\n\n\nTvå.\n\n## Tre\n\nSe [x] här.\n\n## Fyra\n\n[x]: /y\n\n## Slut\n\nSist.\n`;
  const session = new Session(text, 10);
  session.select(1, 9);
  session.run(wrapIn(nodes.blockquote));
  unfold(session, '[x]: /y');
  const definition = startOf(session, '[x]: /y');
  session.dispatch(session.state.tr.insertText('nej ', definition + 1));
  unfold(session, 'Se [x] här.');

  session.undoAll();

  assert.equal(session.source.text, text);
});
