/**
 * Tests of the built page inside the real web engine.
 *
 * The runner loads the page, waits for its "ready", and evaluates the bundle of this file in the page's own
 * world. It then calls
 *
 *     window.__engineTests.run(samples): Promise<Result[]>
 *
 * where `samples` is an array of {name, text}: notes to load, type into and undo. Each Result is
 * {name, ok, message}. An engine that cannot hand a promise to its caller polls
 *
 *     window.__engineTests.done      null while running, then the results as a JSON string.
 *
 * While they run the tests take the host's place, and give it back at the end. The page must be visible to the
 * engine (a shown view, offscreen is enough) and have the keyboard focus for typing.
 */
import { bridgeTests } from './bridge';
import { clipboardTests } from './clipboard';
import { comfortTests } from './comfort';
import { completionTests } from './completion';
import { commandTests } from './commands';
import { fidelityTests, type Sample } from './fidelity';
import { Recorder, type Result } from './harness';
import { findTests } from './find';
import { foldingTests } from './folding';
import { roomBelowTests } from './roomBelow';
import { safetyTests } from './safety';
import { sourceViewTests } from './sourceView';
import { typingTests } from './typing';

type Test = readonly [name: string, run: (recorder: Recorder) => Promise<string | void>];

async function run(samples: readonly Sample[] = []): Promise<Result[]> {
  const recorder = new Recorder();
  recorder.install();
  const results: Result[] = [];
  const tests: Test[] = [...bridgeTests, ...commandTests, ...typingTests, ...comfortTests, ...clipboardTests, ...completionTests, ...findTests, ...foldingTests, ...sourceViewTests, ...safetyTests, ...roomBelowTests, ...fidelityTests(samples)];
  try {
    for (const [name, test] of tests) results.push(await runOne(name, test, recorder));
  } finally {
    recorder.remove();
  }
  api.done = JSON.stringify(results);
  return results;
}

async function runOne(name: string, test: Test[1], recorder: Recorder): Promise<Result> {
  try {
    recorder.clear();
    return { name, ok: true, message: (await test(recorder)) ?? '' };
  } catch (error) {
    return { name, ok: false, message: error instanceof Error ? error.message : String(error) };
  }
}

const api = { run, done: null as string | null };

declare global {
  interface Window {
    __engineTests?: typeof api;
  }
}

window.__engineTests = api;
