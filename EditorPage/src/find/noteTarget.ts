/** Find and replace in the note as it is shown. */
import { closeHistory } from 'prosemirror-history';
import { NodeSelection, TextSelection, type Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { schema } from '../schema';
import { findOrder, foundIn, nextIndex } from './marks';
import type { Match } from './matches';
import type { Findings, FindTarget, Query } from './query';

/** A longer selection is a place to work in, not something to look for. */
const LONGEST_QUERY = 200;

export class NoteTarget implements FindTarget {
  /** `readAll` makes sure that the whole note is there. */
  constructor(
    private view: EditorView,
    private readAll: () => void,
  ) {}

  get isSearching(): boolean {
    return foundIn(this.view.state) !== null;
  }

  search(query: Query | null, stays = false): Findings {
    this.readAll();
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
    const match = this.#current();
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
    const matches = (foundIn(this.view.state)?.matches ?? []).filter(({ isNode }) => !isNode);
    if (matches.length === 0) return 0;
    this.#edit((tr) => [...matches].reverse().forEach((match) => putText(tr, match, text)));
    return matches.length;
  }

  findings(): Findings {
    const found = foundIn(this.view.state);
    return { current: found?.current ?? -1, count: found?.matches.length ?? 0 };
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

  /** One edit that is undone alone. */
  #edit(change: (tr: Transaction) => void): void {
    const tr = closeHistory(this.view.state.tr);
    change(tr);
    this.view.dispatch(tr);
    this.view.dispatch(closeHistory(this.view.state.tr));
  }

  /** Selects the current match and brings it into sight. */
  #arrive(): Findings {
    const match = this.#current();
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
