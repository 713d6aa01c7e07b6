/** The program's start until the remembered note is on the screen, against a bare window with a web view. */
import { mkdirSync, rmSync } from 'node:fs';
import path from 'node:path';

import { writeNote } from '../lib/notes.mjs';
import { environment, start } from '../lib/process.mjs';
import { answeringOn, firstParagraph, freePort } from '../lib/webengine.mjs';

export const title = 'Start of the program until the note is shown, against a bare web view';

const ours = 'Wendlores';
const base = 'bare QWebEngineView';

export const cases = [{ name: 'process start to note shown', ours: [ours, 'shown'], base: [base, 'shown'], reach: 1.6 }];

/** The program as it finds itself at home, and the bare view; the program opens the note once, so that it remembers it. */
export async function contenders({ bin, here, out, program }) {
  const home = path.join(out, 'start');
  rmSync(home, { recursive: true, force: true });
  const note = writeNote('10 KB', path.join(home, 'Anteckningar'));
  const bare = path.join(here, 'page/bare/index.html');
  await timeToShow(program, [note], atHome(home));
  return [
    { name: ours, measure: () => timeToShow(program, [], atHome(home)) },
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
  const { started, end } = start(program, args, { env: environment({ ...home, ...answeringOn(port) }) });
  try {
    return { shown: (await firstParagraph(port)) - started };
  } finally {
    await end();
  }
}
