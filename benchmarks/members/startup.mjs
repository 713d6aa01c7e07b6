/** The program's start until the remembered note is on the screen, against a bare window with a web view. */
import { mkdirSync, rmSync } from 'node:fs';
import path from 'node:path';

import { bucketOf } from '../lib/buckets.mjs';
import { proportionalMemory } from '../lib/memory.mjs';
import { writeNote } from '../lib/notes.mjs';
import { environment, start } from '../lib/process.mjs';
import { answeringOn, firstParagraph, freePort } from '../lib/webengine.mjs';

export const title = 'Start of the program until the note is shown, against a bare web view';

const ours = 'Wendlores';
const base = 'bare QWebEngineView';

const large = 'Wendlores, 10,000 notes';

export const cases = [
  { name: 'process start to note shown', ours: [ours, 'shown'], base: [base, 'shown'], reach: 1.6 },
  { name: 'the same, bucket of 10,000 notes', ours: [large, 'shown'], base: [base, 'shown'], reach: 1.5 },
  { name: 'memory then, all processes', ours: [large, 'memory'], base: [base, 'memory'], reach: 1.3, unit: 'MB' },
];

/** The program as it finds itself at home, and the bare view; the program opens each note once, so that it remembers it. */
export async function contenders({ bin, here, out, program }) {
  const home = path.join(out, 'start');
  rmSync(home, { recursive: true, force: true });
  const note = writeNote('10 KB', path.join(home, 'Anteckningar'));
  const bare = path.join(here, 'page/bare/index.html');
  const largeHome = path.join(out, 'start-large');
  rmSync(path.join(largeHome, 'config'), { recursive: true, force: true });
  mkdirSync(largeHome, { recursive: true });
  const largeNote = writeNote('10 KB', bucketOf(10_000, largeHome));
  await timeToShow(program, [note], atHome(home));
  await timeToShow(program, [largeNote], atHome(largeHome));
  return [
    { name: ours, measure: () => timeToShow(program, [], atHome(home)) },
    { name: large, measure: () => timeToShow(program, [], atHome(largeHome)) },
    { name: base, measure: () => timeToShow(path.join(bin, 'bench-bare'), [bare], atHome(home)) },
  ];
}

/** A user's home of our own, so that no settings of whoever measures are read or changed. */
function atHome(home) {
  const folders = { XDG_CONFIG_HOME: 'config', XDG_DATA_HOME: 'data', XDG_STATE_HOME: 'state', XDG_CACHE_HOME: 'cache' };
  const made = Object.entries(folders).map(([name, folder]) => {
    mkdirSync(path.join(home, folder), { recursive: true });
    return [name, path.join(home, folder)];
  });
  return { HOME: home, ...Object.fromEntries(made) };
}

async function timeToShow(program, args, home) {
  const port = await freePort();
  const { started, end, pid } = start(program, args, { env: environment({ ...home, ...answeringOn(port) }) });
  try {
    const shown = (await firstParagraph(port)) - started;
    return { shown, memory: proportionalMemory(pid) };
  } finally {
    await end();
  }
}
