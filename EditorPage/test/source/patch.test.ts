import assert from 'node:assert/strict';
import { test } from 'node:test';
import { typedBehind } from './typing';

test('what has to be written anew is the marked text beside the letters, not the paragraph', () => {
  assert.equal(
    typedBehind('one &copy; two _it_ three **a**\\* __b__ &amp; end\n', 'two ', 'x'),
    'one &copy; two x*it* three **a**\\* __b__ &amp; end\n',
  );
});

test('words get behind a character reference wherever it stands', () => {
  assert.equal(typedBehind('&#42;foo&#42;\n*bar*\n', 'foo*', ' x'), '&#42;foo&#42; x\n*bar*\n');
  assert.equal(typedBehind('a &lt;&gt; b\n', '<', 'x'), 'a &lt;x&gt; b\n');
  assert.equal(typedBehind('a&amp;\n', 'a&', ' x'), 'a&amp; x\n');
});
