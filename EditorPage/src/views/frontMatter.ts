/** Front matter: one quiet line that says what is in it, and the source when the caret goes there. */
import type { DrawnKind } from './drawn';

const MOST_NAMES = 4;

/** The names of the first fields, for a reader: "titel, taggar". */
export function fieldNames(source: string): string[] {
  return [...source.matchAll(/^([\p{L}\p{N}_-][\p{L}\p{N}_ -]*?)\s*[:=]/gmu)].map((match) => match[1]!);
}

/** What the closed front matter says. */
export function summaryOf(source: string): string {
  const names = fieldNames(source);
  if (names.length === 0) return 'Egenskaper';
  const shown = names.slice(0, MOST_NAMES).join(', ');
  return `Egenskaper: ${shown}${names.length > MOST_NAMES ? ' …' : ''}`;
}

export const frontMatter: DrawnKind = {
  className: 'front-matter',
  label: 'Egenskaper',
  draw: (place, source) => {
    const summary = document.createElement('span');
    summary.className = 'summary';
    summary.textContent = summaryOf(source);
    place.append(summary);
  },
};
