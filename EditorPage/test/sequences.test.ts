import assert from 'node:assert/strict';
import { test } from 'node:test';
import fc from 'fast-check';
import { allSamples } from './corpus';
import { runSequence } from './editing';
import { Random } from './random';

/** How many random sequences are tried: more in a long run, or as many as SEQUENCES says, and from FIRST_SEED on. */
const sequences = Number(process.env.SEQUENCES ?? (process.env.LONG ? 20_000 : 500));
const firstSeed = Number(process.env.FIRST_SEED ?? 1);

/** Samples that are quick enough to be read back after every edit. */
const longest = process.env.LONG ? 4000 : 1500;
const samples = allSamples().filter(({ text }) => text.length < longest);

test('after every random edit the text says what the document says, and undo brings the bytes back', (context) => {
  const failures: string[] = [];
  for (let seed = firstSeed; seed < firstSeed + sequences; seed += 1) {
    const random = new Random(seed);
    const sample = random.pick(samples);
    const failure = runSequence(sample, random, 1 + random.below(20));
    if (failure)
      failures.push(
        `[${seed}, '${sample.name}'] ${failure.edits.join(' ')}: ${failure.what} IN ${failure.text.slice(0, 500)}`,
      );
  }
  context.diagnostic(`${sequences} sequences from seed ${firstSeed}, ${failures.length} failed`);
  assert.deepEqual(failures, []);
});

const inline = fc.constantFrom(
  'a',
  ' b',
  '*',
  '**',
  '_',
  '`',
  '~~',
  '==',
  '[',
  ']',
  '(x)',
  '[[N]]',
  '![',
  '<b>',
  '\\',
  '&amp;',
  '$',
  'å',
  '!',
  '.',
  'http://x.se',
  '[^1]',
  '|',
  '\n',
);
const line = fc.array(inline, { maxLength: 8 }).map((parts) => parts.join(''));
const start = fc.constantFrom(
  '',
  '',
  '',
  '- ',
  '* ',
  '1. ',
  '> ',
  '# ',
  '    ',
  '  ',
  '```\n',
  '| ',
  '- [ ] ',
  'A. ',
  '---\n',
  '<div>\n',
  '[x]: /y\n',
  '[^1]: ',
  '$$\n',
  '\t',
  '+++\n',
);
const note = fc.array(fc.tuple(start, line, fc.constantFrom('\n', '\n\n', '\r\n', '\n\n\n')), { maxLength: 8 });

test('random texts are kept, edited and restored', () => {
  const property = fc.property(note, fc.nat(), (parts, seed) => {
    const text = parts.map((part) => part.join('')).join('');
    assert.equal(runSequence({ name: 'random', text }, new Random(seed), 6), null);
  });
  fc.assert(property, { numRuns: Math.ceil(sequences / 4), seed: firstSeed });
});
