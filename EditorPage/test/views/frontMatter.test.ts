import assert from 'node:assert/strict';
import { test } from 'node:test';
import { summaryOf } from '../../src/views/frontMatter';

test('the summary names the fields', () => {
  assert.equal(summaryOf('titel: x\ntaggar: [a, b]\n'), 'Egenskaper: titel, taggar');
  assert.equal(summaryOf('skapad den: 2025\nlista:\n  - inre: x\n'), 'Egenskaper: skapad den, lista');
  assert.equal(summaryOf('titel = "x"\n[avsnitt]\n'), 'Egenskaper: titel');
});

test('many fields are cut short, and none are only called what they are', () => {
  assert.equal(summaryOf('a: 1\nb: 2\nc: 3\nd: 4\ne: 5\n'), 'Egenskaper: a, b, c, d …');
  assert.equal(summaryOf('# bara en kommentar\n'), 'Egenskaper');
  assert.equal(summaryOf(''), 'Egenskaper');
});
