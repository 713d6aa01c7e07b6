// Builds the editor page, or its tests.
//   node build.mjs [--out DIR]   the page, into ../WendloreKit/Resources/dist
//   node build.mjs --tests       every test/**/*.test.ts, into ../build/page-tests
import { build } from 'esbuild';
import { cp, mkdir, readdir, readFile, rm } from 'node:fs/promises';
import { existsSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const inPage = (...parts) => path.join(here, ...parts);

/** Files of their own in the built page, fetched when they are first needed. */
const PARTS = ['views/katex', 'views/lowlight', 'sourceView/codeMirror'];

async function filesBelow(folder, suffix) {
  if (!existsSync(folder)) return [];
  const found = [];
  for (const entry of await readdir(folder, { withFileTypes: true })) {
    const full = path.join(folder, entry.name);
    if (entry.isDirectory()) found.push(...(await filesBelow(full, suffix)));
    else if (entry.name.endsWith(suffix)) found.push(full);
  }
  return found.sort();
}

/**
 * ProseMirror finds out which engine runs it by the look of a stack trace, for which the engine compiles the whole page a second
 * time: about a fifth of the page's start. The page runs in one engine only, so the answer is known.
 */
const withoutStackTrace = {
  name: 'without-stack-trace',
  setup({ onLoad }) {
    onLoad({ filter: /prosemirror-model\/dist\/index\.js$/ }, async ({ path: file }) => {
      const before = await readFile(file, 'utf8');
      const contents = before.replace('let { stack } = new Error("/");', 'let stack = "\\n at ";');
      if (contents === before) throw new Error('prosemirror-model no longer takes a stack trace; drop this plug-in');
      return { contents };
    });
  },
};

async function buildPage(out) {
  await rm(out, { recursive: true, force: true });
  await mkdir(out, { recursive: true });
  const options = {
    outdir: out,
    entryNames: '[name]',
    assetNames: 'files/[name]',
    bundle: true,
    minify: true,
    target: 'chrome102',
    charset: 'utf8',
    legalComments: 'none',
    logLevel: 'warning',
    plugins: [withoutStackTrace],
    loader: { '.svg': 'text', '.woff2': 'file', '.woff': 'empty', '.ttf': 'empty' },
  };
  const page = [inPage('src/index.ts'), inPage('src/style/index.css')];
  await build({ ...options, entryPoints: page, format: 'iife', external: PARTS.map((part) => `./${path.basename(part)}.js`) });
  await build({ ...options, entryPoints: PARTS.map((part) => inPage(`src/${part}.ts`)), format: 'esm' });
  for (const file of ['index.html', 'begin.js']) await cp(inPage('src', file), path.join(out, file));
}

async function buildTests() {
  const out = inPage('../build/page-tests');
  await rm(out, { recursive: true, force: true });
  await build({
    entryPoints: await filesBelow(inPage('test'), '.test.ts'),
    outdir: out,
    outbase: inPage('test'),
    outExtension: { '.js': '.mjs' },
    chunkNames: 'shared/[name]-[hash]',
    bundle: true,
    splitting: true,
    format: 'esm',
    platform: 'node',
    target: 'node18',
    mainFields: ['module', 'main'],
    sourcemap: 'inline',
    sourcesContent: false,
    logLevel: 'warning',
    loader: { '.svg': 'text' },
  });
}

const args = process.argv.slice(2);
if (args.includes('--tests')) await buildTests();
else {
  const at = args.indexOf('--out');
  await buildPage(at >= 0 ? path.resolve(args[at + 1]) : inPage('../WendloreKit/Resources/dist'));
}
