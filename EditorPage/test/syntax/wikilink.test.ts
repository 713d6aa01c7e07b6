import assert from 'node:assert/strict';
import { test } from 'node:test';
import { readEntries } from '../../src/source/entries';
import { readWikilink } from '../../src/syntax/wikilink';

const first = (text: string) => readEntries(text, true).entries[0]!.node;
const kinds = (text: string) => first(text).children.map((child) => child.type.name);

test('a wiki link is one node, with or without another text', () => {
  const [link] = first('[[Note#Part|shown]]').children;

  assert.equal(link!.type.name, 'wikilink');
  assert.deepEqual({ ...link!.attrs }, { target: 'Note#Part', alias: 'shown' });
  assert.deepEqual({ ...first('![[a b.png|300]]').firstChild!.attrs }, { target: 'a b.png', alias: '300' });
  assert.deepEqual(kinds('see [[a]], ![[b]]!'), ['text', 'wikilink', 'text', 'embed', 'text']);
});

test('what is no wiki link stays text', () => {
  for (const text of ['[[]]', '[[ ]]', '[[a]', '[[a\nb]]', '[[a[b]]', '\\[[a]]', '`[[a]]`']) {
    assert.ok(!kinds(text).includes('wikilink'), text);
  }
});

test('in a table the pipe stands behind a backslash', () => {
  assert.deepEqual(readWikilink('[[a\\|b]]'), { isEmbed: false, target: 'a', alias: 'b' });
  const cell = first('| a |\n|---|\n| [[x\\|y]] |\n').child(1).firstChild!;
  assert.deepEqual({ ...cell.firstChild!.attrs }, { target: 'x', alias: 'y' });
});
