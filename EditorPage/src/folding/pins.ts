/** Blocks that a step of the history begins, ends or works in. They stay unfolded: the step could not find its place again. */
import type { Node } from 'prosemirror-model';
import type { Transaction } from 'prosemirror-state';
import type { StepMap } from 'prosemirror-transform';
import { differingRange } from '../source/range';

export class Pins {
  #pinned = new WeakSet<Node>();

  has(block: Node): boolean {
    return this.#pinned.has(block);
  }

  /** Pins what each step of a transaction has changed, before and after, and the blocks right beside that. */
  take(tr: Transaction): void {
    for (const [index, step] of tr.steps.entries()) {
      const before = tr.docs[index]!;
      const after = tr.docs[index + 1] ?? tr.doc;
      const { from, oldTo, nextTo } = differingRange(before, after);
      this.#pin(before, from, oldTo);
      this.#pin(after, from, nextTo);
      this.#pinMapped(before, after, step.getMap());
    }
  }

  /** A step that puts the same nodes back has its place all the same. */
  #pinMapped(before: Node, after: Node, map: StepMap): void {
    map.forEach((oldStart, oldEnd, newStart, newEnd) => {
      this.#pin(before, before.resolve(oldStart).index(0), before.resolve(oldEnd).indexAfter(0));
      this.#pin(after, after.resolve(newStart).index(0), after.resolve(newEnd).indexAfter(0));
    });
  }

  #pin(doc: Node, from: number, to: number): void {
    for (const block of doc.children.slice(Math.max(0, from - 1), to + 1)) this.#pinned.add(block);
  }
}
