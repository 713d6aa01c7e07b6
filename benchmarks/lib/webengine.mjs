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

/** When the page first showed a paragraph of text, in milliseconds since 1970. */
export async function firstParagraph(port, limit = 30_000) {
  const socket = new WebSocket(await pageAddress(port, Date.now() + limit));
  try {
    await once(socket, 'open');
    const params = { expression: paintQuestion, awaitPromise: true, returnByValue: true };
    socket.send(JSON.stringify({ id: 1, method: 'Runtime.evaluate', params }));
    const [data] = await once(socket, 'message', { signal: AbortSignal.timeout(limit) });
    const { result } = JSON.parse(data).result;
    if (typeof result.value !== 'number') throw new Error(`no paint: ${JSON.stringify(result)}`);
    return result.value;
  } finally {
    socket.terminate();
  }
}
