/** Formulas, drawn by KaTeX. It builds elements itself, so neither markup nor inline styles need to be allowed. */
import katex from 'katex';
import type { DrawnKind } from './drawn';
import { inlineSource } from './inlineSource';

/** Limits keep a note from strangers from filling the screen or running for ever. */
const LIMITS = { trust: false, strict: 'ignore', throwOnError: true, maxSize: 20, maxExpand: 500 } as const;

function draw(place: HTMLElement, source: string, displayMode: boolean): void {
  if (source.trim() !== '') katex.render(source, place, { ...LIMITS, displayMode });
}

export const mathBlock: DrawnKind = {
  className: 'math-drawing',
  label: 'Formel',
  draw: (place, source) => draw(place, source, true),
};

export const mathInlineView = inlineSource({
  className: 'math-inline',
  label: 'Formel',
  read: (node) => node.attrs.value as string,
  write: (source) => ({ value: source }),
  draw: (place, source) => draw(place, source, false),
});
