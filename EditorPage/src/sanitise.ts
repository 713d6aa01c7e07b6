/** The inert, allow-listed reading of HTML that stands in a note or comes from the clipboard. */
import DOMPurify from 'dompurify';
import { imageSource, mayOpen } from './addresses';

/** Elements that only structure or style text. No script, style, form, frame, media, SVG or MathML. */
export const ALLOWED_TAGS: string[] = [
  ...'a abbr b bdi bdo blockquote br caption cite code col colgroup dd del details dfn div dl dt em'.split(' '),
  ...'figcaption figure h1 h2 h3 h4 h5 h6 hr i img ins kbd li mark ol p pre q rp rt ruby s samp section'.split(' '),
  ...'small span strike strong sub summary sup table tbody td tfoot th thead time tr tt u ul var wbr'.split(' '),
];

/** Attributes that carry text or structure; none of them styles, names or runs anything. */
export const ALLOWED_ATTRIBUTES: string[] = [
  ...'align alt colspan datetime dir height href lang open reversed rowspan scope src start title width'.split(' '),
];

const POLICY = {
  ALLOWED_TAGS,
  ALLOWED_ATTR: ALLOWED_ATTRIBUTES,
  ALLOW_DATA_ATTR: false,
  ALLOW_ARIA_ATTR: false,
  ALLOW_UNKNOWN_PROTOCOLS: false,
  SANITIZE_DOM: true,
};

/** HTML of a note as nodes to show: links become inert marks for the click rules, pictures only the bucket's own. */
export function drawnHtml(html: string, base: string): DocumentFragment {
  const fragment = DOMPurify.sanitize(html, { ...POLICY, RETURN_DOM_FRAGMENT: true });
  for (const link of fragment.querySelectorAll('a')) makeLinkInert(link);
  for (const image of fragment.querySelectorAll('img')) restrictImage(image, base);
  for (const item of fragment.querySelectorAll('[src]:not(img), [href]')) {
    item.removeAttribute('src');
    item.removeAttribute('href');
  }
  return fragment;
}

/** HTML of the clipboard as markup that is safe to read into the note. Addresses stay as they are: nothing is drawn from them here. */
export function pastedHtml(html: string): string {
  return DOMPurify.sanitize(html, POLICY);
}

function makeLinkInert(link: HTMLAnchorElement): void {
  const href = link.getAttribute('href');
  link.removeAttribute('href');
  if (href === null || !mayOpen(href)) return;
  link.dataset['href'] = href;
  link.setAttribute('role', 'link');
}

function restrictImage(image: HTMLImageElement, base: string): void {
  const source = imageSource(image.getAttribute('src') ?? '', base);
  if (source.kind === 'bucket' || source.kind === 'data') {
    image.src = source.src;
    return;
  }
  const note = image.ownerDocument.createElement('span');
  note.className = 'picture-note';
  note.textContent = image.alt || 'Bild';
  image.replaceWith(note);
}
