import assert from 'node:assert/strict';
import { test } from 'node:test';
import { SourceDocument } from '../../src/source/SourceDocument';
import { inlineElements } from '../../src/views/inlineHtml';

const elements = (text: string) =>
  inlineElements(SourceDocument.load(text).doc.firstChild!).map(({ name, open, close }) => `${name} ${open}-${close}`);

test('an element is shown when both its tags are there, also within another', () => {
  assert.deepEqual(elements('<kbd>Ctrl</kbd>+<KBD>B</kbd>\n'), ['kbd 0-5', 'kbd 7-9']);
  assert.deepEqual(elements('H<sub>2<u>3</u></sub>\n'), ['u 3-5', 'sub 1-6']);
  assert.deepEqual(elements('<q>**a** <u>b</q>\n'), ['q 0-5']);
});

test('what is not closed, has attributes or could do something stays a tag', () => {
  for (const text of ['a <kbd>b\n', 'a</kbd> <kbd>\n', '<u onclick="x">a</u>\n', '<a>b</a> <script>c</script>\n', '`<u>a</u>`\n'])
    assert.deepEqual(elements(text), []);
});
