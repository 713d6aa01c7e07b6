// Runs the bundled tests with node's own runner. The files are named one by one because what a folder
// argument means differs between the versions of node. Arguments narrow the run: `node run-tests.mjs parse fidelity`.
import { readdirSync } from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { run } from 'node:test';
import { spec, tap } from 'node:test/reporters';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const folder = path.join(here, '../build/page-tests');

function testsBelow(dir) {
  return readdirSync(dir, { withFileTypes: true }).flatMap((entry) => {
    const full = path.join(dir, entry.name);
    if (entry.isDirectory()) return testsBelow(full);
    return entry.name.endsWith('.test.mjs') ? [full] : [];
  });
}

const words = process.argv.slice(2);
const files = testsBelow(folder)
  .filter((file) => words.length === 0 || words.some((word) => path.relative(folder, file).includes(word)))
  .sort();
if (files.length === 0) {
  console.error('no test files found');
  process.exit(1);
}
// Two at a time also where the runner would leave a core idle. The longest come first.
const longest = ['fidelity', 'sequences', 'everywhere'];
const rank = (file) => (longest.findIndex((word) => path.basename(file).startsWith(word)) + 4) % 4;
process.env.NODE_OPTIONS = `${process.env.NODE_OPTIONS ?? ''} --enable-source-maps`;
process.chdir(here);
run({ files: files.sort((a, b) => rank(a) - rank(b)), concurrency: Math.max(2, os.availableParallelism() - 1) })
  .on('test:fail', () => (process.exitCode = 1))
  .compose(process.stdout.isTTY ? new spec() : tap)
  .pipe(process.stdout);
