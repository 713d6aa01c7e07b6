/** A line feed copy of a text, and the way back from its offsets to the text's own. */
export interface Unified {
  text: string;
  /** The offset in the original text. */
  at(offset: number): number;
}

const identity = (offset: number) => offset;

/** Gives every line end as one line feed. The offset before a line end maps to the one before all of it. */
export function unify(raw: string): Unified {
  if (!raw.includes('\r')) return { text: raw, at: identity };
  const text = raw.replace(/\r\n?/g, '\n');
  if (text.length === raw.length) return { text, at: identity };
  const pairs: number[] = [];
  for (let at = raw.indexOf('\r\n'); at >= 0; at = raw.indexOf('\r\n', at + 2)) pairs.push(at - pairs.length);
  return { text, at: (offset) => offset + countBelow(pairs, offset) };
}

/** How many of the ascending numbers are below `limit`. */
function countBelow(numbers: readonly number[], limit: number): number {
  let low = 0;
  let high = numbers.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (numbers[middle]! < limit) low = middle + 1;
    else high = middle;
  }
  return low;
}

/** The line end that a text mostly uses. */
export function mainLineEnd(text: string): '\n' | '\r\n' | '\r' {
  if (!text.includes('\r')) return '\n';
  const pairs = text.match(/\r\n/g)?.length ?? 0;
  const feeds = (text.match(/\n/g)?.length ?? 0) - pairs;
  const returns = (text.match(/\r/g)?.length ?? 0) - pairs;
  if (pairs >= feeds && pairs >= returns) return '\r\n';
  return returns > feeds ? '\r' : '\n';
}

export function withLineEnd(text: string, lineEnd: string): string {
  return lineEnd === '\n' ? text : text.replace(/\n/g, lineEnd);
}

/** So many characters of long texts are compared at once. */
const STRETCH = 64;

/** The lengths of what two texts have in common at their beginnings and, after that, at their ends. */
export function commonEnds(a: string, b: string): { start: number; end: number } {
  const shorter = Math.min(a.length, b.length);
  let start = 0;
  while (start + STRETCH <= shorter && a.slice(start, start + STRETCH) === b.slice(start, start + STRETCH)) start += STRETCH;
  while (start < shorter && a.charCodeAt(start) === b.charCodeAt(start)) start += 1;
  let end = 0;
  const tail = (text: string) => text.slice(text.length - end - STRETCH, text.length - end);
  while (end + STRETCH <= shorter - start && tail(a) === tail(b)) end += STRETCH;
  while (end < shorter - start && a.charCodeAt(a.length - 1 - end) === b.charCodeAt(b.length - 1 - end)) end += 1;
  return { start, end };
}

/** Brings the edit from `before` to `after`, both with line feeds, to the text that `before` was made from. */
export function carryOver(raw: string, before: string, after: string, lineEnd: string): string {
  if (raw === before) return withLineEnd(after, lineEnd);
  const { at } = unify(raw);
  const { start, end } = commonEnds(before, after);
  const middle = withLineEnd(after.slice(start, after.length - end), lineEnd);
  return raw.slice(0, at(start)) + middle + raw.slice(at(before.length - end));
}
