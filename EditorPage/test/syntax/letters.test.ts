import assert from 'node:assert/strict';
import { test } from 'node:test';
import { letterLabel, letterNumber, readLetterMarker } from '../../src/syntax/letters';

test('letters count on behind Z', () => {
  assert.deepEqual([1, 26, 27, 52, 53, 702].map(letterLabel), ['A', 'Z', 'AA', 'AZ', 'BA', 'ZZ']);
  for (let number = 1; number <= 702; number += 1) assert.equal(letterNumber(letterLabel(number)), number);
});

test('a marker is a letter, a full stop and a blank', () => {
  assert.deepEqual(readLetterMarker('B. two'), { number: 2, length: 3 });
  assert.deepEqual(readLetterMarker('C.'), { number: 3, length: 2 });
  for (const line of ['b. two', 'B.two', 'B two', '1. a', 'ABC. d']) assert.equal(readLetterMarker(line), null, line);
});
