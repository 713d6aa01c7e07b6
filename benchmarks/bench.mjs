/** Runs the members that were asked for and prints a table for each. Started by ../bench, which builds everything first. */
import { mkdirSync, writeFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { parseArgs } from 'node:util';

import { busyRemark, describeMachine, loadAverage, measureFloor } from './lib/machine.mjs';
import { formatTable, rowsOf } from './lib/report.mjs';
import { runRounds } from './lib/rounds.mjs';
import { onBucket } from './members/bucket.mjs';

const memberNames = ['editor', 'startup', 'window', 'save', 'search', 'tree', 'previews'];
const usage = `Usage: ./bench [MEMBER...] [--rounds N] [--json FILE] [--help]
       ./bench --bucket FOLDER [--query TEXT]... [--rounds N]

Measures Wendlores side by side with its peers: every round runs every contender once, in turns, and the table shows the
medians of the rounds and their ratio. "reached" means that the ratio is within the reach.

Members (all of them when none is named):
  editor   the editor page against CodeMirror 6 and Milkdown, in the web engine that ships
  startup  the program's start until the note is shown, against a bare web view
  window   how soon the window answers: another note, a key, the tree, the search
  save     the save of a 1 MB note against dd conv=fsync
  search   searching 10,000 and 100,000 notes against ripgrep
  tree     listing 100,000 notes against fd
  previews PDF, image, HTML and log files shown, against bare views of the toolkit

  --bucket FOLDER  measures search and tree on a folder of your own, one line per case: case, ours in ms, base in ms, ratio
  --query TEXT     what is searched there; may be given several times

  --rounds N   counted rounds (9)
  --json FILE  where the results go as well (benchmarks/out/results.json)`;

const here = path.dirname(fileURLToPath(import.meta.url));
const root = path.dirname(here);
const out = path.join(here, 'out');

/** Where everything that is measured lies. */
const places = {
  here,
  out,
  bin: path.join(root, 'build/release/bin'),
  program: path.join(root, 'build/release/bin/wendlores'),
  dist: path.join(root, 'WendloreKit/Resources/dist'),
};

function readArguments() {
  const { values, positionals } = parseArgs({
    allowPositionals: true,
    options: {
      rounds: { type: 'string', default: '9' },
      json: { type: 'string' },
      bucket: { type: 'string' },
      query: { type: 'string', multiple: true, default: [] },
      help: { type: 'boolean', short: 'h' },
    },
  });
  const unknown = positionals.filter((name) => !memberNames.includes(name));
  if (unknown.length > 0) throw new Error(`no such member: ${unknown.join(', ')}`);
  const rounds = Number(values.rounds);
  if (!Number.isInteger(rounds) || rounds < 1) throw new Error('--rounds takes a whole number from 1');
  const names = positionals.length > 0 ? positionals : memberNames;
  const json = path.resolve(values.json ?? path.join(out, 'results.json'));
  return { names, rounds, json, bucket: values.bucket, queries: values.query, help: values.help };
}

async function measureMember(name, rounds) {
  return measure(name, await import(`./members/${name}.mjs`), rounds);
}

async function measure(name, { title, cases, contenders }, rounds) {
  console.error(`${title}:`);
  const before = await measureFloor();
  const values = await runRounds(await contenders(places), rounds, (round) =>
    console.error(round === 0 ? '  warmed up' : `  round ${round} of ${rounds}`),
  );
  const load = loadAverage();
  const remark = busyRemark([before, await measureFloor()], load);
  return { member: name, title, rows: rowsOf(cases, values), remark, values };
}

function print({ title, rows, remark }) {
  console.log(`\n${title}\n\n${formatTable(rows)}\n\n${remark}`);
}

async function measureBucket(folder, queries, rounds) {
  const { rows, remark } = await measure('bucket', onBucket(path.resolve(folder), queries), rounds);
  for (const row of rows) console.log([row.case, row.ours.toFixed(1), row.base.toFixed(1), row.ratio.toFixed(2)].join('\t'));
  console.error(remark);
}

async function main() {
  const { names, rounds, json, bucket, queries, help } = readArguments();
  if (help) return console.log(usage);
  if (bucket !== undefined) return measureBucket(bucket, queries, rounds);
  const members = [];
  mkdirSync(path.dirname(json), { recursive: true });
  for (const name of names) {
    const member = await measureMember(name, rounds);
    print(member);
    members.push(member);
    const report = { measured: new Date().toISOString(), machine: describeMachine(), rounds, members };
    writeFileSync(json, `${JSON.stringify(report, null, 2)}\n`);
  }
}

try {
  await main();
} catch (error) {
  console.error(`bench: ${error.message}`);
  process.exitCode = 1;
}
