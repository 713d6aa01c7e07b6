/** The bar for finding and replacing, above the note at its right. */
import { icon } from '../icons';
import type { Findings, FindTarget, Query } from './query';

/** Text that is looked for is found while it is typed. */
export class FindBar {
  readonly dom = document.createElement('div');
  #find = field('Sök');
  #with = field('Ersätt med');
  #status = document.createElement('span');
  #case = toggle('Aa', 'Skilj på stora och små bokstäver');
  #words = toggle('ab', 'Hela ord');
  #replaceRow = row();
  #target: FindTarget;
  /** Whether the search has found nothing yet, and goes on. */
  #awaitsFirst = false;
  /** Whether what was found is marked without the bar. */
  #isPointing = false;

  constructor(
    private root: HTMLElement,
    target: FindTarget,
  ) {
    this.#target = target;
    this.#status.className = 'find-status';
    this.#status.setAttribute('role', 'status');
    this.dom.className = 'find-bar';
    this.dom.setAttribute('role', 'search');
    this.dom.setAttribute('aria-label', 'Sök i noten');
    const first = row();
    first.append(
      this.#find,
      this.#status,
      this.#case,
      this.#words,
      button('chevron-up', 'Föregående (Skift+F3)', () => this.step(-1)),
      button('chevron-down', 'Nästa (F3)', () => this.step(1)),
      button('x', 'Stäng (Esc)', () => this.close()),
    );
    this.#replaceRow.append(
      this.#with,
      textButton('Ersätt', () => this.#show(this.#target.replace(this.#with.value))),
      textButton('Ersätt alla', () => this.#replaceAll()),
    );
    this.dom.append(first, this.#replaceRow);
    this.#listen();
  }

  get isOpen(): boolean {
    return this.dom.isConnected;
  }

  /** Goes to the first place that says `text` and marks all of them, until the user does something in the note. */
  point(text: string): void {
    this.#find.value = text;
    for (const one of [this.#case, this.#words]) one.setAttribute('aria-pressed', 'false');
    this.#isPointing = !this.isOpen;
    this.#search();
  }

  #endPointing(): void {
    if (!this.#isPointing) return;
    this.#isPointing = false;
    this.#target.search(null);
  }

  /** Shows the bar with the selected text in it, and the row for replacing where that is wanted. */
  open(withReplace: boolean): void {
    this.#isPointing = false;
    const selected = this.#target.selectedText();
    this.#replaceRow.hidden = !withReplace && (!this.isOpen || this.#replaceRow.hidden);
    if (!this.isOpen) this.root.append(this.dom);
    if (selected !== '') this.#find.value = selected;
    this.#find.focus();
    this.#find.select();
    this.#search();
  }

  /** Takes the bar away; the keyboard goes back to the note, to what was found last. */
  close(): void {
    if (!this.isOpen) return;
    const hadFocus = this.dom.contains(document.activeElement);
    this.dom.remove();
    this.#target.search(null);
    if (hadFocus) this.#target.focus();
  }

  /** The next match (1) or the one before (-1); opens the bar when it is closed. */
  step(by: 1 | -1): void {
    if (!this.isOpen) this.open(false);
    else this.#show(this.#target.step(by));
  }

  /** Looks somewhere else from now on. */
  lookIn(target: FindTarget): void {
    if (target === this.#target) return;
    if (this.isOpen) this.#target.search(null);
    this.#target = target;
    if (this.isOpen) this.#search();
  }

  /** The note, or what was found in it, has changed. */
  refresh(): void {
    if (this.#isPointing && !this.#target.isSearching) this.#isPointing = false;
    if (!this.isOpen && !this.#isPointing) return;
    if (this.#target.isSearching || this.#find.value === '') this.#takeIn(this.#target.findings());
    else this.#show(this.#target.search(this.#query(), true));
  }

  #query(): Query {
    return { text: this.#find.value, caseSensitive: isOn(this.#case), wholeWords: isOn(this.#words) };
  }

  #search(): void {
    const findings = this.#target.search(this.#query());
    this.#awaitsFirst = findings.count === 0 && findings.isCounting === true;
    this.#show(findings);
  }

  /** More may have been found: the search goes to the first match as soon as there is one. */
  #takeIn(findings: Findings): void {
    this.#tell(findings);
    if (!this.#awaitsFirst || findings.count === 0) return;
    this.#awaitsFirst = false;
    queueMicrotask(() => this.#search());
  }

  #show(findings: Findings): void {
    this.#tell(findings);
    this.dom.classList.toggle('nothing', findings.count === 0 && this.#find.value !== '');
  }

  #tell({ current, count, isCounting }: Findings): void {
    const more = isCounting ? '…' : '';
    const words = count === 0 ? (isCounting ? 'Söker…' : 'Inga träffar') : `${current + 1} av ${count}${more}`;
    this.#status.textContent = this.#find.value === '' ? '' : words;
  }

  #replaceAll(): void {
    const count = this.#target.replaceAll(this.#with.value);
    this.#show(this.#target.findings());
    this.#status.textContent = count === 1 ? '1 ersatt' : `${count} ersatta`;
  }

  #listen(): void {
    this.#find.addEventListener('input', () => this.#search());
    for (const one of [this.#case, this.#words]) one.addEventListener('click', () => this.#search());
    this.dom.addEventListener('keydown', (event) => this.#key(event));
    for (const kind of ['pointerdown', 'keydown', 'beforeinput']) this.root.addEventListener(kind, () => this.#endPointing(), true);
  }

  #key(event: KeyboardEvent): void {
    if (event.isComposing) return;
    if (event.key === 'Escape') this.close();
    else if (event.key !== 'Enter' || event.target instanceof HTMLButtonElement) return;
    else if (event.target === this.#find) this.step(event.shiftKey ? -1 : 1);
    else if (event.ctrlKey) this.#replaceAll();
    else this.#show(this.#target.replace(this.#with.value));
    event.preventDefault();
  }
}

function row(): HTMLElement {
  const made = document.createElement('div');
  made.className = 'find-row';
  return made;
}

function field(label: string): HTMLInputElement {
  const made = document.createElement('input');
  made.type = 'text';
  made.placeholder = label;
  made.setAttribute('aria-label', label);
  made.spellcheck = false;
  made.autocomplete = 'off';
  return made;
}

function plainButton(label: string, run: () => void): HTMLButtonElement {
  const made = document.createElement('button');
  made.type = 'button';
  made.title = label;
  made.setAttribute('aria-label', label);
  made.addEventListener('click', run);
  return made;
}

function button(symbol: 'chevron-up' | 'chevron-down' | 'x', label: string, run: () => void): HTMLButtonElement {
  const made = plainButton(label, run);
  made.append(icon(symbol));
  return made;
}

function textButton(label: string, run: () => void): HTMLButtonElement {
  const made = plainButton(label, run);
  made.className = 'words';
  made.textContent = label;
  return made;
}

function toggle(text: string, label: string): HTMLButtonElement {
  const made = plainButton(label, () => made.setAttribute('aria-pressed', String(!isOn(made))));
  made.textContent = text;
  made.setAttribute('aria-pressed', 'false');
  return made;
}

function isOn(button: HTMLButtonElement): boolean {
  return button.getAttribute('aria-pressed') === 'true';
}
