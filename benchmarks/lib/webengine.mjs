/** Asks a running program's web page when it first painted, from outside: the program needs no part in it. */
import { once } from 'node:events';
import { createServer } from 'node:net';
import { setTimeout as pause } from 'node:timers/promises';

import WebSocket from 'ws';

const host = '127.0.0.1';
const pollInterval = 250;

/** A port that nobody uses. */
export async function freePort() {
  const server = createServer().listen(0, host);
  await once(server, 'listening');
  const { port } = server.address();
  server.close();
  await once(server, 'close');
  return port;
}

/** The environment variables that let the web engine answer questions on `port`. */
export function answeringOn(port) {
  return { QTWEBENGINE_REMOTE_DEBUGGING: `${host}:${port}` };
}

/** The address of the first page of the engine that answers on `port`, as soon as there is one. */
async function pageAddress(port, deadline) {
  for (;;) {
    try {
      const pages = await (await fetch(`http://${host}:${port}/json`)).json();
      const page = pages.find(({ type }) => type === 'page');
      if (page) return page.webSocketDebuggerUrl;
    } catch (error) {
      if (Date.now() > deadline) throw error;
    }
    if (Date.now() > deadline) throw new Error('the program shows no page');
    await pause(pollInterval);
  }
}

// The engine keeps its paint times, so asking late costs the start nothing. It notes the largest element of a paint: once a
// note is shown that is a paragraph, while what a page draws before it (a ground, a placeholder) has less text.
const shortestParagraph = 60;
const paintQuestion = `new Promise((resolve) => new PerformanceObserver((list) => {
  const paint = list.getEntries().find(({ element }) => element?.textContent.length >= ${shortestParagraph});
  if (paint) resolve(performance.timeOrigin + paint.startTime);
}).observe({ type: 'largest-contentful-paint', buffered: true }))`;

/** Nobody is asked sooner, in milliseconds: a question in the middle of a start would hold it up. */
const leftAlone = 1000;

/** When the page first showed a paragraph of text, in milliseconds since 1970. */
export async function firstParagraph(port, limit = 30_000) {
  await pause(leftAlone);
  const deadline = Date.now() + limit;
  for (;;) {
    const answer = await ask(await pageAddress(port, deadline), deadline);
    const value = answer.result?.result.value;
    if (typeof value === 'number') return value;
    // A page that goes on to another address meanwhile cannot answer; the one that follows can.
    if (Date.now() > deadline) throw new Error(`no paint: ${JSON.stringify(answer)}`);
    await pause(pollInterval);
  }
}

async function ask(address, deadline) {
  const socket = new WebSocket(address);
  try {
    const signal = AbortSignal.timeout(Math.max(deadline - Date.now(), 1));
    await once(socket, 'open', { signal });
    const params = { expression: paintQuestion, awaitPromise: true, returnByValue: true };
    socket.send(JSON.stringify({ id: 1, method: 'Runtime.evaluate', params }));
    const [data] = await once(socket, 'message', { signal });
    return JSON.parse(data);
  } finally {
    socket.terminate();
  }
}
