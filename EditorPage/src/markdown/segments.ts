import type { CompileContext, Extension, Token } from 'mdast-util-from-markdown';

/**
 * Where a stretch of a text block's content stands in the source. For text, `length` equals `size` and every
 * character has its place; for a node such as a picture, `size` is 1 and only the two ends have one.
 */
export interface Segment {
  /** Offset in the text block's content. */
  at: number;
  size: number;
  /** Offset in the source, relative to the start of the text block's own piece. */
  from: number;
  length: number;
}

/** A stretch of a text node's value that the source has character by character. */
export interface TextRun {
  at: number;
  from: number;
  length: number;
}

declare module 'mdast' {
  interface TextData {
    runs?: TextRun[];
  }
}

interface TextBeingRead {
  value: string;
  position: { end: unknown };
  data?: { runs?: TextRun[] };
}

function appendAndRecord(this: CompileContext, token: Token) {
  const text = this.stack.pop() as unknown as TextBeingRead;
  const appended = this.sliceSerialize(token);
  const run = { at: text.value.length, from: token.start.offset, length: appended.length };
  const isWhole = token.end.offset - token.start.offset === appended.length;
  if (isWhole) ((text.data ??= {}).runs ??= []).push(run);
  text.value += appended;
  text.position.end = { ...token.end };
}

/** What stands right behind a character reference has a place too, be it a line end or another reference. */
function recordEnd(this: CompileContext, token: Token) {
  const text = this.stack.pop() as unknown as TextBeingRead;
  ((text.data ??= {}).runs ??= []).push({ at: text.value.length, from: token.end.offset, length: 0 });
  text.position.end = { ...token.end };
}

/** Makes every text node remember which parts of it stand in the source as they are: all but character references. */
export const textRuns: Extension = {
  exit: { data: appendAndRecord, characterEscapeValue: appendAndRecord, characterReference: recordEnd },
};
