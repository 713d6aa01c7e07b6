/** A thread that only computes: it gets a number of turns and answers when they are done. */
import { parentPort } from 'node:worker_threads';

parentPort.on('message', (turns) => {
  let value = 1;
  for (let i = 0; i < turns; i++) value = (Math.imul(value, 1103515245) + 12345) | 0;
  parentPort.postMessage(value);
});
