import assert from 'node:assert/strict';
import { test } from 'node:test';
import { played } from './playing';

/** A note, what is played on it, the note afterwards. */
const cases: readonly (readonly [string, readonly string[], string])[] = [
  // Lists as they are written.
  ['‸\n', ['- ett', '<Enter>', 'två', '<Enter>', '<Tab>', 'in', '<Enter>', '<Enter>', 'ut', '<Enter>', '<Enter>', 'slut'], '- ett\n- två\n  - in\n- ut\n\nslut\n'],
  ['‸\n', ['1. ett', '<Enter>', 'två', '<Enter>', '<Shift-Tab>', 'slut'], '1. ett\n2. två\n\nslut\n'],
  ['- [x] a‸\n', ['<Enter>', 'b'], '- [x] a\n- [ ] b\n'],
  ['‸\n', ['{letterList}', 'ett', '<Enter>', 'två', '<Enter>', '<Enter>', 'slut'], 'A. ett\nB. två\n\nslut\n'],
  ['ett‸\n', ['{letterList}'], 'A. ett\n'],
  ['- ett\n  - två‸\n', ['{letterList}', '<Enter>', 'tre'], '- ett\n\n  A. två\n  B. tre\n'],
  // Out of the middle: the items below keep their bytes once something is written between.
  ['*  a‸\n*  b\n*  c\n', ['<Enter>', '<Enter>', 'x'], '*  a\n\nx\n\n*  b\n*  c\n'],
  ['1) a‸\n2) b\n', ['<Enter>', '<Enter>', 'x'], '1) a\n\nx\n\n1) b\n'],
  ['> a‸\n>\n> b\n', ['<Enter>', '<Enter>', 'x'], '> a\n\nx\n\n> b\n'],
  ['- a\n- ‸\n- c\n', ['<Backspace>', '<Backspace>'], '- a\n- c\n'],
  // Backspace and Delete at the ends of items.
  ['- a\n  - b\n- ‸c\n', ['<Backspace>'], '- a\n  - b\n\nc\n'],
  ['- a\n  - b\n- ‸c\n', ['<Backspace>', '<Backspace>'], '- a\n  - bc\n'],
  ['- a\n\n‸b\n\n- c\n', ['<Backspace>'], '- ab\n- c\n'],
  ['A. a\nB. b\n\n‸c\n', ['<Backspace>'], 'A. a\nB. bc\n'],
  ['- a‸\n- b\n- c\n', ['<Delete>'], '- ab\n- c\n'],
  ['- a‸\n  - b\n- c\n', ['<Delete>'], '- ab\n- c\n'],
  ['- a\n  - b‸\n- c\n', ['<Delete>'], '- a\n  - bc\n'],
  ['a‸\n\n- b\n- c\n', ['<Delete>'], 'ab\n\n- c\n'],
  ['- a‸\n\nb\n\n- c\n', ['<Delete>'], '- ab\n- c\n'],
  // Another list below one, and blocks inside an item: what is typed next is in them.
  ['- ett‸\n', ['<Enter>', '<Enter>', '[ ] göra', '<Enter>', 'mer'], '- ett\n\n- [ ] göra\n\n- [ ] mer\n'],
  ['- ett\n  - två‸\n', ['<Enter>', '<Enter>', '<Enter>', '[ ] göra'], '- ett\n  - två\n\n- [ ] göra\n'],
  ['- ett‸\n', ['<Enter>', '```js', '<Enter>', 'a', '<Enter>', 'b', '<Enter>', '<Enter>', '<Enter>', 'ut'], '- ett\n- ```js\n  a\n  b\n  ```\n- ut\n'],
  ['- | a | b |\n  | - | - |\n  | c | d‸ |\n', ['<Enter>', '<Enter>', 'ut'], '- | a | b |\n  | - | - |\n  | c | d |\n- ut\n'],
  ['> | a | b |\n> | - | - |\n> | c | d‸ |\n', ['<Enter>', '<Enter>', 'ut'], '> | a | b |\n> | - | - |\n> | c | d |\n\nut\n'],
  ['- ‸\n', ['```js', '<Enter>', 'kod', '<Enter>', '```', '<Enter>', 'ut'], '- ```js\n  kod\n  ```\n- ut\n'],
  ['- a\n\n  ‸\n\n  b\n', ['```', '<Enter>', `${'kod '.repeat(30)}`, '<Enter>', '```', '<Enter>', 'ut'], `- a\n\n  \`\`\`\n  ${'kod '.repeat(30)}\n  \`\`\`\n\n  ut\n\n  \n\n  b\n`],
  // The other items keep their numbers.
  ['1. ett\n2. två‸\n3. tre\n', ['<Enter>', 'ny', '<Enter>', 'mer'], '1. ett\n2. två\n3. ny\n4. mer\n3. tre\n'],
  ['1. ett\n1. två‸\n1. tre\n', ['<Enter>', 'ny'], '1. ett\n1. två\n1. ny\n1. tre\n'],
  ['1. ‸ett\n2. två\n', ['<Enter>'], '1.\n1. ett\n2. två\n'],
  ['ett‸ två\n', ['{codeBlock}', 'x'], '```\nettx två\n```\n'],
  // Blocks that a line and Enter open.
  ['‸\n', ['```js', '<Enter>', 'kod'], '```js\nkod\n```\n'],
  ['‸\n', ['```', '<Enter>', 'kod', '<Enter>', '```', '<Enter>', 'ut'], '```\nkod\n```\n\nut\n'],
  ['‸\n', ['```', '<Enter>', '```', '<Enter>', 'ut'], '```\n```\n\nut\n'],
  ['‸\n', ['```', '<Enter>', '```js', '<Enter>', '```', '<Enter>', 'in'], '````\n```js\n```\nin\n````\n'],
  ['‸\n', ['$$', '<Enter>', 'x', '<Enter>', '$$', '<Enter>', 'ut'], '$$\nx\n$$\n\nut\n'],
  ['‸\n', ['***', '<Enter>', 'ut'], '---\n\nut\n'],
  ['ett‸\n', ['<Enter>', '---', '<Enter>', 'ut', '<Enter>', 'mer'], 'ett\n\n---\n\nut\n\nmer\n'],
  ['> ‸\n', ['___', '<Enter>', 'ut'], '> ---\n\nut\n'],
  ['> ett‸\n> två\n', ['<Enter>', 'x'], '> ett\n>\n> x\n> två\n'],
  ['- ett‸\n  två\n', ['<Enter>', 'x'], '- ett\n- x\n  två\n'],
  ['‸\n', ['$$', '<Enter>', 'x'], '$$\nx\n$$\n'],
  ['‸\n', ['|a|b|', '<Enter>', 'c', '<Tab>', 'd', '<Tab>', '<Enter>', 'slut'], '| a | b |\n| - | - |\n| c | d |\n\nslut\n'],
  // A note that is written after the place that refers to it.
  ['‸\n', ['a[^1] b', '<Enter>', '[^1]: c'], 'a[^1] b\n\n[^1]: c\n'],
  // What needs no backslash in the end has none, wherever it was typed.
  ['‸\n', ['- ', '1.5 dl', '<Enter>', '+46', '<Enter>', '#tagg', '<Enter>', '-5 grader'], '- 1.5 dl\n- +46\n- #tagg\n- -5 grader\n'],
  ['‸\n', ['5$ och 10$ <b>hej'], '5$ och 10$ \\<b>hej\n'],
  ['> ‸\n', ['1.5 dl', '<Enter>', '#tagg'], '> 1.5 dl\n>\n> #tagg\n'],
];

for (const [before, acts, after] of cases) {
  test(`${acts.join(' ')} on ${JSON.stringify(before)}`, () => {
    assert.equal(played(before, ...acts).text, after);
  });
}

test('the caret stays where the list was left', () => {
  assert.equal(played('- a‸\n- b\n', '<Enter>', '<Enter>').shown, '- a\n\n‸\n\n- b');
});
