// Runs the bundled tests with node's own runner. The files are named one by one because what a folder
// argument means differs between the versions of node. Arguments narrow the run: `node run-tests.mjs parse fidelity`.
import { spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import path from 'node:path';
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
const result = spawnSync(process.execPath, ['--enable-source-maps', '--test', ...files], {
  stdio: 'inherit',
  cwd: here,
});
process.exit(result.status ?? 1);
