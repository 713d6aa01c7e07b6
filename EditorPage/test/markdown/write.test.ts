import assert from 'node:assert/strict';
import { test } from 'node:test';
import { markdownOf, writeBlock } from '../../src/markdown/write';
import { schema } from '../../src/schema';
import { readBlock, readEntries } from '../../src/source/entries';
import { adjusted } from '../../src/source/adjust';
import { labelsOf } from '../../src/source/labels';
import { isBlank, isSame, tidy } from '../../src/source/normal';
import { allSamples } from '../corpus';

const { nodes, marks } = schema;
const written = (text: string) => markdownOf(readEntries(text, true).entries.map((entry) => entry.node));

test('plain Markdown is written as people write it', () => {
  const text = [
    '# Title',
    'Text with **bold**, *italic*, ==marked==, ~~gone~~, `code` and [link](http://x.se "t").',
    '- one\n- [ ] two\n  - three',
    '1. one\n2. two',
    'A. one\nB. two',
    '> quote\n>\n> more',
    '```js\ncode\n```',
    '| a | b |\n| - | :-: |\n| 1 | [[x\\|y]] |',
    'See [[Note|name]], ![[a.png]], $x^2$ and www.x.se.',
    '---',
  ].join('\n\n');

  assert.equal(written(`${text}\n`), `${text}\n`);
});

test('marks beside blanks and letters are written so that they hold', () => {
  const strong = marks.strong.create();
  const block = nodes.paragraph.create(null, [schema.text('a'), schema.text(' b ', [strong]), schema.text('c')]);

  assert.equal(writeBlock(tidy(block)), 'a **b** c');
});

test('what is written anew reads as what it was made from, nearly always', () => {
  const failed: string[] = [];
  let count = 0;
  for (const { name, text } of allSamples(4).filter((sample) => sample.text.length < 20_000)) {
    const { entries } = readEntries(text, true);
    const labels = new Set(entries.flatMap((entry) => labelsOf(entry.node)));
    for (const { node } of entries) {
      if (isBlank(node)) continue;
      count += 1;
      const block = readBlock(writeBlock(tidy(adjusted(node))), node.type, labels);
      if (!block || !isSame(block.parsed, node)) failed.push(`${name}: ${node.toString().slice(0, 100)}`);
    }
  }
  assert.ok(failed.length < count / 100, `${failed.length} of ${count}\n${failed.join('\n')}`);
});

test('an ampersand has a backslash only where it would begin a character', () => {
  const link = (text: string, href: string) => writeBlock(nodes.paragraph.create(null, schema.text(text, [marks.link.create({ href })])));
  assert.equal(link('A&B & &c', '/?a=1&b=2'), '[A&B & &c](/?a=1&b=2)');
  assert.equal(link('&amp; &#38; \\&c', '/?a&lt;'), '[\\&amp; \\&#38; \\\\&c](/?a\\&lt;)');
});
