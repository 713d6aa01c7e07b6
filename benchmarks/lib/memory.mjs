/** How much memory a program and all processes that it started take. */
import { readdirSync, readFileSync } from 'node:fs';

/** The contents of a file of the kernel's; empty for a process that has ended meanwhile. */
function read(file) {
  try {
    return readFileSync(file, 'utf8');
  } catch {
    return '';
  }
}

/** Every process's parent, by its number. */
function parents() {
  const running = readdirSync('/proc').filter((name) => /^\d+$/.test(name));
  // The name in parentheses can hold anything; the state and the parent come behind it.
  return running.map((pid) => [Number(pid), Number(read(`/proc/${pid}/stat`).split(') ').at(-1).split(' ')[1])]);
}

/** `root` and all processes below it. */
export function processTree(root) {
  const tree = new Set([root]);
  const all = parents();
  for (let before = 0; before < tree.size; ) {
    before = tree.size;
    for (const [pid, parent] of all) if (tree.has(parent)) tree.add(pid);
  }
  return [...tree];
}

/** The memory of a process and all below it in megabytes; what processes share is counted once (PSS). */
export function proportionalMemory(root) {
  const kilobytes = processTree(root).map((pid) => Number(/^Pss:\s+(\d+)/m.exec(read(`/proc/${pid}/smaps_rollup`))?.[1] ?? 0));
  return kilobytes.reduce((sum, size) => sum + size, 0) / 1024;
}
