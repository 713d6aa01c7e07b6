import type { BlockContent, Html, Link, ListItem, Nodes, PhrasingContent, RootContent, TableRow } from 'mdast';
import type { Fragment, Mark, Node } from 'prosemirror-model';
import { schema } from '../schema';
import type { LetterList } from './handlers';

const { nodes, marks } = schema;

/** Source that stands for a node as it is, where it is known. Without markers of the containers around it. */
export type Verbatim = (node: Node) => string | null;

/** What a tree is made with. */
export interface TreeOptions {
  verbatim?: Verbatim | undefined;
  /** Whether addresses that are links by themselves stand between angle brackets. */
  angled?: boolean | undefined;
}

const raw = (value: string): Html => ({ type: 'html', value });

/** An inline node with the marks that are still to be written around it. */
interface Marked {
  node: Node;
  marks: readonly Mark[];
}

/** The parser's tree for the content of a text block. */
export function inlineTree(content: Fragment, options: TreeOptions = {}): PhrasingContent[] {
  const items: Marked[] = [];
  content.forEach((node) => items.push({ node, marks: node.marks }));
  return nested(items, options);
}

/** Puts around every stretch the mark that reaches furthest, then goes on inside. Code is always innermost. */
function nested(items: readonly Marked[], options: TreeOptions): PhrasingContent[] {
  const result: PhrasingContent[] = [];
  for (let index = 0; index < items.length;) {
    const open = items[index]!.marks.filter((mark) => mark.type !== marks.code);
    if (open.length === 0) {
      result.push(leaf(items[index]!));
      index += 1;
      continue;
    }
    const [mark, end] = furthest(open, items, index);
    const inner = items.slice(index, end).map((item) => ({ ...item, marks: mark.removeFromSet(item.marks) }));
    result.push(wrapped(mark, nested(inner, options), options));
    index = end;
  }
  return result;
}

function furthest(candidates: readonly Mark[], items: readonly Marked[], from: number): [Mark, number] {
  let best: [Mark, number] = [candidates[0]!, from];
  for (const mark of candidates) {
    let end = from;
    while (end < items.length && mark.isInSet(items[end]!.marks)) end += 1;
    if (end > best[1]) best = [mark, end];
  }
  return best;
}

function wrapped(mark: Mark, children: PhrasingContent[], options: TreeOptions): PhrasingContent {
  switch (mark.type) {
    case marks.em:
      return { type: 'emphasis', children };
    case marks.strong:
      return { type: 'strong', children };
    case marks.strike:
      return { type: 'delete', children };
    case marks.highlight:
      return { type: 'highlight', children };
    default:
      return link(mark, children as Link['children'], options);
  }
}

function link({ attrs }: Mark, children: Link['children'], { angled }: TreeOptions): PhrasingContent {
  if (attrs.reference) {
    return {
      type: 'linkReference',
      referenceType: attrs.reference,
      identifier: attrs.label,
      label: attrs.label,
      children,
    };
  }
  const only = children.length === 1 && children[0]!.type === 'text' ? children[0]!.value : null;
  const isAddress = only !== null && /^(https?:\/\/|www\.)[^\s<]*$/i.test(only);
  if (attrs.auto && isAddress) return raw(angled && /^http/i.test(only) ? `<${only}>` : only);
  return { type: 'link', url: attrs.href, title: attrs.title, children };
}

function leaf({ node, marks: rest }: Marked): PhrasingContent {
  const { attrs } = node;
  switch (node.type) {
    case nodes.text:
      return rest.length > 0 ? { type: 'inlineCode', value: node.text! } : { type: 'text', value: node.text! };
    case nodes.hard_break:
      return { type: 'break' };
    case nodes.image:
      if (!attrs.reference) return { type: 'image', url: attrs.src, alt: attrs.alt, title: attrs.title };
      return {
        type: 'imageReference',
        referenceType: attrs.reference,
        identifier: attrs.label,
        label: attrs.label,
        alt: attrs.alt,
      };
    case nodes.footnote_reference:
      return { type: 'footnoteReference', identifier: attrs.label, label: attrs.label };
    case nodes.math_inline:
      return { type: 'mathInline', value: attrs.value };
    case nodes.wikilink:
    case nodes.embed:
      return {
        type: 'wikilink',
        value: '',
        isEmbed: node.type === nodes.embed,
        target: attrs.target,
        alias: attrs.alias,
      };
    case nodes.html_inline:
      return raw(attrs.value);
    default:
      return raw(attrs.source);
  }
}

const isEmptyParagraph = (node: Node) => node.type === nodes.paragraph && node.content.size === 0;

const knownSource = ({ verbatim }: TreeOptions, node: Node) => verbatim?.(node) ?? null;

/** The parser's tree for a block. */
export function blockTree(node: Node, options: TreeOptions = {}): RootContent {
  const known = knownSource(options, node);
  if (known !== null) return { type: 'verbatim', value: known };
  const { attrs } = node;
  switch (node.type) {
    case nodes.paragraph:
      return { type: 'paragraph', children: inlineTree(node.content, options) };
    case nodes.heading:
      return { type: 'heading', depth: attrs.level, children: inlineTree(node.content, options) };
    case nodes.blockquote:
      return { type: 'blockquote', children: childTrees(node, options) };
    case nodes.footnote_definition:
      return {
        type: 'footnoteDefinition',
        identifier: attrs.label,
        label: attrs.label,
        children: childTrees(node, options),
      };
    case nodes.list:
      return listTree(node, options);
    case nodes.letter_list:
      return { type: 'letterList', start: attrs.start, children: letterItems(node, options) };
    case nodes.table:
      return tableTree(node, options);
    case nodes.horizontal_rule:
      return { type: 'thematicBreak' };
    default:
      return sourceTree(node);
  }
}

function sourceTree(node: Node): RootContent {
  const value = node.textContent;
  switch (node.type) {
    case nodes.code_block:
      return { type: 'code', lang: node.attrs.lang, meta: node.attrs.meta, value };
    case nodes.math_block:
      return { type: 'math', meta: node.attrs.meta, value };
    case nodes.folded:
      return raw(node.attrs.source);
    case nodes.front_matter:
      return { type: node.attrs.format, value } as RootContent;
    default:
      return raw(value);
  }
}

function childTrees(node: Node, options: TreeOptions): BlockContent[] {
  if (node.childCount === 1 && isEmptyParagraph(node.firstChild!)) return [];
  return node.children.map((child) => blockTree(child, options) as BlockContent);
}

function listTree(node: Node, options: TreeOptions): RootContent {
  const children = node.children.map((item) => itemTree(item, options));
  const isOrdered = node.attrs.kind === 'ordered';
  const spread = children.some((item) => item.spread);
  return { type: 'list', ordered: isOrdered, start: isOrdered ? node.attrs.start : null, spread, children };
}

/** An item's children stand close together when they are a paragraph and the lists below it. */
function itemTree(item: Node, options: TreeOptions): ListItem {
  const isClose = item.children.every((child, index) => index === 0 || child.type === nodes.list);
  const { checked } = item.attrs;
  const first = item.firstChild!;
  if (checked === null || !isEmptyParagraph(first)) {
    return { type: 'listItem', checked, spread: !isClose, children: childTrees(item, options) };
  }
  // An empty task: the box alone, which the parser would take for text.
  const box: BlockContent = { type: 'paragraph', children: [raw(checked ? '[x]' : '[ ]')] };
  const rest = item.children.slice(1).map((child) => blockTree(child, options) as BlockContent);
  return { type: 'listItem', checked: null, spread: !isClose, children: [box, ...rest] };
}

function letterItems(node: Node, options: TreeOptions): LetterList['children'] {
  return node.children.map((item) => {
    const paragraph = item.firstChild!;
    const known = knownSource(options, paragraph);
    return { type: 'paragraph', children: known === null ? inlineTree(paragraph.content, options) : [raw(known)] };
  });
}

function tableTree(node: Node, options: TreeOptions): Nodes & RootContent {
  const align = node.firstChild!.children.map((cell) => cell.attrs.align);
  const children = node.children.map((row): TableRow => {
    const cells = row.children.map((cell) => {
      const known = knownSource(options, cell);
      return {
        type: 'tableCell' as const,
        children: known === null ? inlineTree(cell.content, options) : [raw(known)],
      };
    });
    return { type: 'tableRow', children: cells };
  });
  return { type: 'table', align, children };
}
