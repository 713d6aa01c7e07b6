import assert from 'node:assert/strict';
import { test } from 'node:test';
import { TextStep } from '../../src/sourceView/textStep';

test('changes the text it was made for, and back', () => {
  const step = new TextStep(2, '*', '--');
  assert.equal(step.changed('a\n* b'), 'a\n-- b');
  assert.equal((step.invert() as TextStep).changed('a\n-- b'), 'a\n* b');
});

test('leaves another text alone', () => assert.equal(new TextStep(2, '*', '-').changed('a\n+ b'), null));
