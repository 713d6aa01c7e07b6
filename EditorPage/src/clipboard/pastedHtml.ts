/** Brings HTML from other programs into the form that the note's own reader expects. */
import { clipboardHtml } from '../sanitise';
import { BLOCKS, reshape } from './foreignHtml';
import { makeLists } from './wordLists';

/** The same content as safe markup with plain tags and without the white space that HTML does not show. */
export function pastedHtml(html: string): string {
  const fragment = clipboardHtml(html);
  const isOwn = isOwnCopy(html);
  for (const cell of fragment.querySelectorAll<HTMLElement>('td, th')) keepAlignment(cell, isOwn);
  if (!isOwn) {
    makeLists(fragment);
    for (const styled of [...fragment.querySelectorAll<HTMLElement>('[style]')]) styleToTags(styled);
    reshape(fragment);
    collapseBlanks(fragment);
  }
  for (const styled of fragment.querySelectorAll('[style]')) styled.removeAttribute('style');
  for (const box of fragment.querySelectorAll('input')) box.remove();
  const holder = document.implementation.createHTMLDocument('').createElement('div');
  holder.append(fragment);
  return holder.innerHTML;
}

/** Whether the HTML was copied from a note: it is exact already, down to where the selection began and ended. */
export function isOwnCopy(html: string): boolean {
  return html.includes('data-pm-slice');
}

/** To which side a cell's text is set. To the left it is anyway; only a note says that on purpose. */
function keepAlignment(cell: HTMLElement, isOwn: boolean): void {
  const side = (cell.style.textAlign || cell.getAttribute('align') || '').toLowerCase();
  if (side === 'right' || side === 'center' || (side === 'left' && isOwn)) cell.setAttribute('align', side);
  else cell.removeAttribute('align');
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
  const walker = fragment.ownerDocument.createTreeWalker(fragment, NodeFilter.SHOW_TEXT | NodeFilter.SHOW_ELEMENT);
  const nodes: (Text | Element)[] = [];
  while (walker.nextNode()) nodes.push(walker.currentNode as Text | Element);
  let endsBlank = true;
  let block: Element | null = null;
  let last: Text | null = null;
  for (const node of nodes) {
    const isPicture = node instanceof Element && node.tagName === 'IMG';
    if (!isPicture && (node instanceof Element || node.parentElement?.closest('pre'))) continue;
    const around = node.parentElement?.closest(BLOCKS) ?? null;
    if (around !== block || startsLine(node)) {
      trimEnd(last);
      endsBlank = true;
    }
    block = around;
    if (isPicture) [endsBlank, last] = [false, null];
    if (node instanceof Element) continue;
    node.data = node.data.replace(/[ \t\r\n\f]+/g, ' ');
    if (endsBlank) node.data = node.data.replace(/^ /, '');
    if (node.data === '') continue;
    endsBlank = node.data.endsWith(' ');
    last = node;
  }
  trimEnd(last);
}

/** Whether a block or a line break stands right before the node. */
function startsLine(node: Node): boolean {
  const before = node.previousSibling;
  return before instanceof Element && (before.matches(BLOCKS) || before.tagName === 'BR');
}

function trimEnd(text: Text | null): void {
  if (text !== null) text.data = text.data.replace(/ $/, '');
}
