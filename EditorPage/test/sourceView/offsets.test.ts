import assert from 'node:assert/strict';
import { test } from 'node:test';
import { SourceDocument } from '../../src/source/SourceDocument';
import { unify } from '../../src/source/text';
import { offsetOf, placeAt } from '../../src/sourceView/offsets';

const NOTE = [
  '---\ntitel: x\n---\n',
  '# Rubrik *ett* två\n',
  'Ett **fet** ord, &amp; en [länk](b.md) och [[Not|namn]].\\\nny rad  \nslut\n',
  '- a\n  - b\n\n    c\n- [x] d\n',
  '> citat\n> rad\n>\n> - e\n',
  '```js\nlet x;\n```\n',
  '| f | g |\n| - | - |\n| h **i** | j |\n',
  'A. k\nB. l\n',
  '<b>\nhtml\n</b>\n',
].join('\n');

/** Every letter that stands alone in the note, with both its places. */
function letters(text: string): { letter: string; pos: number; offset: number }[] {
  const source = SourceDocument.load(text);
  const shown = unify(text.replace(/^\ufeff/, '')).text;
  const found: { letter: string; pos: number; offset: number }[] = [];
  source.doc.descendants((node, pos) => {
    for (const match of (node.text ?? '').matchAll(/(?<![\p{L}])\p{L}+(?![\p{L}])/gu)) {
      const word = match[0];
      if (shown.split(new RegExp(`(?<!\\p{L})${word}(?!\\p{L})`, 'u')).length !== 2) continue;
      found.push({ letter: word, pos: pos + match.index!, offset: shown.search(new RegExp(`(?<!\\p{L})${word}(?!\\p{L})`, 'u')) });
    }
  });
  return found;
}

for (const [name, text] of [['LF', NOTE], ['CRLF', NOTE.replace(/\n/g, '\r\n')], ['CR', NOTE.replace(/\n/g, '\r')], ['byte order mark', `\ufeff${NOTE}`]] as const) {
  test(`every word has its place in the source and back: ${name}`, () => {
    const source = SourceDocument.load(text);
    const words = letters(text);
    assert.ok(words.length > 15, `${words.length} words`);
    for (const { letter, pos, offset } of words) {
      assert.equal(offsetOf(source.blocks, pos), offset, `offset of ${letter}`);
      assert.equal(placeAt(source.doc, source.blocks, offset).head, pos, `place of ${letter}`);
    }
  });
}

test('every place has an offset inside of the source, in ascending order', () => {
  const source = SourceDocument.load(NOTE);
  let last = 0;
  for (let pos = 0; pos <= source.doc.content.size; pos++) {
    const offset = offsetOf(source.blocks, pos);
    assert.ok(offset >= 0 && offset <= NOTE.length, `${pos}: ${offset}`);
    const $pos = source.doc.resolve(pos);
    if (!$pos.parent.isTextblock) continue;
    assert.ok(offset >= last, `${pos}: ${offset} after ${last}`);
    last = offset;
  }
});

test('every offset has a place for the caret', () => {
  const source = SourceDocument.load(NOTE);
  for (let offset = 0; offset <= NOTE.length + 3; offset++) assert.ok(placeAt(source.doc, source.blocks, offset).$head.parent.inlineContent);
});
