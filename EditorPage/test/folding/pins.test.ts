import assert from 'node:assert/strict';
import { test } from 'node:test';
import { undo } from 'prosemirror-history';
import { isFolded, sourceOf } from '../../src/source/folded';
import { groupSize } from '../../src/source/groups';
import { commonEnds } from '../../src/source/text';
import { allSamples } from '../corpus';
import { disagreement, edits, Session } from '../editing';
import { execEdits } from '../execEdits';
import { Random } from '../random';

/** How many random sequences are tried: more in a long run, or as many as SEQUENCES says, and from FIRST_SEED on. */
const sequences = Number(process.env.SEQUENCES ?? (process.env.LONG ? 3000 : 150));
const firstSeed = Number(process.env.FIRST_SEED ?? 1);

const samples = allSamples().filter(({ text }) => text.length < 3000);

/** A note of several samples that can be cut between them. */
function noteFrom(random: Random): string {
  const texts = Array.from({ length: 3 + random.below(5) }, () => random.pick(samples).text);
  return `Början.\n\n${texts.join('\n\nMellan två.\n\n')}\n\n## Slut\n\nSist.\n`;
}

function unfoldOne(session: Session, random: Random): boolean {
  const folded = session.state.doc.children.filter(isFolded);
  if (folded.length === 0) return false;
  const node = random.pick(folded);
  session.refold(session.source.unfold(node, random.below(sourceOf(node).length), 1 + random.below(900)));
  return true;
}

function foldOne(session: Session, random: Random): boolean {
  const { children } = session.state.doc;
  const starts = [...children.keys()].filter((index) => {
    const size = groupSize(children, index);
    return size > 0 && children.slice(index, index + size).every((node) => !session.pins.has(node));
  });
  if (starts.length === 0) return false;
  session.refold(session.source.fold(random.pick(starts)));
  return true;
}

function unfoldAll(session: Session): void {
  for (const node of session.state.doc.children) if (isFolded(node)) session.refold(session.source.unfold(node));
}

/** Where two texts differ, for the message of a failure. */
function difference(a: string, b: string): string {
  const { start, end } = commonEnds(a, b);
  return JSON.stringify([a.slice(Math.max(0, start - 40), a.length - end + 40), b.slice(Math.max(0, start - 40), b.length - end + 40)]);
}

const all = { ...edits, ...execEdits };
const folds = { unfold: unfoldOne, unfoldMore: unfoldOne, fold: foldOne };

/** Edits, folds and unfolds a note at random, then undoes and redoes everything. Tells what went wrong, or nothing. */
function runSequence(seed: number): string | null {
  const random = new Random(seed);
  const text = noteFrom(random);
  const done: string[] = [];
  const session = new Session(text, 1 + random.below(300));
  const failed = (what: string): string => `[${seed}] ${done.join(' ')}: ${what}`;
  const kinds = Object.keys(all);
  try {
    for (let step = 4 + random.below(20); step > 0; step -= 1) {
      const name = random.below(2) === 0 ? random.pick(Object.keys(folds)) : random.pick(kinds);
      const isDone = name in folds ? folds[name as keyof typeof folds](session, random) : all[name]!(session, random);
      if (isDone) done.push(name);
      session.state.doc.check();
      if (!session.state.doc.eq(session.source.doc)) return failed('the document is not the one of the text');
      if (session.source.pieces.join('') !== session.source.text) return failed('the text is not the sum of its pieces');
    }
    const edited = session.source.text;
    if (random.below(2) === 0) {
      unfoldAll(session);
      const wrong = session.source.text === edited ? disagreement(session.source) : 'unfolding changed the text';
      if (wrong) return failed(wrong);
    }
    for (let back = 0; session.run(undo); back += 1) if (back % 3 === 2) random.pick([unfoldOne, foldOne])(session, random);
    if (session.source.text !== text) return failed(`undo did not bring the bytes back: ${difference(session.source.text, text)}`);
    while (foldOne(session, random));
    session.redoAll();
    if (session.source.text !== edited) return failed('redo did not bring the edited bytes back');
  } catch (error) {
    return failed((error as Error).stack ?? String(error));
  }
  return null;
}

test('a note that is folded, unfolded and edited in any order says the same as the whole note', (context) => {
  const failures: string[] = [];
  for (let seed = firstSeed; seed < firstSeed + sequences; seed += 1) {
    const failure = runSequence(seed);
    if (failure) failures.push(failure);
  }
  context.diagnostic(`${sequences} sequences from seed ${firstSeed}, ${failures.length} failed`);
  assert.deepEqual(failures, []);
});
