// Bundles the tests that run inside the web engine, and writes the notes that they are tried on:
//   node build-engine-tests.mjs [DIR]   engine-tests.js and engine-samples.json, by default into ../build/engine-tests
import { build } from 'esbuild';
import { mkdir, rm, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath, pathToFileURL } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const out = path.resolve(process.argv[2] ?? path.join(here, '../build/engine-tests'));
const inPage = (...parts) => path.join(here, ...parts);

/** Every `step`-th of `samples`: the engine gets a part of what the tests in node try whole. */
const every = (step, samples) => samples.filter((_, index) => index % step === 0);

async function writeSamples() {
  const bundle = path.join(out, 'corpus.mjs');
  await build({ entryPoints: [inPage('test/corpus.ts')], outfile: bundle, bundle: true, format: 'esm', platform: 'node', target: 'node18', logLevel: 'warning' });
  process.chdir(here);
  const corpus = await import(pathToFileURL(bundle).href);
  await rm(bundle);
  const small = corpus.packageFiles().filter(({ text }) => text.length < 20_000);
  const samples = [...corpus.edgeNotes(), ...corpus.gfmExamples(), ...every(5, corpus.commonMarkExamples()), ...every(10, small)];
  await writeFile(path.join(out, 'engine-samples.json'), JSON.stringify(samples));
}

await mkdir(out, { recursive: true });
await build({
  entryPoints: [inPage('test/engine/index.ts')],
  outfile: path.join(out, 'engine-tests.js'),
  bundle: true,
  format: 'iife',
  target: 'chrome102',
  charset: 'utf8',
  legalComments: 'none',
  logLevel: 'warning',
  loader: { '.svg': 'text' },
});
await writeSamples();
