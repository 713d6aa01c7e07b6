/** The inert, allow-listed reading of HTML that stands in a note. */
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
  RETURN_DOM_FRAGMENT: true,
} as const;

/** HTML of a note as nodes to show: links become inert marks for the click rules, pictures only the bucket's own. */
export function drawnHtml(html: string, base: string): DocumentFragment {
  const fragment = DOMPurify.sanitize(html, POLICY);
  for (const link of fragment.querySelectorAll('a')) makeLinkInert(link);
  for (const image of fragment.querySelectorAll('img')) restrictImage(image, base);
  for (const other of fragment.querySelectorAll('[src]:not(img), [href]')) {
    other.removeAttribute('src');
    other.removeAttribute('href');
  }
  return fragment;
}

/**
 * HTML of the clipboard as inert nodes to read into the note. Nothing of it is drawn, so it may keep the styles,
 * classes, data and check boxes that say what the text means.
 */
export function clipboardHtml(html: string): DocumentFragment {
  const attributes = [...ALLOWED_ATTRIBUTES, 'checked', 'class', 'style', 'type'];
  const tags = [...ALLOWED_TAGS, 'input'];
  return DOMPurify.sanitize(html, { ...POLICY, ALLOWED_TAGS: tags, ALLOWED_ATTR: attributes, ALLOW_DATA_ATTR: true });
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
