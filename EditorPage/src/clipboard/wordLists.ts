/** Lists as word processors put them on the clipboard: paragraphs that say their level in a style, with the marker as text. */

/** A list that is being made, and its level. */
interface Open {
  level: number;
  list: Element;
}

/** Makes lists of such paragraphs. */
export function makeLists(fragment: DocumentFragment): void {
  const open: Open[] = [];
  for (const paragraph of fragment.querySelectorAll<HTMLElement>('p[style*="mso-list"]')) {
    const level = Number(/mso-list:[^;]*\blevel(\d)/i.exec(paragraph.getAttribute('style')!)?.[1] ?? 0);
    if (level > 0) makeItem(paragraph, level, open);
  }
}

function makeItem(paragraph: HTMLElement, level: number, open: Open[]): void {
  const marker = takeMarker(paragraph);
  const tag = /^\(?[\p{L}\d]{1,4}[.)]/u.test(marker) ? 'OL' : 'UL';
  if (paragraph.previousElementSibling !== open[0]?.list) open.length = 0;
  while (open.length > 0 && (open.at(-1)!.level > level || (open.at(-1)!.level === level && open.at(-1)!.list.tagName !== tag))) open.pop();
  if (open.at(-1)?.level !== level) open.push({ level, list: newList(paragraph, tag, marker, open.at(-1)) });
  const item = paragraph.ownerDocument.createElement('li');
  item.append(...paragraph.childNodes);
  open.at(-1)!.list.append(item);
  paragraph.remove();
}

/** An empty list in the last item of the one around it, or where the paragraph stands. */
function newList(paragraph: HTMLElement, tag: string, marker: string, around: Open | undefined): Element {
  const list = paragraph.ownerDocument.createElement(tag);
  const first = /\d+/.exec(marker)?.[0];
  if (tag === 'OL' && first !== undefined) list.setAttribute('start', first);
  if (around) around.list.lastElementChild!.append(list);
  else paragraph.before(list);
  return list;
}

/** The marker's text, which the list will draw itself. */
function takeMarker(paragraph: HTMLElement): string {
  const marker = paragraph.querySelector('[style*="mso-list"]');
  marker?.remove();
  return marker?.textContent?.trim() ?? '';
}
