// Builds the pages of the editors to compare with: node build.mjs [--out DIR]
import { build } from 'esbuild';
import { cp, mkdir } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const at = process.argv.indexOf('--out');
const out = at > 0 ? path.resolve(process.argv[at + 1]) : path.join(here, '../out/pages');

for (const page of ['codeMirror', 'milkdown']) {
  const folder = path.join(out, page);
  await mkdir(folder, { recursive: true });
  await build({
    entryPoints: { index: path.join(here, `src/${page}.js`) },
    outdir: folder,
    bundle: true,
    minify: true,
    format: 'esm',
    target: 'chrome102',
    legalComments: 'none',
    logLevel: 'warning',
  });
  for (const file of ['index.html', 'index.css']) await cp(path.join(here, 'src', file), path.join(folder, file));
}
