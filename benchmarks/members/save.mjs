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
  const measureProgram = async (way) => {
    const target = path.join(folder, `${way}.md`);
    const times = JSON.parse(await run(program, [way, source, target, String(writesPerRound)]));
    return { write: median(times), process: await elapsed(program, [way, source, target, '1']) };
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

/** The time of a copy, and of the same copy less what a dd costs that copies nothing. */
async function measureDd(source, target) {
  const copy = [`if=${source}`, `of=${target}`, 'bs=1M', 'conv=fsync', 'status=none'];
  const nothing = ['if=/dev/null', 'of=/dev/null', 'status=none'];
  const [copies, starts] = [[], []];
  for (let i = 0; i < writesPerRound; i++) {
    copies.push(await elapsed('dd', copy));
    starts.push(await elapsed('dd', nothing));
  }
  return { process: median(copies), write: median(copies) - median(starts) };
}
