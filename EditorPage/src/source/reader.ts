import { schema } from '../schema';
import { safeCuts } from './cuts';
import { emptyEntry, readEntries, type Entries } from './entries';
import { foldedEntry, lengthWithoutEmptyLines, readInParts } from './folded';
import { countLabels, labelsOf, seemingDefinitions } from './labels';
import { NoteText } from './noteText';
import { mainLineEnd } from './text';
import type { Note } from './update';

const { nodes } = schema;

/** Reads a note whose length is at most `length`; of a longer one the first part is read, and the rest is folded. */
export function readNote(text: string, length: number): Note {
  const mark = text.startsWith('\ufeff') ? '\ufeff' : '';
  const body = text.slice(mark.length);
  const { entries, tail } = readBody(body, length);
  const hasBlock = entries.some((entry) => entry.node.type !== nodes.front_matter);
  if (!hasBlock) entries.push(emptyEntry(nodes.paragraph.create(), ''));
  const labels = countLabels(new Map(), [], entries.map((entry) => entry.parsed));
  return { mark, entries, tail, text: NoteText.of(text), labels, lineEnd: mainLineEnd(text) };
}

function readBody(body: string, length: number): Entries {
  const cut = firstCut(body, length);
  if (cut === body.length) return readEntries(body, true);
  const rest = body.slice(cut);
  const own = rest.slice(0, lengthWithoutEmptyLines(rest));
  const folded = foldedEntry(own, '');
  readInParts(folded.node, length);
  const first = readFirst(body.slice(0, cut), labelsOf(folded.node));
  return { entries: [...first.entries, { ...folded, gap: first.tail }], tail: rest.slice(own.length) };
}

function firstCut(body: string, length: number): number {
  if (body.length <= length) return body.length;
  for (const cut of safeCuts(body)) if (cut >= length) return cut;
  return body.length;
}

/** The first part, with the labels that the rest defines. What it defines itself is known only when it has been read. */
function readFirst(part: string, others: readonly string[]): Entries {
  const seeming = [...seemingDefinitions(part)].map(({ label }) => label);
  const read = readEntries(part, true, new Set([...others, ...seeming]));
  const own = read.entries.flatMap((entry) => labelsOf(entry.parsed));
  const isRight = seeming.every((label) => own.includes(label)) && own.every((label) => seeming.includes(label));
  return isRight ? read : readEntries(part, true, new Set([...others, ...own]));
}
