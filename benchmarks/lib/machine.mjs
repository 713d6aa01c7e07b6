/** How free the machine was while it measured: the same work on one thread and on two, and the load average. */
import { cpus, loadavg } from 'node:os';
import { Worker } from 'node:worker_threads';

/** Where one thread takes less than this many times as long as two, other programs held the cores. */
export const freeCoresFloor = 1.5;

const spin = new URL('./spin.mjs', import.meta.url);
const turns = 80_000_000;

function work(worker, count) {
  return new Promise((resolve, reject) => {
    worker.once('message', resolve);
    worker.once('error', reject);
    worker.postMessage(count);
  });
}

async function timed(action) {
  const start = performance.now();
  await action();
  return performance.now() - start;
}

/** Time on one thread divided by the time that two threads need for the same work: near 2 on two free cores. */
export async function measureFloor() {
  const [one, two] = [new Worker(spin), new Worker(spin)];
  try {
    await Promise.all([work(one, turns / 8), work(two, turns / 8)]);
    const single = await timed(() => work(one, turns));
    const double = await timed(() => Promise.all([work(one, turns / 2), work(two, turns / 2)]));
    return single / double;
  } finally {
    await Promise.all([one.terminate(), two.terminate()]);
  }
}

/** What the machine is. */
export function describeMachine() {
  return { processor: cpus()[0]?.model.trim() ?? 'unknown', cores: cpus().length };
}

export function loadAverage() {
  return loadavg()[0];
}

/** The sentence that belongs below the table; `floors` are the floors measured before and after. */
export function busyRemark(floors, load) {
  const shown = floors.map((floor) => floor.toFixed(2)).join(' and ');
  const measured = `Load average ${load.toFixed(2)}; one thread against two, before and after: ${shown}.`;
  if (Math.min(...floors) >= freeCoresFloor) return `${measured} The cores were free.`;
  return `${measured} Below ${freeCoresFloor}: other programs held the cores. Trust the ratios with care, and measure again.`;
}
