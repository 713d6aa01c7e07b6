import assert from 'node:assert/strict';
import { test } from 'node:test';
import { undo } from 'prosemirror-history';
import { Session } from '../editing';

const type = (session: Session, text: string, at: number) => {
  for (const [index, letter] of [...text].entries()) session.dispatch(session.state.tr.insertText(letter, at + index));
};

test('equal blocks with different bytes get their own back', () => {
  const text = '*a*\n\n_a_\n\n* b\n\n- b\n';
  const session = new Session(text);

  session.dispatch(session.state.tr.delete(0, session.state.doc.content.size));
  assert.equal(session.source.text.trim(), '');

  session.undoAll();
  assert.equal(session.source.text, text);
});

test('typing something and deleting it again gives the bytes back', () => {
  const session = new Session('a   b\n===\n\n\n\nc\n');

  type(session, 'xyz', 2);
  session.dispatch(session.state.tr.delete(2, 5));

  assert.equal(session.source.text, 'a   b\n===\n\n\n\nc\n');
});

test('undo reaches the beginning after so many keys that not every state is kept', () => {
  const text = `${'long line '.repeat(1600)}\n\n__end__\n`;
  const session = new Session(text);

  type(session, 'ab '.repeat(180), 5);
  session.undoAll();

  assert.equal(session.source.text, text);
});

test('undo past a change from outside keeps that change', () => {
  const session = new Session('one\n\ntwo\n\nthree\n');
  type(session, 'x', 1);

  const [change] = session.source.reload('xone\n\ntwo\n\nTHREE\n')!;
  const start = session.state.doc.child(0).nodeSize + session.state.doc.child(1).nodeSize;
  const { tr } = session.state;
  session.state = session.state.apply(
    tr.replaceWith(start, session.state.doc.content.size, change!.nodes).setMeta('addToHistory', false),
  );
  session.run(undo);

  assert.deepEqual([change!.from, change!.to], [2, 3]);
  assert.equal(session.source.text, 'one\n\ntwo\n\nTHREE\n');
});
