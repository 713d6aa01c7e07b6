import assert from 'node:assert/strict';
import { test } from 'node:test';
import { disagreement, Session } from '../editing';

function edited(session: Session, from: number, to: number, text: string): string {
  session.dispatch(text === '' ? session.state.tr.delete(from, to) : session.state.tr.insertText(text, from, to));
  assert.equal(disagreement(session.source), null);
  return session.source.text;
}

const links = ({ state }: Session) => {
  const found: string[] = [];
  state.doc.descendants((node) => void found.push(...node.marks.map((mark) => mark.attrs.href as string)));
  return found;
};

test('what is typed into an address between brackets changes the link with its text', () => {
  const session = new Session('see __x__ <https://a.se/b> and\n');

  assert.equal(edited(session, 20, 20, 'cd'), 'see __x__ <https://a.se/cdb> and\n');
  assert.deepEqual(links(session).filter(Boolean), ['https://a.se/cdb']);
});

test('a blank ends the link and shows its brackets, and without the blank it is a link again', () => {
  const before = 'see <https://a.se/b> and <https://c.se>, *d*\n';
  const session = new Session(before);

  assert.equal(edited(session, 10, 10, ' '), 'see <https ://a.se/b> and <https://c.se>, *d*\n');
  assert.equal(session.state.doc.textContent, 'see <https ://a.se/b> and https://c.se, d');
  assert.equal(edited(session, 11, 12, ''), before);
  assert.equal(session.state.doc.textContent, 'see https://a.se/b and https://c.se, d');
});

test('a mail address between brackets is one until it is none', () => {
  const session = new Session('<a@b.se>\n');

  assert.equal(edited(session, 2, 2, 'c'), '<ac@b.se>\n');
  assert.equal(edited(session, 3, 3, ' '), '<ac @b.se>\n');
});

test('an address in bold keeps its type as it breaks', () => {
  const session = new Session('__x <http://y.se>__ z\n');

  assert.equal(edited(session, 5, 5, ' '), '__x <ht tp://y.se>__ z\n');
});

test('an address in one of many items keeps its brackets too', () => {
  const item = (index: number) => `- item ${index} <https://a.se/${index}/b> and more\n`;
  const items = Array.from({ length: 200 }, (_, index) => item(index));
  const session = new Session(items.join(''));
  let at = 1;
  for (let index = 0; index < 100; index += 1) at += session.state.doc.firstChild!.child(index).nodeSize;
  const behind = at + 2 + 'item 100 https:'.length;

  assert.equal(edited(session, behind, behind, ' zq'), items.join('').replace('<https://a.se/100/', '<https: zq//a.se/100/'));
});
