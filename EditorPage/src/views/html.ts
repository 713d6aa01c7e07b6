/** HTML of a note, drawn from an inert, allow-listed reading of it. */
import { drawnHtml } from '../sanitise';
import { drawnBlock } from './drawn';

export const htmlBlockView = drawnBlock({
  className: 'html-drawing',
  label: 'HTML',
  draw: (place, source) => place.replaceChildren(drawnHtml(source, document.baseURI)),
});
