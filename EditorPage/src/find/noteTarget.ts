/** Find and replace in the note as it is shown. */
import { closeHistory } from 'prosemirror-history';
import type { Node } from 'prosemirror-model';
import { NodeSelection, TextSelection, type Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { schema } from '../schema';
import { findOrder, foundIn, nextIndex } from './marks';
import type { Match } from './matches';
import type { Findings, FindTarget, Query } from './query';

/** A longer selection is a place to work in, not something to look for. */
const LONGEST_QUERY = 200;

export class NoteTarget implements FindTarget {
  /** `unfold` reads the blocks at an offset of a folded run. */
  constructor(
    private view: EditorView,
    private unfold: (folded: Node, offset: number) => void,
  ) {}

  get isSearching(): boolean {
    return foundIn(this.view.state) !== null;
  }

  search(query: Query | null, stays = false): Findings {
    const { state } = this.view;
    if (query === null && foundIn(state) === null) return this.findings();
    this.view.dispatch(state.tr.setMeta(...findOrder.search(query, state.selection.from)));
    return stays ? this.findings() : this.#arrive();
  }

  step(by: 1 | -1): Findings {
    const found = foundIn(this.view.state);
    if (found === null) return this.findings();
    this.view.dispatch(this.view.state.tr.setMeta(...findOrder.goTo(nextIndex(found, by))));
    return this.#arrive();
  }

  replace(text: string): Findings {
    const match = this.#currentRead();
    if (match === null) return this.findings();
    if (match.isNode) return this.step(1);
    const end = match.from + text.length;
    this.#edit((tr) => putText(tr, match, text));
    const found = foundIn(this.view.state);
    const next = found?.matches.findIndex(({ from }) => from >= end) ?? -1;
    if (found !== null) this.view.dispatch(this.view.state.tr.setMeta(...findOrder.goTo(next < 0 && found.matches.length > 0 ? 0 : next)));
    return this.#arrive();
  }

  replaceAll(text: string): number {
    this.#readAll();
    const matches = (foundIn(this.view.state)?.matches ?? []).filter(({ isNode }) => !isNode);
    if (matches.length === 0) return 0;
    this.#edit((tr) => [...matches].reverse().forEach((match) => putText(tr, match, text)));
    return matches.length;
  }

  findings(): Findings {
    const found = foundIn(this.view.state);
    return { current: found?.current ?? -1, count: found?.matches.length ?? 0, isCounting: found?.finder.isComplete === false };
  }

  selectedText(): string {
    const { from, to, $from, $to } = this.view.state.selection;
    if (!$from.sameParent($to) || !$from.parent.inlineContent || to - from > LONGEST_QUERY) return '';
    return this.view.state.doc.textBetween(from, to).replace(/\n/g, ' ');
  }

  focus(): void {
    this.view.focus();
  }

  #current(): Match | null {
    const found = foundIn(this.view.state);
    return found?.matches[found.current] ?? null;
  }

  /** The current match, in blocks that are read. */
  #currentRead(): Match | null {
    let match = this.#current();
    for (let tries = 0; match?.folded && tries < 3; tries++) {
      this.unfold(match.folded.node, match.folded.offset);
      match = this.#current();
    }
    return match?.folded ? null : match;
  }

  /** Looks through all of the note, and reads all blocks that hold matches. */
  #readAll(): void {
    while (foundIn(this.view.state)?.finder.isComplete === false) this.view.dispatch(this.view.state.tr.setMeta(...findOrder.more()));
    for (let left = Infinity; ;) {
      const folded = (foundIn(this.view.state)?.matches ?? []).filter((match) => match.folded);
      if (folded.length === 0 || folded.length >= left) return;
      left = folded.length;
      this.unfold(folded[0]!.folded!.node, folded[0]!.folded!.offset);
    }
  }

  /** One edit that is undone alone. */
  #edit(change: (tr: Transaction) => void): void {
    const tr = closeHistory(this.view.state.tr);
    change(tr);
    this.view.dispatch(tr);
    this.view.dispatch(closeHistory(this.view.state.tr));
  }

  /** Selects the current match and brings it into sight. */
  #arrive(): Findings {
    const match = this.#currentRead();
    if (match !== null) {
      const { tr } = this.view.state;
      const selection = match.isNode ? NodeSelection.create(tr.doc, match.from) : TextSelection.create(tr.doc, match.from, match.to);
      this.view.dispatch(tr.setSelection(selection));
      this.#reveal(match.from);
      // Blocks on the way take their real height only once they come near.
      requestAnimationFrame(() => this.#current()?.from === match.from && this.#reveal(match.from));
    }
    return this.findings();
  }

  #reveal(pos: number): void {
    const { top, bottom } = this.view.coordsAtPos(pos);
    const isSeen = top >= innerHeight * 0.15 && bottom <= innerHeight * 0.85;
    if (!isSeen) window.scrollBy(0, (top + bottom) / 2 - innerHeight * 0.4);
  }
}

/** Puts text in place of a match, in the type that it begins in: a link stays one. */
export function putText(tr: Transaction, { from, to }: Pick<Match, 'from' | 'to'>, text: string): void {
  if (text === '') tr.delete(from, to);
  else tr.replaceWith(from, to, schema.text(text, tr.doc.resolve(from).nodeAfter?.marks));
}
