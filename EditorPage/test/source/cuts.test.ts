import assert from 'node:assert/strict';
import { test } from 'node:test';
import { safeCuts } from '../../src/source/cuts';

/** The lines that the note can be cut before. */
function linesCutBefore(text: string): string[] {
  return [...safeCuts(text)].map((at) => text.slice(at).split(/\r\n?|\n/, 1)[0]!);
}

const cases: Array<[name: string, text: string, lines: string[]]> = [
  ['a paragraph and a heading after a blank line', 'a\n\nb\nc\n\n# d\n', ['b', '# d']],
  ['any line ends', 'a\r\n\r\nb\r\rc\n\nd', ['b', 'c', 'd']],
  ['never before the first block', '\n\n\na\n\nb\n', ['b']],
  ['never in front matter, nor right behind it', '---\na: 1\n\nb: 2\n---\n\nc\n\nd\n', ['d']],
  ['not before lists, quotes, tables and code, which may go on', 'a\n\n- b\n\n> c\n\n| d |\n\n    e\n\n1. f\n', []],
  ['not before what may be a letter list', 'a\n\nB. c\n\nMen inte detta.\n', ['Men inte detta.']],
  ['behind a list and all that belongs to it', '- a\n\n  b\n\n- c\n\nd\n', ['d']],
  ['not in a fence', 'a\n\n```\nb\n\nc\n```\n\nd\n', ['d']],
  ['not in a fence that a shorter one does not close', 'a\n\n~~~~\nb\n\n~~~\n\nc\n', []],
  ['not in a formula', 'a\n$$\nb\n\nc\n$$\n\nd\n', ['d']],
  ['not in a comment or a script', 'a\n\n<!-- b\n\nc -->\n\nd\n\n<script>\n\ne\n</script>\n\nf\n', ['d', 'f']],
  ['behind a comment of one line', 'a\n\n<!-- b -->\n\nc\n', ['c']],
  ['not right behind an item with a fence, which the end of the item may close', '- a\n  ```\n\nb\n\nc\n', ['c']],
  ['no more where a fence may belong to an item or not', '- a\n\n ```\n\nb\n\nc\n', []],
];

for (const [name, text, lines] of cases) {
  test(`a note is cut: ${name}`, () => assert.deepEqual(linesCutBefore(text), lines));
}
