/** Decides which blocks of a long note are drawn: those near the window, and those that are being worked with. */
import type { Node } from 'prosemirror-model';
import type { Selection, Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { isFolded, partAt, sourceOf } from '../source/folded';
import { groupSize } from '../source/groups';
import type { Correction, SourceDocument } from '../source/SourceDocument';
import type { FoldedBlock, Watcher } from './foldedBlock';
import { Pins } from './pins';
import { rememberHeight } from './heights';
import { blocksIn, hold } from './scrollHold';

/** Marks transactions that bring the document in step with the text; they are no edits. */
export const FROM_TEXT = 'fromText';

/** So far above and below the window blocks are unfolded, and from so far on they are folded again; in window heights. */
const NEAR = 1;
const FAR = 3;
/** So much is read at a time, in characters: a frame must not wait for more. */
const STEP = 1_500;
/** So many groups of blocks are folded at a time: everything is laid out anew each time. */
const FOLDED_AT_ONCE = 6;
/** Less than that is folded only when nobody has scrolled for so long; in milliseconds. */
const REST = 300;
/** However busy the page is, the next step waits no longer than this; in milliseconds. */
const LONGEST_WAIT = 100;
/** Who moves further from one frame to the next is gone before a block is read; in window heights. */
const RUSH = 1;
/** A glimpse of the note is shown to them so often all the same; in milliseconds. */
const GLIMPSE = 250;

/** The editor whose note is folded. */
export interface Folded {
  readonly view: EditorView;
  /** Brings the document to what `change` says. False when it cannot be changed now. */
  refold(change: (source: SourceDocument) => readonly Correction[]): boolean;
}

/** What of a run is being unfolded, and where the run stands in the document. */
interface Unfolding {
  node: Node;
  from: number;
  size: number;
  pos: number;
}

export class Folding implements Watcher {
  #pins = new Pins();
  #near = new Set<FoldedBlock>();
  #spaces = new Map<Element, FoldedBlock>();
  #observer = new IntersectionObserver((entries) => this.#seen(entries), { rootMargin: `${NEAR * 100}% 0px` });
  #isStepDue = false;
  #isTidyingDue = false;
  #scrolledAt = 0;
  #rest = 0;
  #top = 0;
  /** How often the window has moved, and whether it last moved too far to be read. */
  #moves = 0;
  #isRush = false;
  #unfoldedAt = 0;

  constructor(private editor: Folded) {
    window.addEventListener('scroll', () => this.#scrolled(), { passive: true });
  }

  come(space: FoldedBlock): void {
    this.#spaces.set(space.dom, space);
    this.#observer.observe(space.dom);
  }

  gone(space: FoldedBlock): void {
    this.#observer.unobserve(space.dom);
    this.#spaces.delete(space.dom);
    this.#near.delete(space);
  }

  /** What the history can come back to stays unfolded. */
  keep(tr: Transaction): void {
    if (this.#spaces.size > 0 || tr.doc.childCount > 1) this.#pins.take(tr);
  }

  /** Unfolds what is right beside the ends of the selection, so that keys find blocks there. */
  unfoldBesideSelection(): void {
    if (this.#spaces.size === 0) return;
    for (const side of ['$anchor', '$head'] as const) {
      for (const by of [-1, 1] as const) {
        const { doc, selection } = this.editor.view.state;
        const index = selection[side].index(0);
        const own = doc.maybeChild(index);
        if (own && isFolded(own)) this.#unfold(own, 0, 1);
        const neighbour = index + by < 0 ? null : doc.maybeChild(index + by);
        if (neighbour && isFolded(neighbour)) this.#unfold(neighbour, by < 0 ? Infinity : 0, 1);
      }
    }
  }

  /** Unfolds all that is selected. */
  unfoldSelection(): void {
    for (const node of foldedIn(this.editor.view.state.doc, this.editor.view.state.selection)) this.unfoldAll(node);
  }

  /** How much of the selection is folded, in characters. */
  get foldedInSelection(): number {
    if (this.#spaces.size === 0) return 0;
    const { doc, selection } = this.editor.view.state;
    return foldedIn(doc, selection).reduce((sum, node) => sum + sourceOf(node).length, 0);
  }

  /** Unfolds the note's last blocks. */
  unfoldEnd(): void {
    const { lastChild } = this.editor.view.state.doc;
    if (lastChild && isFolded(lastChild)) this.#unfold(lastChild, Infinity, 1);
  }

  /** Unfolds a run of blocks whole. */
  unfoldAll(node: Node): void {
    this.#unfold(node, 0, Infinity);
  }

  /** Unfolds the part of a run that holds the character at `offset`. */
  unfoldAt(node: Node, offset: number): void {
    this.#unfold(node, offset, 1);
  }

  #unfold(node: Node, offset: number, length: number): boolean {
    return this.editor.refold((source) => source.unfold(node, Math.min(offset, sourceOf(node).length - 1), length));
  }

  #seen(entries: readonly IntersectionObserverEntry[]): void {
    for (const { target, isIntersecting } of entries) {
      const space = this.#spaces.get(target);
      if (!space) continue;
      if (isIntersecting) this.#near.add(space);
      else this.#near.delete(space);
    }
    this.#step();
  }

  /** Unfolds what the window shows at once, and what is near when nothing else is to do. */
  #step(): void {
    if (this.#isStepDue) return;
    if (this.#isRushing) return this.#planStep(0);
    const next = this.#nearest();
    if (next === null) return;
    if (next.distance === 0 && this.#unfoldFor(next.space, 0)) this.#planStep(0);
    else this.#planStep(LONGEST_WAIT);
  }

  /** Whether what is unfolded now would have left the window when it is drawn. */
  get #isRushing(): boolean {
    return this.#isRush && performance.now() - this.#unfoldedAt < GLIMPSE;
  }

  #planStep(wait: number): void {
    if (this.#isStepDue || this.#near.size === 0) return;
    this.#isStepDue = true;
    const moves = this.#moves;
    const run = (): void => {
      this.#isStepDue = false;
      // A frame without a move ends a rush.
      if (wait === 0 && moves === this.#moves) this.#isRush = false;
      if (this.#isRushing) return this.#planStep(0);
      const next = this.#nearest();
      if (next === null) return;
      this.#unfoldFor(next.space, next.distance === 0 ? 0 : NEAR);
      this.#planStep(next.distance === 0 ? 0 : LONGEST_WAIT);
    };
    if (wait === 0) requestAnimationFrame(run);
    else requestIdleCallback(run, { timeout: wait });
  }

  #nearest(): { space: FoldedBlock; distance: number } | null {
    let nearest: { space: FoldedBlock; distance: number } | null = null;
    for (const space of this.#near) {
      const { top, bottom } = space.dom.getBoundingClientRect();
      const distance = Math.max(0, top - innerHeight, -bottom);
      if (distance <= NEAR * innerHeight && (nearest === null || distance < nearest.distance)) nearest = { space, distance };
    }
    return nearest;
  }

  /** Unfolds the part of a space that is within the window and `margin` window heights around it. */
  #unfoldFor({ dom, node }: FoldedBlock, margin: number): boolean {
    const { top, bottom, height } = dom.getBoundingClientRect();
    const { length } = sourceOf(node);
    const at = (y: number): number => Math.max(0, Math.min(length - 1, Math.floor(((y - top) / Math.max(1, height)) * length)));
    const reach = margin * innerHeight;
    const isAbove = bottom <= 0;
    const from = isAbove ? at(bottom - 1) : at(-reach);
    const size = isAbove ? 1 : Math.max(1, Math.min(STEP, at(innerHeight + reach) - from));
    const first = at(0);
    const run = { node, from, size, pos: this.#posOf(node) };
    this.#unfoldedAt = performance.now();
    const isDone = hold(this.editor.view, () => this.#unfold(node, from, size), () => (top < 0 ? this.#placeIn(run, first) : 0));
    this.#top = scrollY;
    return isDone;
  }

  /** Where in the window the character at `offset` of a run is about, now that a part of the run is unfolded. */
  #placeIn({ node, from, size, pos }: Unfolding, offset: number): number {
    const part = { from: partAt(node, from).from, to: partAt(node, from + size - 1).to };
    const { doc } = this.editor.view.state;
    const hasBefore = part.from > 0;
    let end = pos + (hasBefore ? 1 : 0);
    const begin = end;
    for (let index = doc.resolve(begin).index(); index < doc.childCount && !isFolded(doc.child(index)); index++) end += doc.child(index).nodeSize;
    const top = this.#boxAt(begin)?.top ?? 0;
    const bottom = this.#boxAt(doc.resolve(end).posAtIndex(doc.resolve(end).index() - 1))?.bottom ?? top;
    return top + ((offset - part.from) / (part.to - part.from)) * (bottom - top);
  }

  #posOf(node: Node): number {
    let pos = 0;
    for (const block of this.editor.view.state.doc.children) {
      if (block === node) break;
      pos += block.nodeSize;
    }
    return pos;
  }

  #boxAt(pos: number): DOMRect | null {
    const dom = this.editor.view.nodeDOM(pos);
    return dom instanceof Element ? dom.getBoundingClientRect() : null;
  }

  #scrolled(): void {
    this.#moves += 1;
    this.#isRush = Math.abs(scrollY - this.#top) > RUSH * innerHeight;
    this.#top = scrollY;
    this.#scrolledAt = performance.now();
    this.#planTidying();
    clearTimeout(this.#rest);
    this.#rest = window.setTimeout(() => this.#planTidying(), REST);
  }

  #planTidying(): void {
    if (this.#isTidyingDue) return;
    this.#isTidyingDue = true;
    requestIdleCallback(() => {
      this.#isTidyingDue = false;
      this.#foldFar();
    });
  }

  /** Folds again what is far from the window and was not touched. */
  #foldFar(): void {
    const { view } = this.editor;
    const { doc, selection } = view.state;
    const far: { index: number; height: number }[] = [];
    const blocks = blocksIn(view);
    if (blocks.length !== doc.childCount) return;
    for (let index = 0; index < doc.childCount && far.length < FOLDED_AT_ONCE; ) {
      const size = groupSize(doc.children, index);
      const isFree = size > 0 && this.#isFree(doc, selection, index, size);
      const height = isFree ? heightFarAway(blocks[index]!, blocks[index + size - 1]!) : null;
      if (height !== null) far.push({ index, height });
      index += Math.max(1, size);
    }
    const isAtRest = performance.now() - this.#scrolledAt >= REST;
    if (far.length === 0 || (far.length < FOLDED_AT_ONCE && !isAtRest)) return;
    hold(view, () => this.editor.refold((source) => far.reverse().flatMap((group) => this.#fold(source, group)).reverse()), () => 0);
    if (far.length === FOLDED_AT_ONCE) this.#planTidying();
  }

  #isFree(doc: Node, { $from, $to }: Selection, index: number, size: number): boolean {
    if ($from.index(0) <= index + size && $to.index(0) >= index - 1) return false;
    return doc.children.slice(index, index + size).every((node) => !this.#pins.has(node));
  }

  #fold(source: SourceDocument, { index, height }: { index: number; height: number }): readonly Correction[] {
    const corrections = source.fold(index);
    for (const { nodes } of corrections) rememberHeight(nodes[0]!, height, this.editor.view.dom);
    return corrections;
  }
}

/** The height of the blocks from `first` to `last`; null when they are not far from the window. */
function heightFarAway(first: Element, last: Element): number | null {
  const { top } = first.getBoundingClientRect();
  const { bottom } = last.getBoundingClientRect();
  return top > (1 + FAR) * innerHeight || bottom < -FAR * innerHeight ? bottom - top : null;
}

/** The folded runs that a selection reaches over. */
function foldedIn(doc: Node, { from, to }: Selection): Node[] {
  const found: Node[] = [];
  doc.nodesBetween(from, to, (node) => {
    if (isFolded(node)) found.push(node);
    return false;
  });
  return found;
}
