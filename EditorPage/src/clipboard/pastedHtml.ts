/** Brings HTML from other programs into the form that the note's own reader expects. */
import { clipboardHtml } from '../sanitise';

const BLOCKS = 'address,blockquote,dd,div,dl,dt,figcaption,figure,h1,h2,h3,h4,h5,h6,hr,li,ol,p,pre,section,table,tbody,td,tfoot,th,thead,tr,ul';

/** The same content as safe markup with plain tags and without the white space that HTML does not show. */
export function pastedHtml(html: string): string {
  const fragment = clipboardHtml(html);
  if (!isOwnCopy(html)) {
    for (const styled of [...fragment.querySelectorAll<HTMLElement>('[style]')]) styleToTags(styled);
    collapseBlanks(fragment);
  }
  for (const styled of fragment.querySelectorAll('[style]')) styled.removeAttribute('style');
  const holder = document.implementation.createHTMLDocument('').createElement('div');
  holder.append(fragment);
  return holder.innerHTML;
}

/** Whether the HTML was copied from a note: it is exact already, down to where the selection began and ended. */
export function isOwnCopy(html: string): boolean {
  return html.includes('data-pm-slice');
}

/** Says with tags what office programs and web editors say with styles; bold tags that are not bold go. */
function styleToTags(element: HTMLElement): void {
  const style = declarations(element.getAttribute('style') ?? '');
  const weight = style.get('font-weight') ?? '';
  const isBold = weight === 'bold' || weight === 'bolder' || Number.parseInt(weight, 10) >= 600;
  const isBoldTag = /^(?:b|strong)$/i.test(element.tagName);
  if (isBoldTag && weight !== '' && !isBold) {
    element.replaceWith(...element.childNodes);
    return;
  }
  if (element.matches(BLOCKS)) return;
  if (isBold && !isBoldTag) wrapContent(element, 'strong');
  if (style.get('font-style') === 'italic') wrapContent(element, 'em');
  if ((style.get('text-decoration') ?? style.get('text-decoration-line') ?? '').includes('line-through')) wrapContent(element, 's');
}

function declarations(style: string): Map<string, string> {
  const pairs = style.split(';').map((part) => part.split(':', 2).map((word) => word.trim().toLowerCase()));
  return new Map(pairs.filter((pair) => pair.length === 2) as [string, string][]);
}

function wrapContent(element: HTMLElement, tag: string): void {
  const wrapper = element.ownerDocument.createElement(tag);
  wrapper.append(...element.childNodes);
  element.append(wrapper);
}

/** Blanks in a row are one to HTML, and none at the edges of a block; the note keeps every blank it is given. */
function collapseBlanks(fragment: DocumentFragment): void {
  const walker = fragment.ownerDocument.createTreeWalker(fragment, NodeFilter.SHOW_TEXT);
  const texts: Text[] = [];
  while (walker.nextNode()) texts.push(walker.currentNode as Text);
  let endsBlank = true;
  let block: Element | null = null;
  let last: Text | null = null;
  for (const text of texts) {
    if (text.parentElement?.closest('pre')) continue;
    const around = text.parentElement?.closest(BLOCKS) ?? null;
    if (around !== block || startsLine(text)) {
      trimEnd(last);
      endsBlank = true;
    }
    block = around;
    text.data = text.data.replace(/[ \t\r\n\f]+/g, ' ');
    if (endsBlank) text.data = text.data.replace(/^ /, '');
    if (text.data === '') continue;
    endsBlank = text.data.endsWith(' ');
    last = text;
  }
  trimEnd(last);
}

/** Whether a block or a line break stands right before the text. */
function startsLine(text: Text): boolean {
  const before = text.previousSibling;
  return before instanceof Element && (before.matches(BLOCKS) || before.tagName === 'BR');
}

function trimEnd(text: Text | null): void {
  if (text !== null) text.data = text.data.replace(/ $/, '');
}
