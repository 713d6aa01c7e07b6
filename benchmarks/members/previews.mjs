/** How long files take to show, against the least that shows the same with the toolkit. */
import { mkdirSync } from 'node:fs';
import path from 'node:path';

import { environment, run } from '../lib/process.mjs';

export const title = 'Files shown, against bare views of the toolkit';

const ours = 'Wendlores';
const base = 'bare view';

const files = {
  'PDF, 500 pages': 'sidor.pdf',
  'JPEG, 24 megapixels': 'bild.jpg',
  'HTML, 5 MB': 'sida.html',
  'log, 10 MB': 'logg.log',
};
/** Of these only the window matters: a bare view draws them on its own thread, or not at all. */
const large = {
  'PDF, page of 200 inches': 'stor-sida.pdf',
  'PDF, picture of 100 megapixels': 'stor-bild.pdf',
  'csv, 5 MB': 'tabell.csv',
};
const converted = 'docx, converted before';
const blocked = (name) => `${name}: window busy`;

export const cases = [
  ...Object.keys(files).map((name) => ({ name, ours: [ours, name], base: [base, name], reach: 1.5 })),
  { name: converted, ours: [ours, converted], most: 150 },
  ...[...Object.keys(files), converted, ...Object.keys(large)].map((name) => ({ name: blocked(name), ours: [ours, blocked(name)], most: 50 })),
];

export async function contenders({ bin, out }) {
  const folder = path.join(out, 'previews');
  mkdirSync(folder, { recursive: true });
  const program = path.join(bin, 'bench-previews');
  const env = environment({ XDG_CACHE_HOME: path.join(folder, 'cache') });
  await run(program, ['make', folder], { env });
  const show = async (way, shown) => {
    const times = {};
    for (const [name, file] of Object.entries(shown)) {
      const said = await run(program, [way, path.join(folder, file)], { env });
      [times[name], times[blocked(name)]] = said.split(' ').map(Number);
    }
    return times;
  };
  return [
    { name: ours, measure: () => show('ours', { ...files, ...large, [converted]: 'brev.docx' }) },
    { name: base, measure: () => show('bare', files) },
  ];
}
