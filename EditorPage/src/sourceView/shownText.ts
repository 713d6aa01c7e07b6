/** The text as the source view shows it, with line feeds only, and the note's own bytes behind it. */
import { NoteText, type TextChange } from '../source/noteText';
import { carryOver, mainLineEnd, unify } from '../source/text';
import { changeBetween } from '../source/update';

const MARK = '\ufeff';

export class ShownText {
  #mark: string;
  #body: NoteText;
  /** Where the note has other line ends than line feeds: what is shown in place of its body. */
  #unified: string | null;
  readonly #first: { shown: string; body: string };
  readonly #lineEnd: string;

  constructor(text: string) {
    this.#mark = text.startsWith(MARK) ? MARK : '';
    const body = text.slice(this.#mark.length);
    const shown = unify(body).text;
    this.#body = NoteText.of(body);
    this.#unified = shown === body ? null : shown;
    this.#lineEnd = mainLineEnd(body);
    this.#first = { shown, body };
  }

  /** What is shown: no byte order mark, and every line end a line feed. */
  get shown(): string {
    return this.#unified ?? this.#body.whole;
  }

  /** The note. */
  get text(): string {
    return this.#mark + this.#body.whole;
  }

  get length(): number {
    return this.#mark.length + this.#body.length;
  }

  /**
   * The shown text was edited: what was not touched keeps its bytes. `changes` are in ascending order and count in the text
   * before all of them; `shown` gives the text after them. Tells how the note has changed, one change after the other.
   */
  edit(changes: readonly TextChange[], shown: () => string): TextChange[] {
    if (this.#unified !== null) return this.#carryOver(shown());
    const made: TextChange[] = [];
    for (const change of [...changes].reverse()) {
      this.#body = this.#body.changed(change);
      const by = this.#mark.length;
      made.push({ from: change.from + by, to: change.to + by, insert: change.insert });
    }
    return made;
  }

  #carryOver(shown: string): TextChange[] {
    const before = this.#body.whole;
    const isFirst = shown === this.#first.shown;
    const body = isFirst ? this.#first.body : carryOver(before, this.#unified!, shown, this.#lineEnd);
    this.#body = NoteText.of(body);
    this.#unified = shown;
    const change = changeBetween(before, body, this.#mark.length);
    return change === null ? [] : [change];
  }
}
