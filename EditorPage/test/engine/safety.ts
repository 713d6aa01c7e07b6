/** Notes and clipboards from strangers run nothing, fetch nothing and lead nowhere. */
import { editor, expect, expectEqual, open, paste, surface, turn, type Recorder } from './harness';
import { morePayloads } from './morePayloads';
import { hostilePayloads } from './payloads';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

declare global {
  interface Window {
    __ran?: (what: string) => void;
  }
}

const FORBIDDEN = 'script, iframe, object, embed, form, meta, base, link, style, portal, template, video, audio, input:not(.task-box), [srcset], [formaction], [ping], a[href], area';

/** What ran since the last look. */
const executions: string[] = [];
window.__ran = (what) => void executions.push(what);

async function endure(act: () => void): Promise<void> {
  executions.length = 0;
  const address = location.href;
  act();
  // Errors of pictures, animations and timers come in later turns.
  for (let step = 0; step < 3; step++) await new Promise((resolve) => requestAnimationFrame(resolve));
  await turn();
  expectEqual(executions, [], 'executed');
  expectEqual(location.href, address, 'address of the page');
  expectHarmless();
}

function expectHarmless(): void {
  for (const element of surface().querySelectorAll('*')) {
    expect(!element.matches(FORBIDDEN), `${element.tagName} in the note: ${element.outerHTML.slice(0, 120)}`);
    for (const { name, value } of element.attributes) {
      expect(!name.startsWith('on'), `${name} on ${element.tagName}`);
      const isAddress = name === 'src' || name === 'href' || name === 'xlink:href' || name === 'action';
      expect(!isAddress || fetchable(value), `${name} of ${element.tagName} is ${value}`);
    }
  }
  expect(typeof editor().setContent === 'function', 'the page lost its object');
  for (const { name } of performance.getEntriesByType('resource')) {
    expect(new URL(name, document.baseURI).href.startsWith(new URL('.', document.baseURI).href) || name.startsWith('data:'), `fetched ${name}`);
  }
}

/** Pictures of the bucket and inline ones, and nothing else. */
function fetchable(address: string): boolean {
  return address.startsWith('data:image/') || address.startsWith(new URL('assets/', document.baseURI).href);
}

/** Clicks everything in the note that reacts to a click. */
async function clickAll(recorder: Recorder): Promise<void> {
  for (const element of surface().querySelectorAll<HTMLElement>('a, summary, .drawing')) element.click();
  await turn();
  for (const body of recorder.of('openLink')) {
    const { href } = body as { href: string };
    expect(!/^\s*(?:java|vb)script:|^\s*data:/i.test(href.replace(/[\u0000-\u0020]/g, '')), `asked the host to open ${href}`);
  }
}

/** So many payloads share the wait for what comes in later turns. */
const BATCH = 20;

const all = [...hostilePayloads, ...morePayloads];
const batches = Array.from({ length: Math.ceil(all.length / BATCH) }, (_, index) => all.slice(index * BATCH, (index + 1) * BATCH));

const payloadTests: Test[] = batches.map((payloads) => [
  `endures ${JSON.stringify(payloads[0]).slice(0, 70)} and ${payloads.length - 1} more`,
  async (recorder) => {
    const ways: ReadonlyArray<(payload: string) => void> = [
      (payload) => open(`före ${payload}\n\n${payload}\n\nefter\n`),
      (payload) => (open('text\n'), paste({ 'text/html': `<p>a</p>${payload}<p>b</p>`, 'text/plain': 'a' })),
      (payload) => (open('text\n'), paste({ 'text/plain': payload })),
    ];
    for (const way of ways) {
      await endure(() => {
        for (const payload of payloads) {
          way(payload);
          expectHarmless();
        }
      });
    }
    for (const payload of payloads) {
      open(payload);
      await clickAll(recorder);
    }
    await endure(() => open('text\n'));
  },
]);

export const safetyTests: Test[] = [
  ['three hundred payloads and more are tried', async () => {
    expect(new Set(all).size >= 300, `${all.length} payloads`);
  }],
  ...payloadTests,
  ['the policy forbids script made from text', async () => {
    let threw = false;
    try {
      new Function('window.__ran("made")')();
    } catch {
      threw = true;
    }
    expect(threw, 'text became a function');
  }],
  ['the policy forbids script elements and event attributes', async () => {
    executions.length = 0;
    const button = document.createElement('button');
    try {
      button.setAttribute('onclick', 'window.__ran("attribute")');
      const script = document.createElement('script');
      script.append('window.__ran("element")');
      document.body.append(script, button);
      button.click();
      script.remove();
    } catch {
      // Refusing the assignment is as good as not running it.
    }
    button.remove();
    await turn();
    expectEqual(executions, [], 'executed');
  }],
  ['the policy takes markup only from a named policy', async () => {
    let threw = false;
    try {
      document.createElement('div').innerHTML = '<b>x</b>';
    } catch {
      threw = true;
    }
    expect(threw, 'plain text was taken as markup');
  }],
  ['the policy forbids every connection', async () => {
    let failed = false;
    await fetch(new URL('index.html', document.baseURI)).catch(() => (failed = true));
    expect(failed, 'a file was fetched by script');
  }],
];
