import assert from 'node:assert/strict';
import { test } from 'node:test';
import { putText } from '../../src/find/noteTarget';
import { disagreement, Session } from '../editing';

/** The note with every `word` replaced at once, as finding and replacing does it. */
function replaced(text: string, word: string, by: string): string {
  const session = new Session(text);
  const { tr } = session.state;
  const places: number[] = [];
  session.state.doc.descendants((node, pos) => {
    for (const match of node.text?.matchAll(new RegExp(word, 'g')) ?? []) places.push(pos + match.index!);
  });
  for (const from of places.reverse()) putText(tr, { from, to: from + word.length }, by);
  session.dispatch(tr);
  assert.equal(disagreement(session.source), null);
  return session.source.text;
}

test('several changes at once leave what is between them as it is written', () => {
  for (const text of [
    'x __möte__ y _möte_ *a möte*',
    'ett möte &amp; \\* två möte <b>x</b> och möte __slut__',
    '[möte][a] __b__ möte\n\n[a]: /x',
    '* __a__ möte\n+ möte _b_ möte\n',
  ])
    assert.equal(replaced(`${text}\n`, 'möte', 'träff'), `${text}\n`.replaceAll('möte', 'träff'));
});

test('more changes than are told apart still say what is shown', () => {
  const text = `${'möte __a__ '.repeat(200)}\n`;

  assert.equal(replaced(text, 'möte', 'träff').replaceAll('**', '__'), text.replaceAll('möte', 'träff'));
});
