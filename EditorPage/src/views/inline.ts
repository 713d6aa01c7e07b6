/** Inline nodes that are short: links to notes, footnote marks, HTML, and source without a drawing. */
import { inlineSource } from './inlineSource';
import { wikiAttrs, wikiSource } from './media';

export const wikilinkView = inlineSource({
  className: 'wiki',
  label: 'Länk till not',
  read: wikiSource,
  write: wikiAttrs,
  draw: (place, _source, node) => {
    const { target, alias } = node.attrs as { target: string; alias: string | null };
    const link = document.createElement('a');
    link.className = 'wiki-link';
    link.setAttribute('role', 'link');
    link.dataset['wiki'] = target;
    link.title = target;
    link.textContent = alias === null || alias === '' ? target : alias;
    place.append(link);
  },
});

export const footnoteReferenceView = inlineSource({
  className: 'footnote-ref',
  label: 'Fotnot',
  read: (node) => node.attrs.label as string,
  write: (source) => ({ label: source.trim() }),
  draw: (place, source) => (place.textContent = source),
});

/** A line break written as HTML breaks the line; other tags are shown as they are written, quietly. */
export const htmlInlineView = inlineSource({
  className: 'html-inline',
  label: 'HTML',
  read: (node) => node.attrs.value as string,
  write: (source) => ({ value: source }),
  draw: (place, source) => {
    if (/^<br\s*\/?>$/i.test(source)) place.append(document.createElement('br'));
    else place.textContent = source;
  },
});

export const rawInlineView = inlineSource({
  className: 'html-inline',
  label: 'Källtext',
  read: (node) => node.attrs.source as string,
  write: (source) => ({ source }),
  draw: (place, source) => (place.textContent = source),
});
