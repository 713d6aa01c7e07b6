/** Brings structures of HTML from elsewhere into shapes that a plain note has. */

/** Elements that stand on lines of their own. */
export const BLOCKS = 'address,blockquote,caption,dd,div,dl,dt,figcaption,figure,h1,h2,h3,h4,h5,h6,hr,li,ol,p,pre,section,summary,table,tbody,td,tfoot,th,thead,tr,ul';

/** Has of all of `fragment` only what a note can hold. */
export function reshape(fragment: DocumentFragment): void {
  markTasks(fragment);
  nameLanguages(fragment);
  for (const summary of fragment.querySelectorAll('summary')) becomeParagraph(summary);
  for (const caption of fragment.querySelectorAll('caption')) liftCaption(caption);
  for (const table of fragment.querySelectorAll('table')) unwrapSingleCell(table);
  for (const cell of fragment.querySelectorAll('td, th')) becomeOneLine(cell);
}

/** An item that begins with a check box is a task. */
function markTasks(fragment: DocumentFragment): void {
  for (const box of fragment.querySelectorAll('input')) {
    const item = box.closest('li');
    const isFirst = item !== null && item.querySelector('input') === box;
    if (isFirst && box.type === 'checkbox') item.dataset['checked'] = String(box.hasAttribute('checked'));
  }
}

/** Code whose class says its language keeps that. */
function nameLanguages(fragment: DocumentFragment): void {
  for (const code of fragment.querySelectorAll('pre > code[class]')) {
    const language = /(?:^|\s)lang(?:uage)?-([\w+#.-]+)/.exec(code.className)?.[1];
    if (language) code.parentElement!.dataset['lang'] = language;
  }
}

function becomeParagraph(element: Element): void {
  const paragraph = element.ownerDocument.createElement('p');
  paragraph.append(...element.childNodes);
  element.replaceWith(paragraph);
}

function liftCaption(caption: Element): void {
  caption.closest('table')?.before(caption);
  becomeParagraph(caption);
}

/** A single cell of a spreadsheet, or a box around text, is no table. */
function unwrapSingleCell(table: Element): void {
  const cells = table.querySelectorAll('td, th');
  if (cells.length !== 1) return;
  const box = table.ownerDocument.createElement('div');
  box.append(...cells[0]!.childNodes);
  table.replaceWith(box);
}

/** A cell of a note's table has one line: paragraphs and lists in it follow each other. */
function becomeOneLine(cell: Element): void {
  for (const inner of [...cell.querySelectorAll(`br,${BLOCKS}`)].reverse()) inner.replaceWith(' ', ...inner.childNodes, ' ');
}
