/** Notes keep their bytes through the engine's own editing. */
import { editor, expect, expectEqual, open, turn, type, type Recorder } from './harness';

/** A note to try. */
export interface Sample {
  name: string;
  text: string;
}

type Test = readonly [string, (recorder: Recorder) => Promise<string | void>];

const WORD = 'ord';

/** One test for each sample: shown without a change, typed into, and undone to the same bytes. */
export function fidelityTests(samples: readonly Sample[]): Test[] {
  return samples.map(({ name, text }) => [`keeps ${name}`, (recorder) => keeps(recorder, text)] as const);
}

async function keeps(recorder: Recorder, text: string): Promise<string> {
  open(text);
  await turn();
  recorder.clear();
  await turn();
  expectEqual(recorder.of('changed').length, 0, 'changes reported without an edit');
  type(WORD);
  await turn();
  const edited = recorder.text;
  if (edited === null) return 'nothing to type into';
  expect(edited.includes(WORD), 'the typed word is not in the reported text');
  for (let step = 0; step < 3 && recorder.text !== text; step++) {
    editor().exec('undo');
    await turn();
  }
  expectEqual(recorder.text, text, 'after undo');
  const isExact = edited.length === text.length + WORD.length && edited.replace(WORD, '') === text;
  return isExact ? 'exactly the insertion' : 'more than the insertion';
}
