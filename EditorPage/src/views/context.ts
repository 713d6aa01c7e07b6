/** What drawing a note asks of its text. */
export interface NoteContext {
  /** Where the definition of a label points; null when the note has none. */
  definitionFor(label: string): { url: string } | null;
}
