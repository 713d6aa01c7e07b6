/** Writing a note of 1 MB so that it has reached the disk, against dd and against a plain write in the same process. */
import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';

import { makeNote, noteSizes } from '../lib/notes.mjs';
import { environment, run } from '../lib/process.mjs';
import { median } from '../lib/statistics.mjs';

export const title = 'Save of a 1 MB note, synced to the disk, against dd conv=fsync';

const ours = 'AtomicFile::write';
const dd = 'dd conv=fsync';
const plain = 'write and fsync in place';
const writesPerRound = 5;

export const cases = [
  { name: 'save 1 MB, without process starts', ours: [ours, 'write'], base: [dd, 'write'], reach: 1.5 },
  { name: 'save 1 MB, whole processes', ours: [ours, 'process'], base: [dd, 'process'] },
  { name: 'save 1 MB, in one process', ours: [ours, 'write'], base: [plain, 'write'] },
];

export function contenders({ bin, out }) {
  const folder = path.join(out, 'save');
  mkdirSync(folder, { recursive: true });
  const source = path.join(folder, 'source.md');
  writeFileSync(source, makeNote(noteSizes['1 MB']));
  const program = path.join(bin, 'bench-save');
  const measureProgram = (way) => {
    const target = path.join(folder, `${way}.md`);
    return medianOf(writesPerRound, async () => {
      const start = performance.now();
      const write = Number(await run(program, [way, source, target]));
      return { write, process: performance.now() - start };
    });
  };
  return [
    { name: ours, measure: () => measureProgram('atomic') },
    { name: dd, measure: () => measureDd(source, path.join(folder, 'dd.md')) },
    { name: plain, measure: () => measureProgram('plain') },
  ];
}

async function elapsed(program, args) {
  const start = performance.now();
  await run(program, args, { env: environment({ LC_ALL: 'C' }) });
  return performance.now() - start;
}

/** The median of each value over `count` runs. Every write has a process of its own, as every dd has. */
async function medianOf(count, measure) {
  const runs = [];
  for (let i = 0; i < count; i++) runs.push(await measure());
  return Object.fromEntries(Object.keys(runs[0]).map((name) => [name, median(runs.map((values) => values[name]))]));
}

/** The time of a copy, and of the same copy less what a dd costs that copies nothing. */
function measureDd(source, target) {
  const copy = [`if=${source}`, `of=${target}`, 'bs=1M', 'conv=fsync', 'status=none'];
  const nothing = ['if=/dev/null', 'of=/dev/null', 'status=none'];
  return medianOf(writesPerRound, async () => {
    const process = await elapsed('dd', copy);
    return { process, write: process - (await elapsed('dd', nothing)) };
  });
}
