// Builds the page of the plain editor: node build.mjs [--out DIR]
import { build } from 'esbuild';
import { cp, mkdir } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const at = process.argv.indexOf('--out');
const out = at > 0 ? path.resolve(process.argv[at + 1]) : path.join(here, '../out/page');

await mkdir(out, { recursive: true });
await build({
  entryPoints: [path.join(here, 'src/index.js'), path.join(here, 'src/index.css')],
  outdir: out,
  bundle: true,
  minify: true,
  format: 'iife',
  target: 'chrome102',
  legalComments: 'none',
  logLevel: 'warning',
});
await cp(path.join(here, 'src/index.html'), path.join(out, 'index.html'));
