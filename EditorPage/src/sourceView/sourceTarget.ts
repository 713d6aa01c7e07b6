/** Find and replace in the note's source. */
import { around, indexFrom, patternOf, type Findings, type FindTarget, type Query } from '../find/query';
import type { SourceField } from './codeMirror';

const LONGEST_QUERY = 200;

export class SourceTarget implements FindTarget {
  #query: Query | null = null;
  #ranges: { from: number; to: number }[] = [];
  #current = -1;

  constructor(private field: SourceField) {}

  get isSearching(): boolean {
    return this.#query !== null;
  }

  search(query: Query | null, stays = false): Findings {
    this.#query = query?.text === '' ? null : query;
    this.#look(this.field.selection.from);
    return stays ? this.findings() : this.#arrive();
  }

  step(by: 1 | -1): Findings {
    this.#current = around(this.#current, by, this.#ranges.length);
    return this.#arrive();
  }

  replace(text: string): Findings {
    const match = this.#ranges[this.#current];
    if (match === undefined) return this.findings();
    this.field.change([{ ...match, insert: text }]);
    this.#look(match.from + text.length);
    return this.#arrive();
  }

  replaceAll(text: string): number {
    const count = this.#ranges.length;
    if (count > 0) this.field.change(this.#ranges.map((range) => ({ ...range, insert: text })));
    this.#look(this.field.selection.from);
    return count;
  }

  findings(): Findings {
    return { current: this.#current, count: this.#ranges.length };
  }

  selectedText(): string {
    const { from, to } = this.field.selection;
    const text = to - from > LONGEST_QUERY ? '' : this.field.text.slice(from, to);
    return text.includes('\n') ? '' : text;
  }

  focus(): void {
    this.field.view.focus();
  }

  /** The source was edited. */
  refresh(): void {
    if (this.#query !== null) this.#look(this.#ranges[this.#current]?.from ?? 0);
  }

  #look(from: number): void {
    const pattern = this.#query === null ? null : patternOf(this.#query);
    const found = pattern === null ? [] : [...this.field.text.matchAll(pattern)];
    this.#ranges = found.map((match) => ({ from: match.index!, to: match.index! + match[0].length }));
    this.#current = indexFrom(this.#ranges, from);
    this.field.mark({ ranges: this.#ranges, current: this.#current });
  }

  #arrive(): Findings {
    const match = this.#ranges[this.#current];
    this.field.mark({ ranges: this.#ranges, current: this.#current });
    if (match !== undefined) this.field.select(match.from, match.to);
    return this.findings();
  }
}
