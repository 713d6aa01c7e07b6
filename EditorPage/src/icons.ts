/** The few drawings that the page itself needs, as strokes on a ground of 24 by 24. */
const STROKES = {
  'chevron-up': ['m18 15-6-6-6 6'],
  'chevron-down': ['m6 9 6 6 6-6'],
  x: ['M18 6 6 18', 'm6 6 12 12'],
} as const;

const SVG = 'http://www.w3.org/2000/svg';

/** A drawing in the colour of the text around it. */
export function icon(name: keyof typeof STROKES): SVGElement {
  const drawing = document.createElementNS(SVG, 'svg');
  drawing.setAttribute('viewBox', '0 0 24 24');
  drawing.setAttribute('class', 'icon');
  drawing.setAttribute('aria-hidden', 'true');
  for (const stroke of STROKES[name]) drawing.appendChild(document.createElementNS(SVG, 'path')).setAttribute('d', stroke);
  return drawing;
}
