import type { TextRun } from './segments';

/**
 * Finds a value's lines in its source, where each line may have lost something at its front: the indentation or
 * the markers of the containers around it. Line ends are not part of the runs.
 */
export function alignLines(value: string, source: string, from: number): TextRun[] {
  const runs: TextRun[] = [];
  const valueLines = value.split('\n');
  const sourceLines = source.split('\n');
  let at = 0;
  for (const [index, line] of valueLines.entries()) {
    const written = sourceLines[index];
    if (written === undefined) break;
    const common = commonEnd(line, written);
    const run = { at: at + line.length - common, from: from + written.length - common, length: common };
    // An empty line has a place too: the end of what stands before it.
    runs.push(run);
    at += line.length + 1;
    from += written.length + 1;
  }
  return runs;
}

function commonEnd(a: string, b: string): number {
  let length = 0;
  while (length < a.length && length < b.length && same(a[a.length - 1 - length]!, b[b.length - 1 - length]!))
    length += 1;
  return length;
}

/** The parser shows a null character as a replacement character. */
const same = (a: string, b: string) => a === b || (a === '\ufffd' && b === '\0');

/** What stands between the backticks of inline code, without the one blank that pads it at each end. */
export function readInlineCode(source: string, value: string): { text: string; from: number } {
  const fence = /^`+/.exec(source)?.[0].length ?? 0;
  const text = source.slice(fence, source.length - fence);
  const isPadded = text.length > value.length && /^[ \n]/.test(text) && /[ \n]$/.test(text) && /[^ \n]/.test(text);
  return isPadded ? { text: text.slice(1, -1), from: fence + 1 } : { text, from: fence };
}
