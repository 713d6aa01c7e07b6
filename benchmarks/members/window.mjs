/** How soon the window answers: what has no peer to compare with, and a limit of its own. */
import path from 'node:path';

import { environment, run } from '../lib/process.mjs';

export const title = 'How soon the window answers';

const ours = 'Wendlores';
const frame = 16;

export const cases = [
  { name: 'another note of 20 KB shown', ours: [ours, 'shown'], most: 50 },
  { name: '  of which until the page has it', ours: [ours, 'handed over'] },
  { name: 'key in a note of 1 MB, program\'s thread', ours: [ours, 'key'], most: 2 },
  { name: 'folder of 10,000 opened, longest', ours: [ours, 'opening, longest'], most: frame },
  { name: 'folder of 10,000 closed, longest', ours: [ours, 'closing, longest'], most: frame },
  { name: 'scrolled through 100,000 files, longest', ours: [ours, 'scrolling, longest'], most: frame },
  { name: 'tree of 100,000 read again in the background', ours: [ours, 'refreshing, longest'], most: frame },
  { name: 'the same at once', ours: [ours, 'rebuilding'] },
  { name: 'note made there, longest', ours: [ours, 'making, longest'], most: frame },
  { name: 'note renamed, longest', ours: [ours, 'renaming, longest'], most: frame },
  { name: 'note moved, longest', ours: [ours, 'moving, longest'], most: frame },
  { name: 'note deleted, longest', ours: [ours, 'deleting, longest'], most: frame },
  { name: 'folder of 10,000 renamed, longest', ours: [ours, 'folder, longest'], most: frame },
  { name: 'query of 10,000 hits typed, longest', ours: [ours, 'searching, longest'], most: frame },
];

export function contenders({ bin, out }) {
  const measure = async (program, ...args) => JSON.parse(await run(path.join(bin, program), args, { env: environment() }));
  return [
    {
      name: ours,
      measure: async () => ({
        ...(await measure('bench-switch')),
        ...(await measure('bench-key', '1')),
        ...(await measure('bench-sidebar', path.join(out, 'window-bucket'))),
      }),
    },
  ];
}
