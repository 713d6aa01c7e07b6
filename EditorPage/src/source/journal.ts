import type { Node } from 'prosemirror-model';
import type { Entry } from './entries';
import { fingerprintChange } from './fingerprint';
import { differing, type Range } from './range';

/** Entries that took the place of others. */
interface Step {
  at: number;
  gone: readonly Entry[];
  come: readonly Entry[];
  /** The fingerprint of the state that the step led to. */
  fingerprint: number;
}

/** So many characters and steps are kept. */
const sizeLimit = 8_000_000;
const stepLimit = 10_000;

const nodesOf = (entries: readonly Entry[]) => entries.map((entry) => entry.node);

const sizeOf = (entries: readonly Entry[]) => entries.reduce((sum, entry) => sum + entry.raw.length, 0);

/**
 * All states that a note's entries have been in, as the steps between them. When an edit brings back the document of
 * an earlier state, as undo and redo do, it gets the very entries of that state, and so its bytes: the same document
 * has the same bytes each time.
 */
export class Journal {
  private steps: Step[] = [];
  private size = 0;
  /** The fingerprint of the state before the first step. */
  private first = 0;

  /**
   * The entries of the latest state whose document is `next`. Null when there was none. `range` is where the document
   * of `entries` differs from it.
   */
  find(entries: readonly Entry[], next: Node, { from, oldTo, nextTo }: Range): Entry[] | null {
    const gone = entries.slice(from, oldTo).map((entry) => entry.node);
    const come = next.children.slice(from, nextTo);
    const wanted = (this.current + fingerprintChange(gone, come)) | 0;
    if (wanted === this.current) {
      const same = adopt(entries, next);
      if (same) return same;
    }
    let state: Entry[] | null = null;
    let undone = this.steps.length;
    for (let index = this.steps.length - 1; index >= 0; index -= 1) {
      const before = index > 0 ? this.steps[index - 1]!.fingerprint : this.first;
      if (before !== wanted) continue;
      state ??= [...entries];
      while (undone > index) takeBack(state, this.steps[--undone]!);
      const found = adopt(state, next);
      if (found) return found;
    }
    return null;
  }

  /** Remembers that the entries have changed. */
  record(before: readonly Entry[], after: readonly Entry[]) {
    const { from, oldTo, nextTo } = differing(before, after);
    const gone = before.slice(from, oldTo);
    const come = after.slice(from, nextTo);
    if (gone.length === 0 && come.length === 0) return;
    const fingerprint = (this.current + fingerprintChange(nodesOf(gone), nodesOf(come))) | 0;
    this.steps.push({ at: from, gone, come, fingerprint });
    this.size += sizeOf(come);
    if (this.size > sizeLimit || this.steps.length > stepLimit) this.thin();
  }

  /**
   * From now on the entries `come` stand for the same bytes as `gone`, which are at `at` now: in every state that has those.
   */
  exchange(at: number, gone: readonly Entry[], come: readonly Entry[]) {
    const change = fingerprintChange(nodesOf(gone), nodesOf(come));
    let place: number | null = at;
    for (let index = this.steps.length - 1; index >= 0; index -= 1) {
      const { step, placeBefore }: Exchanged = exchanged(this.steps[index]!, place, gone, come);
      this.steps[index] = place === null ? step : { ...step, fingerprint: (step.fingerprint + change) | 0 };
      place = placeBefore;
    }
    if (place !== null) this.first = (this.first + change) | 0;
  }

  private get current(): number {
    return this.steps.at(-1)?.fingerprint ?? this.first;
  }

  /** Forgets every second state of the older half where typing went on in one place, else the oldest states. */
  private thin() {
    const half = this.steps.length >> 1;
    const older: Step[] = [];
    for (const step of this.steps.slice(0, half)) {
      const last = older.at(-1);
      const mayJoin = last && older.length % 2 === 1 && isFollowedBy(last, step);
      if (mayJoin) older[older.length - 1] = { ...step, gone: last.gone };
      else older.push(step);
    }
    if (older.length > half * 0.9) {
      this.first = older.at(-1)?.fingerprint ?? this.first;
      older.length = 0;
    }
    this.steps = [...older, ...this.steps.slice(half)];
    this.size = this.steps.reduce((sum, step) => sum + sizeOf(step.come), 0);
  }
}

/** A step after an exchange, and where the exchanged entries are before it; null when they are not there. */
interface Exchanged {
  step: Step;
  placeBefore: number | null;
}

function exchanged(step: Step, place: number | null, gone: readonly Entry[], come: readonly Entry[]): Exchanged {
  if (place !== null && place + gone.length <= step.at) {
    return { step: { ...step, at: step.at + come.length - gone.length }, placeBefore: place };
  }
  if (place !== null && place >= step.at + step.come.length) {
    return { step, placeBefore: place + step.gone.length - step.come.length };
  }
  const wide = place === null ? step : widened(step, place, gone);
  const before = placeOf(gone, wide.gone);
  const after = place === null ? null : place - wide.at;
  return {
    step: { ...wide, gone: withRun(wide.gone, before, gone, come), come: withRun(wide.come, after, gone, come) },
    placeBefore: before === null ? null : wide.at + before,
  };
}

/** The same step with all of a run in it that it reaches into: what is beside a step is the same before and after it. */
function widened(step: Step, place: number, run: readonly Entry[]): Step {
  const before = run.slice(0, Math.max(0, step.at - place));
  const after = run.slice(run.length - Math.max(0, place + run.length - step.at - step.come.length));
  const wide = (entries: readonly Entry[]) => [...before, ...entries, ...after];
  return { ...step, at: step.at - before.length, gone: wide(step.gone), come: wide(step.come) };
}

/** Where `run` is among `entries`. */
function placeOf(run: readonly Entry[], entries: readonly Entry[]): number | null {
  const at = entries.findIndex(({ node }) => node === run[0]!.node);
  const isThere = ({ node, gap }: Entry, index: number) => entries[at + index]?.node === node && (index === 0 || entries[at + index]!.gap === gap);
  return at >= 0 && run.every(isThere) ? at : null;
}

function withRun(entries: readonly Entry[], at: number | null, gone: readonly Entry[], come: readonly Entry[]): readonly Entry[] {
  if (at === null) return entries;
  const [first, ...others] = come;
  const { gap } = entries[at]!;
  return [...entries.slice(0, at), gap === first!.gap ? first! : { ...first!, gap }, ...others, ...entries.slice(at + gone.length)];
}

function isFollowedBy(step: Step, next: Step): boolean {
  return (
    step.at === next.at &&
    step.come.length === next.gone.length &&
    step.come.every((entry, index) => entry === next.gone[index])
  );
}

function takeBack(state: Entry[], { at, gone, come }: Step) {
  if (gone.length === come.length) for (const [index, entry] of gone.entries()) state[at + index] = entry;
  else state.splice(at, come.length, ...gone);
}

/** The entries with the document's own nodes, if they are equal to its children. */
function adopt(entries: readonly Entry[], doc: Node): Entry[] | null {
  if (entries.length !== doc.childCount) return null;
  const found: Entry[] = [];
  for (const [index, entry] of entries.entries()) {
    const node = doc.child(index);
    if (entry.node !== node && !entry.node.eq(node)) return null;
    found.push(entry.node === node ? entry : { ...entry, node });
  }
  return found;
}
