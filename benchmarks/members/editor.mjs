/** The editor page in the web engine that ships, against CodeMirror 6 in the same engine: real keys, and showing a note. */
import path from 'node:path';

import { writeNote } from '../lib/notes.mjs';
import { run } from '../lib/process.mjs';
import { median, percentile } from '../lib/statistics.mjs';

export const title = 'Editor page against CodeMirror 6';

const ours = 'Wendlores';
const base = 'CodeMirror 6';
const sizes = ['10 KB', '100 KB', '1 MB'];

/** What the table shows of each size; `reach` by size. */
const measures = [
  { value: 'key', name: 'key to "changed"', reach: { '100 KB': 1 } },
  { value: 'key p95', name: 'key to "changed", 95th percentile', reach: {} },
  { value: 'frame', name: 'key to painted', reach: {} },
  { value: 'painted', name: 'setContent to painted', reach: { '10 KB': 2.5, '100 KB': 8 } },
];

export const cases = measures.flatMap(({ value, name, reach }) =>
  sizes.map((size) => ({
    name: `${name}, ${size}`,
    ours: [ours, `${value} ${size}`],
    base: [base, `${value} ${size}`],
    reach: reach[size],
  })),
);

/** The two pages, each driven by a process of its own. */
export function contenders({ bin, here, out, dist }) {
  const notes = new Map(sizes.map((size) => [size, writeNote(size, path.join(out, 'notes'))]));
  const drive = async (page) => {
    const args = ['--page', page, '--probe', path.join(here, 'programs/probe.js'), ...notes.values()];
    const measured = JSON.parse(await run(path.join(bin, 'bench-page'), args));
    return Object.assign({}, ...sizes.map((size) => valuesOf(size, measured[path.basename(notes.get(size))])));
  };
  return [
    { name: ours, measure: () => drive(dist) },
    { name: base, measure: () => drive(path.join(out, 'page')) },
  ];
}

function valuesOf(size, { painted, keys }) {
  const changed = keys.map((key) => key.changed);
  return {
    [`painted ${size}`]: painted,
    [`key ${size}`]: median(changed),
    [`key p95 ${size}`]: percentile(changed, 0.95),
    [`frame ${size}`]: median(keys.map(({ frame }) => frame)),
  };
}
