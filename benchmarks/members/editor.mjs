/**
 * The editor page in the web engine that ships, against CodeMirror 6 in the same engine: real keys, and showing a note. And
 * against a rich editor for Markdown, with the notes that it can show.
 */
import path from 'node:path';

import { writeNote } from '../lib/notes.mjs';
import { environment, run } from '../lib/process.mjs';
import { median, percentile } from '../lib/statistics.mjs';

export const title = 'Editor page against CodeMirror 6 and Milkdown';

const ours = 'Wendlores';
const base = 'CodeMirror 6';
const rich = 'Milkdown';
const sizes = ['10 KB', '100 KB', '1 MB', '5 MB'];
/** Notes that are one block, which cannot be shown in part. */
const blocks = ['list of 5,000 items', 'paragraph of 128 KB'];

/** Notes that the rich editor shows within the driver's patience. */
const richNotes = ['10 KB', '100 KB'];

/** What the table shows of which notes, with the reach where there is one. */
const measures = [
  { value: 'key', name: 'key to "changed"', of: { '10 KB': null, '100 KB': 0.8, '1 MB': 0.35, '5 MB': 0.3, [blocks[0]]: 1.5, [blocks[1]]: 2 } },
  { value: 'key p95', name: 'key to "changed", 95th percentile', of: { '100 KB': null, '1 MB': 0.4, '5 MB': null } },
  { value: 'key after', name: 'key to "changed" after scrolling through', of: { '1 MB': 1, '5 MB': null } },
  { value: 'frame', name: 'key to painted', of: { '100 KB': null, '1 MB': null, '5 MB': null } },
  { value: 'painted', name: 'setContent to painted', of: { '10 KB': 1.5, '100 KB': null, '1 MB': 1.5, '5 MB': 1.5 } },
  { value: 'memory', name: 'script heap', of: { '1 MB': 0.8, '5 MB': 0.8 }, unit: 'MB' },
];

/** Frames that took longer than this while the note was scrolled through are seen as a jerk; in milliseconds. */
const jerk = 50;

export const cases = [
  ...measures.flatMap(({ value, name, of, unit = 'ms' }) =>
    Object.entries(of).map(([note, reach]) => ({
      name: `${name}, ${note}`,
      ours: [ours, `${value} ${note}`],
      base: [base, `${value} ${note}`],
      reach: reach ?? undefined,
      unit,
    })),
  ),
  ...['key', 'painted'].flatMap((value) =>
    richNotes.map((note) => ({
      name: `${measures.find((measure) => measure.value === value).name}, ${note}`,
      ours: [ours, `${value} ${note}`],
      base: [rich, `${value} ${note}`],
    })),
  ),
  { name: `frames over ${jerk} ms while scrolling through 5 MB`, ours: [ours, 'jerks 5 MB'], most: 0, unit: 'frames' },
  { name: `the same in ${base}`, ours: [base, 'jerks 5 MB'], unit: 'frames' },
];

/** The pages, each driven by a process of its own. */
export function contenders({ bin, here, out, dist }) {
  const folder = path.join(out, 'notes');
  const notes = new Map([...sizes, ...blocks].map((name) => [name, writeNote(name, folder)]));
  const drive = async (page, shown = [...notes.keys()], ...options) => {
    const files = shown.map((note) => notes.get(note));
    const args = ['--page', page, '--probe', path.join(here, 'programs/probe.js'), ...options, ...files];
    // The heap is told as it is, and without what is no longer needed.
    const env = environment({ QTWEBENGINE_CHROMIUM_FLAGS: '--disable-gpu --enable-precise-memory-info --js-flags=--expose-gc' });
    const measured = JSON.parse(await run(path.join(bin, 'bench-page'), args, { env, timeout: 600_000 }));
    return Object.assign({}, ...shown.map((note, i) => valuesOf(note, measured[path.basename(files[i])])));
  };
  return [
    { name: ours, measure: () => drive(dist) },
    { name: base, measure: () => drive(path.join(out, 'pages/codeMirror')) },
    { name: rich, measure: () => drive(path.join(out, 'pages/milkdown'), richNotes, '--rewrites') },
  ];
}

function valuesOf(note, { painted, keys, keysAfter, memory, frames }) {
  const changed = keys.map((key) => key.changed);
  return {
    [`painted ${note}`]: painted,
    [`key ${note}`]: median(changed),
    [`key p95 ${note}`]: percentile(changed, 0.95),
    [`key after ${note}`]: median(keysAfter.map((key) => key.changed)),
    [`frame ${note}`]: median(keys.map(({ frame }) => frame)),
    [`memory ${note}`]: memory,
    [`jerks ${note}`]: frames.filter((frame) => frame > jerk).length,
  };
}
