/** Listing a bucket, sorted as the sidebar shows it, against fd listing the same folder. */
import { bucketOf } from '../lib/buckets.mjs';
import { listPair } from '../lib/vault.mjs';

export const title = 'The tree of a bucket with 100,000 notes, against fd';

const pairs = [
  listPair({ name: 'buildTree', call: 'tree', reach: 0.4 }),
  listPair({ name: 'allMarkdownFiles', call: 'notes', reach: 0.35 }),
];

export const cases = pairs.map(({ line }) => line);

export const contenders = ({ bin, out }) => pairs.flatMap((pair) => pair.contenders(bin, bucketOf(100_000, out)));
