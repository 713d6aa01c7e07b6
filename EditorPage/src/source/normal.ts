import { Fragment, Mark, type MarkType, type Node } from 'prosemirror-model';
import { schema } from '../schema';
import { letterLabel } from '../syntax/letters';

const { nodes, marks } = schema;

/** Blocks whose text is their source, whatever it then turns out to be. */
export const isSource = ({ type }: Node) => type === nodes.html_block || type === nodes.definition || type === nodes.raw_block;

/** Marks that Markdown writes with delimiters, which cannot stand beside blanks. */
export const delimited: readonly MarkType[] = [marks.em, marks.strong, marks.strike, marks.highlight];

const tidied = new WeakMap<Node, Node>();
const compared = new WeakMap<Node, Node>();

/**
 * The node without what Markdown cannot say and nobody sees: blanks at the ends of lines, marks on blanks that the
 * text on both sides does not share, empty paragraphs in containers that hold something else.
 */
export function tidy(node: Node): Node {
  return remembered(tidied, node, () => {
    if (node.isTextblock) return node.type.spec.code ? node : withContent(node, tidyInline(node.content));
    return node.isLeaf ? node : withContent(node, withoutEmpty(node, mapChildren(node, tidy)));
  });
}

/** The tidy node with everything the same that is only a way of writing, such as which kind of reference a link is. */
function comparable(node: Node): Node {
  return remembered(compared, node, () => {
    const clean = tidy(node);
    if (clean.type === nodes.definition) return withoutIndents(clean);
    if (isLoneLetter(clean)) return comparable(tidy(asLine(clean)));
    if (clean.isTextblock) return withoutLastLineEnds(mapMarks(clean, samePlainLink));
    return clean.isLeaf ? clean : withContent(clean, mapChildren(clean, comparable));
  });
}

/** Whether a node is a letter list that is only begun: a file has at least two letters in a list, and a line with one is a line. */
export const isLoneLetter = (node: Node) => node.type === nodes.letter_list && node.childCount === 1;

function asLine(list: Node): Node {
  const label = schema.text(`${letterLabel(list.attrs.start)}. `);
  return nodes.paragraph.create(null, Fragment.from(label).append(list.firstChild!.firstChild!.content));
}

/** Whether two blocks say the same. */
export function isSame(a: Node, b: Node): boolean {
  return a === b || a.eq(b) || comparable(a).eq(comparable(b));
}

/** The node with links of all kinds in one form, for finding where two nodes differ: no offset changes. */
export const withPlainLinks = (node: Node) => mapMarks(node, samePlainLink);

/** Whether two blocks say the same but for links that Markdown makes of addresses by itself. */
export function isSameButLinks(a: Node, b: Node): boolean {
  const plain = (node: Node) => comparable(mapMarks(tidy(node), (mark) => (mark.attrs.auto ? null : mark)));
  return plain(a).eq(plain(b));
}

export const isEmptyParagraph = (node: Node) => node.type === nodes.paragraph && node.content.size === 0;

/** Whether nothing of the node can be written. */
export const isBlank = (node: Node) => node.type === nodes.paragraph && tidy(node).content.size === 0;

function remembered(memory: WeakMap<Node, Node>, node: Node, make: () => Node): Node {
  const known = memory.get(node);
  if (known) return known;
  const made = make();
  memory.set(node, made);
  return made;
}

function withContent(node: Node, content: Fragment): Node {
  return content.eq(node.content) ? node : node.type.create(node.attrs, content, node.marks);
}

function mapChildren(node: Node, change: (child: Node) => Node): Fragment {
  let hasChanged = false;
  const children = node.children.map((child) => {
    const next = change(child);
    hasChanged ||= next !== child;
    return next;
  });
  return hasChanged ? Fragment.fromArray(children) : node.content;
}

/** A list below an item's text in which nothing is written yet. */
const isBlankList = (node: Node) => node.type === nodes.list && node.children.every(isBlankItem);
const isBlankItem = ({ attrs, childCount, firstChild }: Node) =>
  attrs.checked === null && childCount === 1 && isEmptyParagraph(firstChild!);

/** Empty paragraphs have no place in a container beside other blocks, and empty lists none below an item's text. */
function withoutEmpty(node: Node, content: Fragment): Fragment {
  const holdsBlocks =
    node.type.inlineContent === false && node.firstChild?.isBlock && !node.firstChild.type.spec.tableRole;
  if (!holdsBlocks || content.childCount < 2) return content;
  const isTask = node.type === nodes.list_item && node.attrs.checked !== null;
  const kept: Node[] = [];
  content.forEach((child, _offset, index) => {
    if (node.type === nodes.list_item && index > 0 && isBlankList(child)) return;
    if (!isEmptyParagraph(child) || (isTask && index === 0)) kept.push(child);
  });
  if (kept.length === content.childCount) return content;
  return Fragment.fromArray(kept.length > 0 ? kept : [content.firstChild!]);
}

function tidyInline(content: Fragment): Fragment {
  return joined(trimLines(settleBlanks(content)));
}

const isCode = (node: Node) => node.marks.some((mark) => mark.type === marks.code);
const isDelimited = (mark: Mark) => delimited.includes(mark.type);

/** Takes the delimited marks off blanks at the edges of what they mark. */
function settleBlanks(content: Fragment): Node[] {
  const parts: Node[] = [];
  content.forEach((node) => parts.push(...splitBlanks(node)));
  const isSpace = (node: Node) =>
    (node.isText && !isCode(node) && /^\s+$/.test(node.text!)) || node.type === nodes.hard_break;
  return parts.map((node, index) => {
    if (!isSpace(node) || !node.marks.some(isDelimited)) return node;
    let before = index - 1;
    while (before >= 0 && isSpace(parts[before]!)) before -= 1;
    let after = index + 1;
    while (after < parts.length && isSpace(parts[after]!)) after += 1;
    const holds = (mark: Mark) => [before, after].every((at) => parts[at] && mark.isInSet(parts[at]!.marks));
    return node.mark(node.marks.filter((mark) => !isDelimited(mark) || holds(mark)));
  });
}

/** Marked text in parts that are all blank or have no blank at their ends. */
function splitBlanks(node: Node): Node[] {
  if (!node.isText || isCode(node) || !node.marks.some(isDelimited)) return [node];
  const [, before, middle, after] = /^(\s*)(.*?)(\s*)$/s.exec(node.text!)!;
  if (!before && !after) return [node];
  return [before, middle, after].filter(Boolean).map((text) => schema.text(text!, node.marks));
}

/** Drops blanks at the ends of the block and around its line ends. */
function trimLines(parts: Node[]): Node[] {
  const result: Node[] = [];
  const endsLine = (node: Node | undefined) =>
    !node || node.type === nodes.hard_break || /\n$/.test(node.isText ? node.text! : '');
  for (const node of parts) {
    if (!node.isText || isCode(node)) {
      if (node.type === nodes.hard_break) trimEnd(result);
      if (node.type !== nodes.hard_break || result.length > 0) result.push(node);
      continue;
    }
    let text = node.text!.replace(/[ \t]*\n[ \t]*/g, '\n');
    if (text.startsWith('\n')) trimEnd(result);
    if (endsLine(result.at(-1))) text = text.replace(result.length === 0 ? /^[ \t\n]+/ : /^[ \t]+/, '');
    if (text) result.push(text === node.text ? node : schema.text(text, node.marks));
  }
  trimEnd(result, true);
  return result;
}

/** Drops blanks at the end of the parts, and with `isLast` the line ends too. */
function trimEnd(parts: Node[], isLast = false) {
  for (let last = parts.at(-1); last; last = parts.at(-1)) {
    if (isLast && last.type === nodes.hard_break) {
      parts.pop();
      continue;
    }
    if (!last.isText || isCode(last)) return;
    const text = last.text!.replace(isLast ? /[ \t\n]+$/ : /[ \t]+$/, '');
    if (text === last.text) return;
    parts.pop();
    if (text) parts.push(schema.text(text, last.marks));
  }
}

/** Neighbouring text with the same marks as one node. */
function joined(parts: readonly Node[]): Fragment {
  const result: Node[] = [];
  for (const node of parts) {
    const last = result.at(-1);
    if (last?.isText && node.isText && last.sameMarkup(node)) {
      result[result.length - 1] = schema.text(last.text! + node.text!, last.marks);
    } else {
      result.push(node);
    }
  }
  return Fragment.fromArray(result);
}

function mapMarks(node: Node, change: (mark: Mark) => Mark | null): Node {
  if (node.isText) return node.mark(changedMarks(node.marks, change));
  if (node.isInline) {
    const attrs = node.attrs.reference ? { ...node.attrs, reference: 'full' } : node.attrs;
    return node.type.create(attrs, null, changedMarks(node.marks, change));
  }
  if (node.isLeaf || node.type.spec.code) return node;
  const content = mapChildren(node, (child) => mapMarks(child, change));
  if (content === node.content) return node;
  return node.type.create(node.attrs, node.isTextblock ? joined(content.content) : content);
}

function changedMarks(set: readonly Mark[], change: (mark: Mark) => Mark | null): readonly Mark[] {
  const next = set.flatMap((mark) => change(mark) ?? []);
  return Mark.sameSet(set, next) ? set : next;
}

/** HTML that nothing closes takes in the line ends behind it. */
function withoutLastLineEnds(node: Node): Node {
  if (node.type !== nodes.html_block) return node;
  const text = node.textContent;
  const trimmed = text.trimEnd();
  return text === trimmed || trimmed === '' ? node : node.copy(Fragment.from(schema.text(trimmed)));
}

/** The blanks that a definition's lines begin with are not shown. */
function withoutIndents(node: Node): Node {
  const text = node.textContent.replace(/(^|\n)[ \t]+/g, '$1');
  return text === node.textContent || text === '' ? node : node.copy(Fragment.from(schema.text(text)));
}

function samePlainLink(mark: Mark): Mark {
  const { auto, reference } = mark.attrs;
  if (mark.type !== marks.link || (!auto && (!reference || reference === 'full'))) return mark;
  return mark.type.create({ ...mark.attrs, auto: false, reference: reference ? 'full' : null });
}
