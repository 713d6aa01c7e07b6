/** Formulas, drawn by KaTeX. It builds elements itself, so neither markup nor inline styles need to be allowed. */
import type { DrawnKind } from './drawn';
import { inlineSource } from './inlineSource';

/** Limits keep a note from strangers from filling the screen or running for ever. */
const LIMITS = { trust: false, strict: 'ignore', throwOnError: true, maxSize: 20, maxExpand: 500 } as const;

let katex: typeof import('./katex.js').default | null = null;

/** Loads KaTeX with the first formula. */
async function load(): Promise<void> {
  katex ??= (await import('./katex.js')).default;
}

/** Draws the formula; until KaTeX is there its source is shown, and `redraw` called as soon as it is. */
function draw(place: HTMLElement, source: string, displayMode: boolean, redraw: () => void): void {
  if (source.trim() === '') return;
  if (katex !== null) {
    katex.render(source, place, { ...LIMITS, displayMode });
    return;
  }
  place.textContent = source;
  load().then(redraw, console.error);
}

export const mathBlock: DrawnKind = {
  className: 'math-drawing',
  label: 'Formel',
  draw: (place, source, redraw) => draw(place, source, true, redraw),
};

export const mathInlineView = inlineSource({
  className: 'math-inline',
  label: 'Formel',
  read: (node) => node.attrs.value as string,
  write: (source) => ({ value: source }),
  draw: (place, source, _node, redraw) => draw(place, source, false, redraw),
});
