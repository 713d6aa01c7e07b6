/**
 * Tells a note that changed on disk from another note. The host sets the content of both the same way, so
 * the texts themselves must decide.
 */

/** From this share of common text on, new content is the same note, changed elsewhere. */
const SAME_NOTE = 0.5;

/**
 * Whether `after` is likely the note `before` in a newer state: at least half of the longer text stands in
 * lines that both have. An empty text is like nothing, so filling or emptying a note starts anew.
 */
export function isSameNote(before: string, after: string): boolean {
  const longer = Math.max(before.length, after.length);
  if (longer === 0) return true;
  return sharedText(before, after) / longer >= SAME_NOTE;
}

function sharedText(before: string, after: string): number {
  const lines = new Map<string, number>();
  for (const line of before.split('\n')) lines.set(line, (lines.get(line) ?? 0) + 1);
  let shared = 0;
  for (const line of after.split('\n')) {
    const left = lines.get(line) ?? 0;
    if (left === 0) continue;
    lines.set(line, left - 1);
    shared += line.length + 1;
  }
  return shared;
}
