import { Schema, type Attrs, type DOMOutputSpec, type MarkSpec, type Node, type NodeSpec } from 'prosemirror-model';

/** How a list numbers its items. Letter lists are nodes of their own: their items can hold one paragraph only. */
export type ListKind = 'bullet' | 'ordered';

/** A column's alignment as the table's delimiter row writes it. */
export type CellAlign = 'left' | 'center' | 'right' | null;

/** How a link or picture names a definition: `[text][label]`, `[label][]` or `[label]`. */
export type ReferenceKind = 'full' | 'collapsed' | 'shortcut';

const integer = (value: string | null, fallback: number) => {
  const number = Number.parseInt(value ?? '', 10);
  return Number.isNaN(number) ? fallback : number;
};

/** So many columns or rows a pasted cell may reach over. */
const LONGEST_SPAN = 100;
const span = (value: string | null) => Math.min(Math.max(integer(value, 1), 1), LONGEST_SPAN);

/** A block whose text is source code or Markdown source, shown and edited as it is written. */
function sourceBlock(className: string, more: Partial<NodeSpec> = {}): NodeSpec {
  return {
    group: 'block',
    content: 'text*',
    marks: '',
    code: true,
    defining: true,
    toDOM: () => ['pre', { class: className }, ['code', 0]],
    parseDOM: [{ tag: `pre.${className}`, preserveWhitespace: 'full' }],
    ...more,
  };
}

/** An inline node without text of its own, drawn by `content`. */
function inlineAtom(className: string, attrs: Record<string, unknown>, content: (attrs: Attrs) => string): NodeSpec {
  const names = Object.keys(attrs);
  const toDOM = (node: Node): DOMOutputSpec => {
    const data = Object.fromEntries(
      names.filter((name) => node.attrs[name] !== null).map((name) => [`data-${name}`, String(node.attrs[name])]),
    );
    return ['span', { class: className, ...data }, content(node.attrs)];
  };
  const getAttrs = (dom: HTMLElement) =>
    Object.fromEntries(names.map((name) => [name, dom.getAttribute(`data-${name}`) ?? attrs[name] ?? '']));
  return {
    group: 'inline phrasing',
    inline: true,
    atom: true,
    attrs: Object.fromEntries(names.map((name) => [name, attrs[name] === undefined ? {} : { default: attrs[name] }])),
    toDOM,
    parseDOM: [{ tag: `span.${className}`, getAttrs }],
  };
}

function cell(tag: 'td' | 'th', tableRole: string): NodeSpec {
  const getAttrs = (dom: HTMLElement) => ({
    colspan: span(dom.getAttribute('colspan')),
    rowspan: span(dom.getAttribute('rowspan')),
    align: dom.getAttribute('align') || dom.style.textAlign || null,
  });
  return {
    content: 'phrasing*',
    tableRole,
    isolating: true,
    attrs: { align: { default: null }, colspan: { default: 1 }, rowspan: { default: 1 }, colwidth: { default: null } },
    toDOM: (node) => [tag, node.attrs.align ? { style: `text-align: ${node.attrs.align}` } : {}, 0],
    parseDOM: [{ tag, getAttrs }],
  };
}

const nodes = {
  doc: { content: 'front_matter? (block | folded)+' },

  // White space counts in paragraphs and headings: a line break inside them is one of the file's, and must come
  // back from the screen as it went there.
  paragraph: {
    group: 'block',
    content: 'inline*',
    whitespace: 'pre',
    toDOM: () => ['p', 0],
    parseDOM: [{ tag: 'p' }],
  },
  heading: {
    group: 'block',
    content: 'phrasing*',
    whitespace: 'pre',
    attrs: { level: { default: 1 } },
    defining: true,
    toDOM: (node) => [`h${node.attrs.level}`, 0],
    parseDOM: [1, 2, 3, 4, 5, 6].map((level) => ({ tag: `h${level}`, attrs: { level } })),
  },
  blockquote: {
    group: 'block',
    content: 'block+',
    defining: true,
    toDOM: () => ['blockquote', 0],
    parseDOM: [{ tag: 'blockquote' }],
  },
  list: {
    group: 'block list',
    content: 'list_item+',
    attrs: { kind: { default: 'bullet' }, start: { default: 1 } },
    toDOM: (node) => (node.attrs.kind === 'ordered' ? ['ol', { start: node.attrs.start }, 0] : ['ul', 0]),
    parseDOM: [
      { tag: 'ul', attrs: { kind: 'bullet', start: 1 } },
      { tag: 'ol', getAttrs: (dom) => ({ kind: 'ordered', start: integer(dom.getAttribute('start'), 1) }) },
    ],
  },
  /** `checked` is null for a plain item; a task item's first block is a paragraph. */
  list_item: {
    content: 'block+',
    attrs: { checked: { default: null } },
    defining: true,
    toDOM: (node) => ['li', node.attrs.checked === null ? {} : { 'data-checked': String(node.attrs.checked) }, 0],
    parseDOM: [
      {
        tag: 'li',
        getAttrs: (dom) => {
          const checked = dom.getAttribute('data-checked');
          return { checked: checked === null ? null : checked === 'true' };
        },
      },
    ],
  },
  /** Plain lines "A. one", "B. two"; `start` is the number of the first letter. */
  letter_list: {
    group: 'block list',
    content: 'letter_item+',
    attrs: { start: { default: 1 } },
    toDOM: (node) => ['ol', { type: 'A', class: 'letters', start: node.attrs.start }, 0],
    parseDOM: [
      { tag: 'ol[type=A]', priority: 60, getAttrs: (dom) => ({ start: integer(dom.getAttribute('start'), 1) }) },
    ],
  },
  letter_item: {
    content: 'paragraph',
    defining: true,
    toDOM: () => ['li', { class: 'letter' }, 0],
    parseDOM: [{ tag: 'li', context: 'letter_list/' }],
  },
  code_block: {
    ...sourceBlock('code'),
    attrs: { lang: { default: null }, meta: { default: null } },
    toDOM: (node) => ['pre', node.attrs.lang ? { 'data-lang': node.attrs.lang } : {}, ['code', 0]],
    parseDOM: [
      {
        tag: 'pre',
        priority: 40,
        preserveWhitespace: 'full',
        getAttrs: (dom) => ({ lang: dom.getAttribute('data-lang'), meta: null }),
      },
    ],
  },
  math_block: { ...sourceBlock('math'), attrs: { meta: { default: null } } },
  /** The text is the HTML itself. */
  html_block: sourceBlock('html'),
  /** The text is the whole definition: `[label]: address "title"`. */
  definition: sourceBlock('definition'),
  /** Something this program has no shape for: the text is its Markdown source. */
  raw_block: sourceBlock('raw'),
  /** The text is what stands between the fences. Only ever the first block of a note. */
  front_matter: { ...sourceBlock('front-matter', { group: '' }), attrs: { format: { default: 'yaml' } } },
  footnote_definition: {
    group: 'block',
    content: 'block+',
    defining: true,
    attrs: { label: { default: '1' } },
    toDOM: (node) => ['div', { class: 'footnote', 'data-label': node.attrs.label }, 0],
    parseDOM: [{ tag: 'div.footnote', getAttrs: (dom) => ({ label: dom.getAttribute('data-label') ?? '1' }) }],
  },
  /** Blocks that are not read yet, or no longer: the note's bytes from the first of them to the last. Only in the note itself. */
  folded: {
    atom: true,
    selectable: false,
    attrs: { source: {} },
    toDOM: (node) => ['pre', { class: 'folded' }, node.attrs.source],
  },
  horizontal_rule: { group: 'block', toDOM: () => ['hr'], parseDOM: [{ tag: 'hr' }] },

  /** The first row's cells are `table_header`; their `align` holds for the column, the other cells repeat it. */
  table: {
    group: 'block',
    content: 'table_row+',
    tableRole: 'table',
    isolating: true,
    toDOM: () => ['table', ['tbody', 0]],
    parseDOM: [{ tag: 'table' }],
  },
  table_row: {
    content: '(table_cell | table_header)+',
    tableRole: 'row',
    toDOM: () => ['tr', 0],
    parseDOM: [{ tag: 'tr' }],
  },
  table_cell: cell('td', 'cell'),
  table_header: cell('th', 'header_cell'),

  text: { group: 'inline phrasing' },
  image: {
    group: 'inline phrasing',
    inline: true,
    draggable: true,
    attrs: {
      src: { default: '' },
      alt: { default: '' },
      title: { default: null },
      reference: { default: null },
      label: { default: null },
    },
    toDOM: (node) => ['img', { src: node.attrs.src, alt: node.attrs.alt, title: node.attrs.title }],
    parseDOM: [
      {
        tag: 'img[src]',
        getAttrs: (dom) => ({
          src: dom.getAttribute('src') ?? '',
          alt: dom.getAttribute('alt') ?? '',
          title: dom.getAttribute('title'),
        }),
      },
    ],
  },
  /** Not in headings and table cells: Markdown has no line break there. */
  hard_break: {
    group: 'inline',
    inline: true,
    selectable: false,
    toDOM: () => ['br'],
    parseDOM: [{ tag: 'br' }],
  },
  html_inline: inlineAtom('html-inline', { value: undefined }, (attrs) => attrs.value),
  footnote_reference: inlineAtom('footnote-reference', { label: undefined }, (attrs) => attrs.label),
  math_inline: inlineAtom('math-inline', { value: undefined }, (attrs) => attrs.value),
  wikilink: inlineAtom('wikilink', { target: undefined, alias: null }, (attrs) => attrs.alias ?? attrs.target),
  embed: inlineAtom('embed', { target: undefined, alias: null }, (attrs) => attrs.target),
  /** Something inline that this program has no shape for, as Markdown source. */
  raw_inline: inlineAtom('raw-inline', { source: undefined }, (attrs) => attrs.source),
} satisfies Record<string, NodeSpec>;

const marks = {
  /**
   * `auto`: the text is the address itself, found by its look or written between angle brackets.
   * `reference` and `label`: the address stands in the definition of that label, and `href` is empty.
   */
  link: {
    attrs: {
      href: { default: '' },
      title: { default: null },
      auto: { default: false },
      reference: { default: null },
      label: { default: null },
    },
    inclusive: false,
    toDOM: (mark) => ['a', { href: mark.attrs.href, title: mark.attrs.title }, 0],
    parseDOM: [
      {
        tag: 'a[href]',
        getAttrs: (dom) => ({ href: dom.getAttribute('href') ?? '', title: dom.getAttribute('title') }),
      },
    ],
  },
  em: { toDOM: () => ['em', 0], parseDOM: [{ tag: 'em' }, { tag: 'i' }, { style: 'font-style=italic' }] },
  strong: { toDOM: () => ['strong', 0], parseDOM: [{ tag: 'strong' }, { tag: 'b' }, { style: 'font-weight=bold' }] },
  strike: {
    toDOM: () => ['s', 0],
    parseDOM: [{ tag: 's' }, { tag: 'del' }, { tag: 'strike' }, { style: 'text-decoration=line-through' }],
  },
  highlight: { toDOM: () => ['mark', 0], parseDOM: [{ tag: 'mark' }] },
  code: { code: true, toDOM: () => ['code', 0], parseDOM: [{ tag: 'code' }] },
} satisfies Record<string, MarkSpec>;

/** The shape of every note that the page shows. */
export const schema = new Schema<keyof typeof nodes, keyof typeof marks>({ nodes, marks });
