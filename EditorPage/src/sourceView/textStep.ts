/** A change of the source that the document may not show at all, as a step that can be undone. */
import { Step, StepResult } from 'prosemirror-transform';
import type { Node } from 'prosemirror-model';

/** Replaces a stretch of the note's text. The document stays as it is: the steps beside this one change it. */
export class TextStep extends Step {
  constructor(
    private readonly from: number,
    private readonly removed: string,
    private readonly inserted: string,
  ) {
    super();
  }

  /** The text after the step; null when the text is another than the one that the step was made for. */
  changed(text: string): string | null {
    const end = this.from + this.removed.length;
    if (text.slice(this.from, end) !== this.removed) return null;
    return text.slice(0, this.from) + this.inserted + text.slice(end);
  }

  override apply(doc: Node): StepResult {
    return StepResult.ok(doc);
  }

  override invert(): Step {
    return new TextStep(this.from, this.inserted, this.removed);
  }

  override map(): Step {
    return this;
  }

  override toJSON(): unknown {
    return { from: this.from, removed: this.removed, inserted: this.inserted };
  }
}
