import assert from 'node:assert/strict';
import { test } from 'node:test';
import { typingRules } from '../../src/commands/inputRules';
import { typed } from './onText';

/** What is typed into which note, and the note afterwards. */
const cases: readonly (readonly [string, string, string])[] = [
  ['‸\n', '# a', '# a‸\n'],
  ['‸\n', '###### a', '###### a‸\n'],
  ['‸\n', '- a', '- a‸\n'],
  ['- a\n\n‸b\n', '- ', '- a\n- ‸b\n'],
  ['‸\n', '* a', '* a‸\n'],
  ['‸\n', '+ a', '+ a‸\n'],
  ['+‸a b\n', ' ', '+ ‸a b\n'],
  ['‸\n', '3. a', '3. a‸\n'],
  ['‸\n', '3) a', '3) a‸\n'],
  ['‸\n', '[ ] a', '- [ ] a‸\n'],
  ['- ‸\n', '[ ] a', '- [ ] a‸\n'],
  ['‸\n', '- [ ] a', '- [ ] a‸\n'],
  ['‸\n', '[x] a', '- [x] a‸\n'],
  ['- ‸x\n', '[ ] ', '- [ ] ‸x\n'],
  ['‸\n', '> a', '> a‸\n'],
  ['‸\n', '```js a', '```js\na‸\n```\n'],
  ['x\n\n‸\n\ny\n', '---', 'x\n\n---\n\n‸\n\ny\n'],
  ['‸\n', 'a **b** c', 'a **b** c‸\n'],
  ['‸\n', 'a __b__ c', 'a __b__ c‸\n'],
  ['‸\n', 'a *b* c', 'a *b* c‸\n'],
  ['‸\n', 'a _b_ c', 'a _b_ c‸\n'],
  ['‸\n', 'a ==b== c', 'a ==b== c‸\n'],
  ['‸\n', 'a ~~b~~ c', 'a ~~b~~ c‸\n'],
  ['‸\n', 'a `b` c', 'a `b` c‸\n'],
  ['‸\n', 'a [b](c) d', 'a [b](c) d‸\n'],
  ['‸\n', 'a [[B c]] d', 'a [[B c]] d‸\n'],
  ['‸\n', 'a [[B|c]] d', 'a [[B|c]] d‸\n'],
  ['‸\n', 'a ![[b.png]] d', 'a ![[b.png]] d‸\n'],
  ['‸\n', 'a ***b*** c', 'a ***b*** c‸\n'],
  ['‸\n', '_a_ *b* __c__ **d** e', '_a_ *b* __c__ **d** e‸\n'],
  ['‸\n', '***b*** c', '***b*** c‸\n'],
  ['‸\n', 'a ![b](c.png) d', 'a ![b](c.png) d‸\n'],
  ['‸\n', 'a $x^2$ b $y$ c', 'a $x^2$ b $y$ c‸\n'],
  ['a‸\n\n[^1]: b\n', '[^1] c', 'a[^1] c‸\n\n[^1]: b\n'],
];

for (const [before, text, wanted] of cases) {
  test(`typing ${JSON.stringify(text)} into ${JSON.stringify(before)}`, () => {
    assert.equal(typed(typingRules(), before, text), wanted);
  });
}

/** Text that stays exactly what was typed. */
const plain: readonly string[] = ['"citat"', "d'accord", 'a -- b', 'a...', '(c)', '1/2', '2 * 3 * 4', 'snake_case_name', 'a=b==c', 'kl. 8', '10 %',
  '1.5 dl', '+46 70', '#tagg', '-5 grader', '~ca', '=x', 'a [x] y', '$5 och $10', '$5-$10', 'a[^1] b', '2024-11-22'];

for (const text of plain) {
  test(`${text} stays as it is typed`, () => {
    assert.equal(typed(typingRules(), '‸\n', text), `${text}‸\n`);
  });
}

test('nothing is replaced in code', () => {
  assert.equal(typed(typingRules(), '```\n‸x\n```\n', '**a** - '), '```\n**a** - ‸x\n```\n');
  assert.equal(typed(typingRules(), '`a‸b`\n', '==c=='), '`a==c==‸b`\n');
});

test('an item with a box or a letter stays body text', () => {
  assert.match(typed(typingRules(), '- [ ] ‸x\n', '# '), /^- \[ \] \\?# ‸x\n$/);
});
