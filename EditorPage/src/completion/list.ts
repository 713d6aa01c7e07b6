/** The list of names under the place where a link is typed. The keyboard stays in the note. */

export const LIST_ID = 'note-names';

/** The identity of an option, for those who read the screen aloud. */
export const optionId = (index: number): string => `${LIST_ID}-${index}`;

/** The list is so high at most, and so far from the window's edges; in pixels. */
const HIGHEST = 280;
const EDGE = 8;

export class CompletionList {
  #list = document.createElement('div');
  #names: readonly string[] = [];

  constructor(private choose: (index: number) => void) {
    this.#list.id = LIST_ID;
    this.#list.className = 'note-names';
    this.#list.setAttribute('role', 'listbox');
    this.#list.setAttribute('aria-label', 'Noter');
    // The note keeps the keyboard.
    this.#list.addEventListener('mousedown', (event) => event.preventDefault());
    this.#list.addEventListener('click', (event) => this.#click(event));
  }

  /** Shows the names with the one at `index` chosen, below or above the place `at`. */
  show(names: readonly string[], index: number, at: { left: number; top: number; bottom: number }): void {
    if (names !== this.#names) this.#fill(names);
    if (!this.#list.isConnected) document.body.append(this.#list);
    [...this.#list.children].forEach((option, place) => option.setAttribute('aria-selected', String(place === index)));
    this.#place(at);
    this.#list.children[index]?.scrollIntoView({ block: 'nearest' });
  }

  hide(): void {
    this.#list.remove();
  }

  #fill(names: readonly string[]): void {
    this.#names = names;
    const options = names.map((name, index) => {
      const option = document.createElement('div');
      option.id = optionId(index);
      option.setAttribute('role', 'option');
      option.textContent = name;
      return option;
    });
    this.#list.replaceChildren(...options);
  }

  #place({ left, top, bottom }: { left: number; top: number; bottom: number }): void {
    const { width, height } = this.#list.getBoundingClientRect();
    const isAbove = bottom + Math.min(height, HIGHEST) + EDGE > innerHeight && top > innerHeight - bottom;
    this.#list.style.left = `${Math.max(EDGE, Math.min(left, innerWidth - width - EDGE))}px`;
    this.#list.style.top = isAbove ? '' : `${bottom + 4}px`;
    this.#list.style.bottom = isAbove ? `${innerHeight - top + 4}px` : '';
  }

  #click(event: MouseEvent): void {
    const index = [...this.#list.children].indexOf(event.target as Element);
    if (index >= 0) this.choose(index);
  }
}
