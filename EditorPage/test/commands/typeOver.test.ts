import assert from 'node:assert/strict';
import { test } from 'node:test';
import { typingOver } from '../../src/commands/typeOver';
import { typed } from './onText';

test('what is typed over blocks that do not join stays together', () => {
  assert.equal(typed(typingOver(), '```\na‹b\n```\n\nc›d $e$\n', 'xy'), '```\naxy‸\n```\n\nd $e$\n');
  assert.equal(typed(typingOver(), 'a‹b\n\n```\nc›d\n```\n', 'xy'), 'axy‸d\n');
  assert.equal(typed(typingOver(), '- a‹b\n- c›d\n\ne\n', 'xy'), '- axy‸d\n\ne\n');
});
