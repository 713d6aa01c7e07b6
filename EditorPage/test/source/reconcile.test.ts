import assert from 'node:assert/strict';
import { test } from 'node:test';
import { disagreement, Session } from '../editing';
import { played } from '../commands/playing';
import { moveBehind, type } from './typing';

const definitions = '[a]: /x\n[b]: /y\n[c]: /z\n\n[b]\n';

/** The definitions after something was typed behind the second. */
const withTyped = (text: string) => played(definitions.replace('/y', '/y‸'), text).text;

/** Takes the last letter of a text away. */
function eraseBehind(session: Session, text: string) {
  moveBehind(session, text);
  const { from } = session.state.selection;
  session.dispatch(session.state.tr.delete(from - 1, from));
}

test('a definition gets a title letter by letter, and is a definition when that is closed', () => {
  assert.equal(withTyped(' "en titel"'), '[a]: /x\n[b]: /y "en titel"\n[c]: /z\n\n[b]\n');
  assert.equal(withTyped(' (t)'), '[a]: /x\n[b]: /y (t)\n[c]: /z\n\n[b]\n');
});

test('what was a definition keeps apart from the next while it is none', () => {
  assert.equal(withTyped(' "en'), '[a]: /x\n[b]: /y "en\n\n[c]: /z\n\n[b]\n');
});

test('letters that are taken away again leave the definitions as they were', () => {
  const session = new Session(definitions);
  moveBehind(session, '/y');
  type(session, ' ');
  type(session, 'x');
  for (const before of ['/y x', '/y ']) eraseBehind(session, before);
  assert.equal(session.source.text, definitions);
  assert.equal(disagreement(session.source), null);
  session.undoAll();
  assert.equal(session.source.text, definitions);
});

test('a definition in an item or a quote changes by what is typed into it alone', () => {
  assert.equal(played('- a\n- b\n\n  [ref]: /url‸\n- d\n', ' "x"').text, '- a\n- b\n\n  [ref]: /url "x"\n- d\n');
  assert.equal(played('- a\n- b\n\n  [ref]: /url‸\n- d\n', ' x').text, '- a\n- b\n\n  [ref]: /url x\n- d\n');
  assert.equal(played('> [a]: /x‸\n>   "t"\n', ' y').text, '> [a]: /x y\n>   "t"\n');
});

test('HTML in an item that is none any more leaves the other items alone', () => {
  const list = '- a\n- b\n\n  <div>x</div>\n- d\n';
  const session = new Session(list);
  moveBehind(session, '<div');
  type(session, 'v');
  assert.equal(session.source.text, '- a\n- b\n\n  <divv>x</div>\n- d\n');
  session.undoAll();
  assert.equal(session.source.text, list);
});
