/** What is looked for in a note. */
export interface Query {
  text: string;
  /** Capital and small letters are different letters. */
  caseSensitive: boolean;
  /** Only where it is no part of a longer word. */
  wholeWords: boolean;
}

/** Whether two queries look for the same. */
export function sameQuery(a: Query | null, b: Query | null): boolean {
  return a?.text === b?.text && a?.caseSensitive === b?.caseSensitive && a?.wholeWords === b?.wholeWords;
}

/** The query as a pattern; null when it asks for nothing. Letters with marks are found however a file spells them. */
export function patternOf({ text, caseSensitive, wholeWords }: Query): RegExp | null {
  if (text === '') return null;
  const spellings = [...new Set([text, text.normalize('NFC'), text.normalize('NFD')])];
  const words = spellings.map((one) => one.replace(/[\\^$.*+?()[\]{}|/]/g, '\\$&')).join('|');
  // A letter is not found in place of the same letter with a mark that follows on its own.
  const whole = wholeWords ? `(?<![\\p{L}\\p{N}\\p{M}_])(?:${words})(?![\\p{L}\\p{N}_])` : `(?:${words})`;
  return new RegExp(`${whole}(?!\\p{M})`, caseSensitive ? 'gu' : 'giu');
}

/** Which match is the current one, and how many there are. */
export interface Findings {
  /** From 0; -1 when none is current. */
  current: number;
  count: number;
  /** Set while there may be more of them. */
  isCounting?: boolean;
}

/** Where the bar looks: the note as it is shown, or its source. */
export interface FindTarget {
  /** Whether it looks for something now. */
  readonly isSearching: boolean;
  /**
   * Looks for something else, or for nothing; the first match at or behind the caret becomes the current one, and is
   * selected unless the caret `stays`.
   */
  search(query: Query | null, stays?: boolean): Findings;
  /** Goes to the next match (1) or the one before (-1), around the ends. */
  step(by: 1 | -1): Findings;
  /** Puts `text` in place of the current match, and goes to the next one. */
  replace(text: string): Findings;
  /** Puts `text` in place of every match as one step. Tells how many there were. */
  replaceAll(text: string): number;
  /** The findings after the note was edited. */
  findings(): Findings;
  /** The selected text, when it is short enough to look for. */
  selectedText(): string;
  /** Takes the keyboard, with the current match selected. */
  focus(): void;
}

/** The index of the first of `starts` that is not before `place`; the first one behind the end. -1 when there is none. */
export function indexFrom(starts: readonly { from: number }[], place: number): number {
  if (starts.length === 0) return -1;
  const found = starts.findIndex(({ from }) => from >= place);
  return found < 0 ? 0 : found;
}

/** The index one step on in a ring of `count`. */
export function around(index: number, by: 1 | -1, count: number): number {
  return count === 0 ? -1 : (index + by + count) % count;
}
