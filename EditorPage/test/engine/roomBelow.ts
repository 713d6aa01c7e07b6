/** A note has a scroll bar when it is longer than the window, and only then. */
import { expect, open, surface, type Recorder } from './harness';

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const page = document.documentElement;
const room = (): number => parseFloat(getComputedStyle(surface()).paddingBottom);

/** Waits until `holds`, for as many frames as a busy machine may need. */
async function eventually(holds: () => boolean, what: string): Promise<void> {
  for (let frame = 0; frame < 200 && !holds(); frame++) await new Promise((resolve) => requestAnimationFrame(resolve));
  expect(holds(), what);
}

export const roomBelowTests: Test[] = [
  ['a note that fits does not scroll', async () => {
    open('# Kort\n\ntext\n');
    await eventually(() => page.scrollHeight <= window.innerHeight, 'the page scrolls');
  }],
  ['the end of a long note can be scrolled to the middle', async () => {
    open('rad\n\n'.repeat(200));
    await eventually(() => room() > window.innerHeight * 0.39, 'there is no room below');
    open('kort igen\n');
    await eventually(() => page.scrollHeight <= window.innerHeight, 'the page still scrolls');
  }],
];
