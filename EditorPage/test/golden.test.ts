/** What random sequences have found wrong once, as the shortest edits that show it. */
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { wrapIn } from 'prosemirror-commands';
import { commandFor } from '../src/commands/exec';
import { schema } from '../src/schema';
import { SourceDocument } from '../src/source/SourceDocument';
import { disagreement, Session } from './editing';

const { nodes } = schema;

function assertAgrees(session: Session): void {
  assert.equal(disagreement(session.source), null);
}

test('HTML that nothing closes any more takes in all that follows, past empty lines of the document', () => {
  const session = new Session('<!-- a -->\n\n---\n\n<b>c</b>\n\nd\n');
  const behindRule = session.state.doc.child(0).nodeSize + session.state.doc.child(1).nodeSize;
  session.dispatch(session.state.tr.insert(behindRule, nodes.paragraph.create()));

  session.dispatch(session.state.tr.delete(8, 11));

  assertAgrees(session);
  assert.match(session.source.text, /^<!-- a \n\n---\n+<b>c<\/b>\n\nd\n$/);
});

test('a quote put around a definition does not take in the line of HTML below it', () => {
  const session = new Session('[x]: /y\n<b>\n\nz\n');
  session.select(2);

  session.run(wrapIn(nodes.blockquote));

  assertAgrees(session);
  assert.equal(session.source.text, '> [x]: /y\n\n<b>\n\nz\n');
});

test('a block right below a definition is read again with it when a footnote has gone', () => {
  const session = new Session('[x]: /y\n<b>\na[^1] b\n\n[^1]: c\n');
  const { doc } = session.state;

  session.dispatch(session.state.tr.delete(doc.content.size - doc.lastChild!.nodeSize, doc.content.size));

  assertAgrees(session);
});

test('what was text only because it stood right below a definition keeps saying what is shown', () => {
  for (const low of ['2. a', '    a', '-', '<b>']) {
    const below = new Session(`[x]: /y\n${low}\n\nz\n`);
    const apart = new Session(`[x]: /y\n${low}\n\nz\n`);
    const first = below.state.doc.firstChild!.nodeSize;

    below.dispatch(below.state.tr.delete(0, first));
    apart.dispatch(apart.state.tr.insert(first, nodes.horizontal_rule.create()));

    assertAgrees(below);
    assertAgrees(apart);
  }
});

test('a box without a text is empty also when blanks follow it', () => {
  const session = new Session('  \n');

  session.run(commandFor('taskList')!);

  assertAgrees(session);
  assert.equal(session.source.text, '- [ ]  \n');
});

test('an item whose bracket is a letter is no task', () => {
  const { doc } = SourceDocument.load('- \\[ ]\n- [ ]\n- [X]\n- \\[x\\]\n');

  assert.deepEqual(doc.firstChild!.children.map((item) => item.attrs.checked), [null, false, true, null]);
});

test('a formula in an item that nothing closes holds the empty lines that come behind it', () => {
  const session = new Session('- $$\n\n');

  session.dispatch(session.state.tr.insert(session.state.doc.content.size, nodes.horizontal_rule.create()));

  assertAgrees(session);
});
