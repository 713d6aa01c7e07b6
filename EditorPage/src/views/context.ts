import type { Node } from 'prosemirror-model';

/** What drawing a note asks of its text. */
export interface NoteContext {
  /** Where the definition of a label points; null when the note has none. */
  definitionFor(label: string): { url: string } | null;
  /** Reads a part of the note that is folded. */
  peek(part: string): readonly Node[];
}
