import assert from 'node:assert/strict';
import { test } from 'node:test';
import { spansOf } from '../../src/views/codeColors';
import { lowlight } from '../../src/views/lowlight';

/** Language, code, and some of the words with their colours. */
const cases: readonly (readonly [string, string, readonly (readonly [string, string])[]])[] = [
  ['js', 'const x = "å"; // hej', [['const', 'hljs-keyword'], ['"å"', 'hljs-string'], ['// hej', 'hljs-comment']]],
  ['Python', 'def f():\n  return 1', [['def', 'hljs-keyword'], ['f', 'hljs-title'], ['1', 'hljs-number']]],
  ['sh', 'echo "a$b"', [['echo', 'hljs-built_in'], ['$b', 'hljs-variable']]],
  ['ts', 'type A = string;', [['type', 'hljs-keyword']]],
  ['html', '<b class="x">y</b>', [['class', 'hljs-attr'], ['"x"', 'hljs-string']]],
  ['yaml', 'a: 1', [['a:', 'hljs-attr'], ['1', 'hljs-number']]],
];

for (const [language, code, wanted] of cases) {
  test(`${language} is coloured`, () => {
    const spans = spansOf(lowlight, language, code).map(([from, to, name]) => [code.slice(from, to), name] as const);
    for (const [word, colour] of wanted) {
      assert.ok(spans.some(([text, name]) => text === word && name.split(' ').includes(colour)), `${word} in ${JSON.stringify(spans)}`);
    }
  });
}

test('a language that is not known has no colours', () => assert.deepEqual(spansOf(lowlight, 'mermaid', 'graph'), []));

test('spans are in order and inside of the code', () => {
  const code = 'function f(a) {\n  return `x${a + 1}y` + /b\\/c/g;\n}\n';
  let last = 0;
  for (const [from, to] of spansOf(lowlight, 'js', code)) {
    assert.ok(from >= last && to > from && to <= code.length);
    last = to;
  }
});
