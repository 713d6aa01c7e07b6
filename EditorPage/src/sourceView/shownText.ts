/** The text as the source view shows it, with line feeds only, and the note's own bytes behind it. */
import { carryOver, mainLineEnd, unify } from '../source/text';

const MARK = '\ufeff';

export class ShownText {
  #mark: string;
  #body: string;
  #shown: string;
  readonly #first: { shown: string; body: string };
  readonly #lineEnd: string;

  constructor(text: string) {
    this.#mark = text.startsWith(MARK) ? MARK : '';
    this.#body = text.slice(this.#mark.length);
    this.#shown = unify(this.#body).text;
    this.#lineEnd = mainLineEnd(this.#body);
    this.#first = { shown: this.#shown, body: this.#body };
  }

  /** What is shown: no byte order mark, and every line end a line feed. */
  get shown(): string {
    return this.#shown;
  }

  /** The note. */
  get text(): string {
    return this.#mark + this.#body;
  }

  /** The shown text was edited: what was not touched keeps its bytes. */
  edit(shown: string): void {
    if (shown === this.#shown) return;
    const isFirst = shown === this.#first.shown;
    this.#body = isFirst ? this.#first.body : carryOver(this.#body, this.#shown, shown, this.#lineEnd);
    this.#shown = shown;
  }
}
