// Bundles the tests that run inside the web engine: node build-engine-tests.mjs [FILE], by default ../build/engine-tests/engine-tests.js
import { build } from 'esbuild';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const out = process.argv[2] ? path.resolve(process.argv[2]) : path.join(here, '../build/engine-tests/engine-tests.js');

await build({
  entryPoints: [path.join(here, 'test/engine/index.ts')],
  outfile: out,
  bundle: true,
  format: 'iife',
  target: 'chrome102',
  charset: 'utf8',
  legalComments: 'none',
  logLevel: 'warning',
  loader: { '.svg': 'text' },
});
