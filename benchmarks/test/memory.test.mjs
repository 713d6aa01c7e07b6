import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { test } from 'node:test';

import { processTree, proportionalMemory } from '../lib/memory.mjs';

test('memory is that of a program with everything that it started', async () => {
  const hold = "const held = Buffer.alloc(60_000_000, 1); console.log(held.length); process.stdin.resume();";
  const child = spawn('sh', ['-c', `"$0" -e '${hold}'; true`, process.execPath], { stdio: ['pipe', 'pipe', 'inherit'] });
  await once(child.stdout, 'data');

  const tree = processTree(child.pid);
  const memory = proportionalMemory(child.pid);
  child.stdin.end();
  await once(child, 'exit');

  assert.equal(tree.length, 2);
  assert.ok(memory > 57 && memory < 400, `${memory} MB`);
});

test('a process that has ended takes no memory', async () => {
  const child = spawn('true');
  await once(child, 'exit');

  assert.equal(proportionalMemory(child.pid), 0);
});
