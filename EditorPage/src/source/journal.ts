import type { Node } from 'prosemirror-model';
import type { Entry } from './entries';
import { fingerprintChange } from './fingerprint';
import type { Range } from './range';

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
    const change = fingerprintChange(entries[from - 1]?.node, gone, come, entries[oldTo]?.node);
    const wanted = (this.current + change) | 0;
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
    const shorter = Math.min(before.length, after.length);
    let start = 0;
    while (start < shorter && before[start] === after[start]) start += 1;
    let end = 0;
    while (end < shorter - start && before[before.length - 1 - end] === after[after.length - 1 - end]) end += 1;
    const gone = before.slice(start, before.length - end);
    const come = after.slice(start, after.length - end);
    if (gone.length === 0 && come.length === 0) return;
    const nodes = (entries: readonly Entry[]) => entries.map((entry) => entry.node);
    const change = fingerprintChange(
      before[start - 1]?.node,
      nodes(gone),
      nodes(come),
      before[before.length - end]?.node,
    );
    this.steps.push({ at: start, gone, come, fingerprint: (this.current + change) | 0 });
    this.size += sizeOf(come);
    if (this.size > sizeLimit || this.steps.length > stepLimit) this.thin();
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
