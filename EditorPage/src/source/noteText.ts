/** A change of a note's text, in UTF-16 offsets of the text before it. */
export interface TextChange {
  from: number;
  to: number;
  insert: string;
}

/** So many pieces are kept before they are put together. */
const MOST = 400;

/**
 * A note's text in pieces, which are put together only when somebody asks for all of it: a key in a long note must not
 * copy the note.
 */
export class NoteText {
  private pieces: readonly string[];

  private constructor(
    pieces: readonly string[],
    readonly length: number,
  ) {
    this.pieces = pieces.length > MOST ? [pieces.join('')] : pieces;
  }

  static of(text: string): NoteText {
    return new NoteText([text], text.length);
  }

  /** All of the text. */
  get whole(): string {
    if (this.pieces.length > 1) this.pieces = [this.pieces.join('')];
    return this.pieces[0]!;
  }

  /** The text after a change. */
  changed({ from, to, insert }: TextChange): NoteText {
    const before: string[] = [];
    const after: string[] = [];
    let start = 0;
    for (const piece of this.pieces) {
      const end = start + piece.length;
      if (start < from) before.push(end <= from ? piece : piece.slice(0, from - start));
      if (end > to) after.push(start >= to ? piece : piece.slice(to - start));
      start = end;
    }
    return new NoteText([...before, insert, ...after], this.length + insert.length - (to - from));
  }
}
