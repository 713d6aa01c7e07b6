/** Searching a bucket, every note read anew, against ripgrep naming the files that hold the text. */
import { bucketOf, queries } from '../lib/buckets.mjs';
import { benchVault, searchPair } from '../lib/vault.mjs';

export const title = 'Search through every note, against ripgrep';

const kinds = [
  { what: 'absent', query: queries.none, reach: 0.5 },
  { what: 'in one note', query: queries.one, reach: 0.5 },
  { what: '"möte" in a quarter', query: queries.quarter, reach: 0.6 },
  { what: 'every note hits', query: queries.all, reach: 0.65 },
  { what: 'one letter', query: queries.letter, reach: 0.6 },
];

const sizes = [
  { count: 10_000, size: '10k notes' },
  { count: 100_000, size: '100k notes' },
];

const searches = sizes.flatMap(({ count, size }) =>
  kinds.map(({ what, ...kind }) => ({ count, pair: searchPair({ name: `${what}, ${size}`, ...kind }) })),
);
const cold = searchPair({ name: 'absent, 10k notes, cold', query: queries.none, reach: 0.4, isCold: true });
searches.push({ count: sizes[0].count, pair: cold });

const floor = 'only reading every note';

export const cases = [
  ...searches.map(({ pair }) => pair.line),
  { name: `${floor}, 10k notes`, ours: [floor, 'ms'], base: searches[0].pair.line.base, baseName: 'rg -i -l' },
  { name: 'memory, 100k notes hit', ours: ['search: every note hits, 100k notes', 'grown'], most: 30, unit: 'MB' },
];

export function contenders({ bin, out }) {
  return [
    ...searches.flatMap(({ count, pair }) => pair.contenders(bin, bucketOf(count, out))),
    { name: floor, measure: () => benchVault(bin, ['floor', bucketOf(sizes[0].count, out)]) },
  ];
}
