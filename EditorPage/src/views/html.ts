/** HTML of a note, drawn from an inert, allow-listed reading of it. */
import { drawnHtml } from '../sanitise';
import type { DrawnKind } from './drawn';

export const htmlBlock: DrawnKind = {
  className: 'html-drawing',
  label: 'HTML',
  draw: (place, source) => place.replaceChildren(drawnHtml(source, document.baseURI)),
};
