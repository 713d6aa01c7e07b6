import assert from 'node:assert/strict';
import { test } from 'node:test';
import { splitBlock, toggleMark } from 'prosemirror-commands';
import { EditorState } from 'prosemirror-state';
import { sinkListItem, splitListItem } from 'prosemirror-schema-list';
import { schema } from '../../src/schema';
import { SourceDocument } from '../../src/source/SourceDocument';
import { Session, disagreement } from '../editing';
import { moveBehind, type, typedBehind } from './typing';

const { nodes, marks } = schema;

/** A session with the caret at the end of the last text block. */
function atEnd(text: string): Session {
  const session = new Session(text);
  moveToEnd(session);
  return session;
}

function moveToEnd(session: Session) {
  let end = 1;
  session.state.doc.descendants((node, pos) => {
    if (node.isTextblock) end = pos + 1 + node.content.size;
  });
  session.select(end);
}

test('what was not edited keeps its bytes', () => {
  const text = '# A #\n\n* x\n+ y\n\n__b__   \n\n\n| a|\n|-|\n';

  assert.equal(typedBehind(text, 'b', 'c'), '# A #\n\n* x\n+ y\n\n__bc__   \n\n\n| a|\n|-|\n');
});

test('a change is reported as small as it is', () => {
  const source = SourceDocument.load('one\n\ntwo\n');
  const next = source.doc.copy(source.doc.content.replaceChild(1, nodes.paragraph.create(null, schema.text('two!'))));

  assert.deepEqual(source.apply(next), { change: { from: 8, to: 8, insert: '!' }, corrections: [] });
  assert.deepEqual(source.apply(next), { change: null, corrections: [] });
});

test('a document that had to be corrected and comes once more changes nothing', () => {
  const source = SourceDocument.load('a http://x.se b\n');
  const state = EditorState.create({ doc: source.doc });
  const typed = state.apply(state.tr.insertText(' ', 6)).doc;
  const { corrections } = source.apply(typed);

  assert.equal(corrections.length, 1);
  assert.deepEqual(source.apply(typed), { change: null, corrections });
  assert.equal(source.text, 'a htt p://x.se b\n');
});

test('text is typed where it is shown', () => {
  assert.equal(typedBehind('a **b** c\n', 'b', ' d'), 'a **b d** c\n');
  assert.equal(typedBehind('a [b](x) c\n', ' c', 'd'), 'a [b](x) cd\n');
  assert.equal(typedBehind('a &amp; \\* b\n', '* b', 'c'), 'a &amp; \\* bc\n');
  assert.equal(typedBehind('> - a\n>   b\n', 'b', 'c'), '> - a\n>   bc\n');
  assert.equal(typedBehind('[a]:\n    /b\n  "c"\n\n[a]\n', '/b', 'd'), '[a]:\n    /bd\n  "c"\n\n[a]\n');
  assert.equal(typedBehind('[a]:\n    /b\n  "c"\n', '/b', ' d'), '[a]:\n    /b d\n  "c"\n');
  assert.equal(typedBehind('  ```\n  a\n  b\n  ```\n', 'a\n', ' '), '  ```\n  a\n   b\n  ```\n');
  assert.equal(typedBehind('| a | b |\n|---|---|\n| c | d |\n', 'c', '!'), '| a | b |\n|---|---|\n| c! | d |\n');
});

test('a cell that its row did not reach is added to the row', () => {
  const table = (row: string) => `| a |b| c |\n|---|-|---|\n${row}\n|  d  | e | f |\n`;
  for (const [row, column, after] of [
    ['|  x  |', 1, '|  x  | y |'],
    ['|  x  |', 2, '|  x  | | y |'],
    [' x', 1, ' x | y'],
  ] as const) {
    const session = new Session(table(row));
    const cell = session.state.doc.firstChild!.child(1).child(column);
    session.state.doc.descendants((node, pos) => void (node === cell && session.select(pos + 1)));
    type(session, 'y');
    assert.equal(session.source.text, table(after));
  }
});

test('what would be read as Markdown is escaped, and nothing else', () => {
  assert.equal(typedBehind('a b\n', 'a', ' *x*'), 'a *x\\* b\n');
  assert.equal(typedBehind('1\n', '1', '. x'), '1\\. x\n');
  assert.equal(typedBehind('a\n', 'a', ' #1 (b) 2 * 3 [c] "q"'), 'a #1 (b) 2 * 3 [c] "q"\n');
});

test('line ends of the file are used, others stay', () => {
  const session = new Session('a\r\nb\n\r\nc\r\n');
  moveBehind(session, 'c');
  session.run(splitBlock);
  type(session, 'd');

  assert.equal(session.source.text, 'a\r\nb\n\r\nc\r\n\r\nd\r\n');
});

test('a blank at the end of a paragraph waits for what follows', () => {
  const session = atEnd('a\n');
  type(session, ' ');
  assert.equal(session.source.text, 'a\n');

  type(session, 'b');
  assert.equal(session.source.text, 'a b\n');
});

test('an empty paragraph is an extra blank line', () => {
  const session = atEnd('a\n');
  session.run(splitBlock);
  session.run(splitBlock);
  type(session, 'b');

  assert.equal(session.source.text, 'a\n\n\nb\n');
});

test('a new item copies its neighbour', () => {
  const next = (text: string, checked: boolean | null = null) => {
    const session = atEnd(text);
    session.run(splitListItem(nodes.list_item, { checked }));
    type(session, 'x');
    return session.source.text;
  };

  assert.equal(next('* a\n* b\n'), '* a\n* b\n* x\n');
  assert.equal(next('1) a\n2) b\n'), '1) a\n2) b\n3) x\n');
  assert.equal(next('-   a\n\n-   b\n'), '-   a\n\n-   b\n\n- x\n');
  assert.equal(next('> + a\n'), '> + a\n> + x\n');
  assert.equal(next('- [x] a\n', false), '- [x] a\n- [ ] x\n');
});

test('a list below an item stays close to it', () => {
  const session = atEnd('- a\n');
  session.run(splitListItem(nodes.list_item));
  session.run(sinkListItem(nodes.list_item));
  assert.equal(session.source.text, '- a\n');

  type(session, 'b');
  assert.equal(session.source.text, '- a\n  - b\n');
});

test('letters go on in a letter list', () => {
  const session = atEnd('A. one\nB. two\n');
  session.run(splitListItem(nodes.letter_item));
  type(session, 'three');

  assert.equal(session.source.text, 'A. one\nB. two\nC. three\n');
});

test('an item is taken out without touching the others', () => {
  const session = new Session('1. a\n2.  b\n3. c\n');
  const first = session.state.doc.firstChild!.firstChild!;
  session.dispatch(session.state.tr.delete(1, 1 + first.nodeSize));

  assert.equal(session.source.text, '1.  b\n3. c\n');
});

test('a mark is written around what it marks', () => {
  const session = new Session('one two three\n');
  session.select(5, 8);
  session.run(toggleMark(marks.highlight));
  assert.equal(session.source.text, 'one ==two== three\n');

  session.run(toggleMark(marks.highlight));
  assert.equal(session.source.text, 'one two three\n');
});

test('a typed address becomes a link, and its target follows the typing', () => {
  const session = atEnd('see\n');
  type(session, ' www.x.se/a b');

  const [, link] = session.state.doc.firstChild!.children;
  assert.equal(session.source.text, 'see www.x.se/a b\n');
  assert.equal(link!.text, 'www.x.se/a');
  assert.equal(link!.marks[0]!.attrs.href, 'http://www.x.se/a');
});

test('an address put in beside a letter is kept apart from it', () => {
  const session = atEnd('a\n');
  const link = marks.link.create({ href: 'https://x.se', auto: true });
  session.dispatch(session.state.tr.insert(2, schema.text('https://x.se', [link])));

  assert.equal(session.source.text, 'a<https://x.se>\n');
});

test('HTML that stops being HTML becomes what it is now', () => {
  const session = new Session('<div>\na\n</div>\n');
  session.dispatch(session.state.tr.insertText(' ', 2));

  assert.equal(session.source.text, '< div>\na\n</div>\n');
  assert.equal(session.state.doc.firstChild!.type, nodes.paragraph);
});

test('a link whose definition goes is text again', () => {
  const session = new Session('[a] and [b]\n\n[a]: /x\n\n[b]: /y\n');
  const { doc } = session.state;
  session.dispatch(session.state.tr.delete(doc.firstChild!.nodeSize, doc.firstChild!.nodeSize + doc.child(1).nodeSize));

  assert.equal(session.source.text, '[a] and [b]\n\n[b]: /y\n');
  assert.equal(session.state.doc.firstChild!.firstChild!.marks.length, 0);
  assert.equal(disagreement(session.source), null);
});

test('a letter list whose footnote loses its definition is read again', () => {
  const session = new Session('A. [^1]\nB. two\n\n[^1]: note\n');
  const { doc } = session.state;
  session.dispatch(session.state.tr.delete(doc.firstChild!.nodeSize, doc.content.size));

  assert.equal(disagreement(session.source), null);
});

test('a rule at the start never becomes front matter', () => {
  const session = new Session('---\n\na\n');
  session.dispatch(session.state.tr.insert(session.state.doc.content.size, nodes.horizontal_rule.create()));

  assert.equal(disagreement(session.source), null);
  assert.equal(SourceDocument.load(session.source.text).doc.firstChild!.type, nodes.horizontal_rule);
});

test('an unclosed fence is closed before something follows it', () => {
  const session = new Session('```\ncode');
  session.dispatch(
    session.state.tr.insert(session.state.doc.content.size, nodes.paragraph.create(null, schema.text('a'))),
  );

  assert.equal(disagreement(session.source), null);
  assert.match(session.source.text, /```\n\na$/);
});

test('two lists that meet become one', () => {
  const session = new Session('- a\n\nx\n\n- b\n');
  const { doc } = session.state;
  const start = doc.firstChild!.nodeSize;
  session.dispatch(session.state.tr.delete(start, start + doc.child(1).nodeSize));

  assert.equal(session.source.text, '- a\n\n- b\n');
  assert.equal(session.state.doc.childCount, 1);
});

test('a note of blanks only takes text', () => {
  const session = atEnd('\n\n');
  type(session, 'a');

  assert.equal(session.source.text, 'a\n\n');
});

test('front matter alone leaves room for a paragraph', () => {
  const session = atEnd('---\na: 1\n---\n');
  type(session, 'b');

  assert.equal(session.source.text, '---\na: 1\n---\n\nb\n');
});

test('a text from outside replaces only the blocks that differ', () => {
  const source = SourceDocument.load('one\n\ntwo\n\nthree\n');
  const kept = source.doc.lastChild;

  const [change] = source.reload('one\n\n2\n\n\nthree\n')!;
  assert.deepEqual([change!.from, change!.to, change!.nodes.length], [1, 2, 1]);
  assert.equal(source.doc.lastChild, kept);
  assert.equal(source.text, 'one\n\n2\n\n\nthree\n');
  assert.equal(source.reload(source.text), null);
});

test('a long note that changed at its first block is not read further than that', () => {
  const rest = Array.from({ length: 600 }, (_, index) => `Stycke ${index} om *allt* som står här.\n`).join('\n');
  const source = SourceDocument.load(`\ufeff# Rubrik\n\nEtt\n\n${rest}`);
  const before = source.doc.children;
  for (const start of ['# En rubrik\n\nEtt', 'Ingen rubrik\n\nEtt', '```\nkod', '---\na: 1\n---\n\nEtt']) {
    const text = `\ufeff${start}\n\n${rest}`;
    source.reload(text);
    assert.equal(source.text, text);
    assert.equal(source.pieces.join(''), text);
    assert.equal(disagreement(source), null, start);
  }
  source.reload(`\ufeff# Rubrik\n\nEtt\n\n${rest}`);
  assert.equal(disagreement(source), null);
  const kept = source.blocks[10]!.parsed;
  const [change, ...more] = source.reload(`\ufeff# Rubriken\n\nEtt\n\n${rest}`)!;
  assert.deepEqual([change!.from, change!.to, change!.nodes.length, more.length], [0, 1, 1, 0]);
  assert.equal(before.length, source.doc.childCount);
  assert.equal(source.blocks[10]!.parsed, kept);
});

test('pasted Markdown keeps its bytes', () => {
  const session = new Session('a\n');
  const pasted = session.source.adopt('* x\n*  y\n\n__z__');
  session.dispatch(session.state.tr.insert(session.state.doc.content.size, pasted));

  assert.equal(session.source.text, 'a\n\n* x\n*  y\n\n__z__\n');
});

test('a block moved elsewhere takes its bytes along', () => {
  const session = new Session('__a__\n\n* b\n\nc\n');
  const { doc } = session.state;
  const [first, second, third] = doc.children;
  session.dispatch(session.state.tr.replaceWith(0, doc.content.size, [third!, first!, second!]));

  assert.equal(session.source.text, 'c\n\n__a__\n\n* b\n');
});

test('a block tells its bytes', () => {
  const source = SourceDocument.load('a\r\n\r\n__b__\r\n');

  assert.equal(source.sliceOf(source.doc.child(1)), '__b__');
  assert.equal(source.sliceOf(nodes.paragraph.create()), null);
});

test('words survive even what no writer knows', () => {
  const source = SourceDocument.load('a\n');
  const strange = nodes.table.create(null, []);
  const quote = nodes.blockquote.create(null, [nodes.paragraph.create(null, schema.text('kept')), strange]);

  source.apply(nodes.doc.create(null, [source.doc.firstChild!, quote]));
  assert.match(source.text, /^a\n\n.*kept/s);
  assert.equal(disagreement(source), null);
});

test('a label leads to its definition', () => {
  const source = SourceDocument.load('[A  b]\n\n> [a B]: /x "t"\n');

  assert.deepEqual(source.definitionFor('A b'), { url: '/x', title: 't' });
  assert.equal(source.definitionFor('c'), null);
});
