import assert from 'node:assert/strict';
import { test } from 'node:test';
import { played } from '../commands/playing';
import { disagreement, Session } from '../editing';

/** The note after `from` to `to` of it were replaced by a text, and whether undo brings it back. */
function replaced(text: string, from: number, to: number, by: string): string {
  const session = new Session(text);
  session.dispatch(session.state.tr.insertText(by, from, to));
  assert.equal(disagreement(session.source), null);
  const written = session.source.text;
  session.undoAll();
  assert.equal(session.source.text, text, 'after undo');
  return written;
}

test('where a blank between a word and marked punctuation goes, the punctuation is marked no more', () => {
  assert.equal(replaced('**Obs!** Glöm det\n', 5, 6, ''), '**Obs**!Glöm det\n');
  assert.equal(replaced('ord **(a)** b\n', 4, 5, ''), 'ord(**a)** b\n');
  assert.equal(replaced('se ==”hej”== nu\n', 3, 4, ''), 'se”==hej”== nu\n');
});

test('words that are typed right beside marked punctuation are marked with it', () => {
  assert.equal(replaced('ett **(två)** tre\n', 5, 5, 'fyra'), 'ett **fyra(två)** tre\n');
  assert.equal(replaced('foo *\\**\n', 5, 5, 'x'), 'foo *x\\**\n');
});

test('words beside marked words stay as they are', () => {
  assert.equal(replaced('ett **två** tre\n', 5, 5, 'fyra'), 'ett fyra**två** tre\n');
  assert.equal(replaced('ett **två** tre\n', 4, 5, ''), 'ett**två** tre\n');
});

test('marks that overlap meet at a blank that has neither', () => {
  assert.equal(played('a ‹b *c› d* e\n', '{bold}').text, 'a **b _c_** *d* e\n');
  assert.equal(played('*a ‹b* c› d\n', '{bold}').text, '*a __b__* **c** d\n');
  assert.equal(played('**x *y* z** ‹b *c› d* e\n', '{bold}').text, '**x *y* z** **b _c_** *d* e\n');
});
