/** Pairs that measure a whole bucket: a call of ours in a process of its own, and a program that does the like. */
import path from 'node:path';

import { run } from './process.mjs';

/** Runs bench-vault and gives what it measured: `ms`, `found` and `grown`. */
export async function benchVault(bin, args) {
  return JSON.parse(await run(path.join(bin, 'bench-vault'), args));
}

async function runProgram(bin, args, allowed) {
  const { ms, found: status } = await benchVault(bin, ['command', ...args]);
  if (!allowed.includes(status)) throw new Error(`${args.join(' ')} ended with ${status}`);
  return { ms };
}

/**
 * What belongs to one line of the table.
 * @typedef {object} Pair
 * @property {import('./report.mjs').Case} line
 * @property {(bin: string, folder: string) => import('./rounds.mjs').Contender[]} contenders
 */

/**
 * One search. With `isCold` the notes come from the disk: the system forgets them before every run.
 * @returns {Pair}
 */
export function searchPair({ name, query, reach, isCold = false }) {
  const [ours, base] = [`search: ${name}`, `rg -i -l: ${name}`];
  const contenders = (bin, folder) => {
    const forget = () => (isCold ? benchVault(bin, ['forget', folder]) : undefined);
    // ripgrep calls it a failure when nothing is found.
    const theirs = () => runProgram(bin, ['rg', '-i', '-l', '--', query, folder], [0, 1]);
    const mine = () => benchVault(bin, ['search', folder, query]);
    return [
      { name: ours, measure: async () => (await forget(), mine()) },
      { name: base, measure: async () => (await forget(), theirs()) },
    ];
  };
  return { line: { name, ours: [ours, 'ms'], base: [base, 'ms'], baseName: 'rg -i -l', reach }, contenders };
}

/**
 * One list of a bucket's files: `call` is "tree" or "notes".
 * @returns {Pair}
 */
export function listPair({ name, call, reach }) {
  const base = `fdfind: ${name}`;
  const contenders = (bin, folder) => [
    { name, measure: () => benchVault(bin, [call, folder]) },
    { name: base, measure: () => runProgram(bin, ['fdfind', '-I', '.', folder], [0]) },
  ];
  return { line: { name, ours: [name, 'ms'], base: [base, 'ms'], baseName: 'fdfind -I .', reach }, contenders };
}
