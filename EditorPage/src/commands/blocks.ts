/** Commands that change what kind of block the text stands in. */
import { wrapIn } from 'prosemirror-commands';
import { Fragment, type Node, type NodeRange } from 'prosemirror-model';
import { TextSelection, type Command, type EditorState, type Transaction } from 'prosemirror-state';
import { liftTarget } from 'prosemirror-transform';
import { schema } from '../schema';
import { inlineAsText } from './inlineText';
import { liftFromLists } from './lists';
import { withSameText } from './sameText';
import { ancestorOf } from './selection';

const { paragraph, heading, blockquote, code_block: codeBlock, horizontal_rule: rule, hard_break: hardBreak, list, letter_list: letterList } = schema.nodes;

/** A block of text that a command may turn into another kind, and where it starts. */
interface TextBlock {
  node: Node;
  pos: number;
}

/** Body text. Text that is body text already leaves its list by one step. */
export const setParagraph: Command = (state, dispatch) => {
  const blocks = selectedBlocks(state);
  if (blocks.every(({ node }) => node.type === paragraph)) return liftFromLists(state, dispatch);
  return convertBlocks(state, dispatch, () => paragraph.create());
};

/** A heading of `level`. Items that can only hold body text leave their list first. */
export function setHeading(level: number): Command {
  return (state, dispatch) => convertBlocks(state, dispatch, () => heading.create({ level }));
}

/** Puts the selected blocks into a quote, or takes them out of the one they are in. */
export const toggleBlockquote: Command = (state, dispatch) => {
  const { $from, $to } = state.selection;
  const inQuote = $from.blockRange($to, (node) => node.type === blockquote);
  if (inQuote === null) return quote(state, dispatch);
  const target = liftTarget(inQuote);
  if (target === null) return false;
  dispatch?.(state.tr.lift(inQuote, target).scrollIntoView());
  return true;
};

/** Puts the selected blocks into one quote; quotes among them give what they hold. */
function quote(state: EditorState, dispatch: ((tr: Transaction) => void) | undefined): boolean {
  const { $from, $to } = state.selection;
  const range = $from.blockRange($to);
  const blocks = range?.parent.children.slice(range.startIndex, range.endIndex) ?? [];
  if (range === null || !blocks.some((block) => block.type === blockquote)) return wrapIn(blockquote)(state, dispatch);
  const content = blocks.flatMap((block) => (block.type === blockquote ? block.children : [block]));
  dispatch?.(withSameText(state, range.start, range.end, blockquote.create(null, content)));
  return true;
}

/** Makes one code block of the selected blocks, or body text of a code block. */
export const toggleCodeBlock: Command = (state, dispatch) => {
  const { $from, $to } = state.selection;
  if ($from.parent.type === codeBlock) return convertBlocks(state, dispatch, () => paragraph.create());
  const range = $from.blockRange($to);
  if (range !== null && isList(range.parent)) return itemsToCode(state, dispatch, range);
  if (range === null || !range.parent.canReplaceWith(range.startIndex, range.endIndex, codeBlock)) return false;
  const texts = selectedBlocks(state).map(({ node }) => inlineAsText(node));
  if (texts.length === 0 || !holdsOnlyText(range.parent, range.startIndex, range.endIndex)) return false;
  if (dispatch) {
    const text = texts.join('\n');
    const tr = state.tr.replaceWith(range.start, range.end, codeBlock.create(null, text === '' ? null : schema.text(text)));
    const behind = inlineAsText($to.parent.cut($to.parentOffset)).length;
    dispatch(placeCaret(tr, range.start + 1 + text.length - behind));
  }
  return true;
};

function holdsOnlyText(parent: Node, from: number, to: number): boolean {
  for (let index = from; index < to; index++) {
    if (!parent.child(index).isTextblock) return false;
  }
  return true;
}

const isList = ({ type }: Node) => type === list || type === letterList;

/** Makes one code block of the items in `range`, a line of each of their texts. The items around them stay lists. */
function itemsToCode(state: EditorState, dispatch: ((tr: Transaction) => void) | undefined, range: NodeRange): boolean {
  const { parent, startIndex, endIndex, depth, $from } = range;
  const texts: string[] = [];
  let isText = true;
  state.doc.nodesBetween(range.start, range.end, (node) => {
    if (node.isTextblock) texts.push(inlineAsText(node));
    else if (node.isLeaf || node.type.spec.tableRole) isText = false;
    return !node.isTextblock;
  });
  const text = texts.join('\n');
  const before = parent.children.slice(0, startIndex);
  const after = parent.children.slice(endIndex);
  const start = (parent.attrs.start as number) + (parent.attrs.kind === 'bullet' ? 0 : endIndex);
  const blocks = [
    ...(before.length > 0 ? [parent.copy(Fragment.from(before))] : []),
    codeBlock.create(null, text === '' ? null : schema.text(text)),
    ...(after.length > 0 ? [parent.type.create({ ...parent.attrs, start }, after)] : []),
  ];
  const index = $from.index(depth - 1);
  if (!isText || !$from.node(depth - 1).canReplace(index, index + 1, Fragment.from(blocks))) return false;
  if (dispatch) {
    const from = $from.before(depth);
    const tr = state.tr.replaceWith(from, from + parent.nodeSize, blocks);
    dispatch(placeCaret(tr, from + (before.length > 0 ? blocks[0]!.nodeSize : 0) + 1 + text.length));
  }
  return true;
}

/** Draws a rule below the caret's block, or in place of an empty one, and goes on below it. */
export const insertRule: Command = (state, dispatch) => insertBlocks(state, dispatch, [rule.create(), paragraph.create()], true);

/**
 * Puts `blocks` in place of the caret's empty paragraph, or below its block. The caret goes into the last of
 * them, or into the first when `toEnd` is false.
 */
export function insertBlocks(
  state: EditorState,
  dispatch: ((tr: Transaction) => void) | undefined,
  blocks: readonly Node[],
  toEnd: boolean,
): boolean {
  const at = placeForBlocks(state);
  const fragment = Fragment.from(blocks);
  if (!at.parent.canReplace(at.from, at.to, fragment)) return false;
  if (dispatch) {
    const tr = state.tr.replaceWith(at.start, at.end, fragment);
    const end = at.start + fragment.size;
    const caret = toEnd ? TextSelection.near(tr.doc.resolve(end), -1) : TextSelection.near(tr.doc.resolve(at.start), 1);
    dispatch(tr.setSelection(caret).scrollIntoView());
  }
  return true;
}

/** A run of children that new blocks take the place of, and where it begins and ends. */
interface BlockPlace {
  parent: Node;
  from: number;
  to: number;
  start: number;
  end: number;
}

/** The caret's empty paragraph, or the gap below its block. */
function placeForBlocks(state: EditorState): BlockPlace {
  const { $to } = state.selection;
  if (!$to.parent.isTextblock) return { parent: $to.parent, from: $to.index(), to: $to.index(), start: $to.pos, end: $to.pos };
  const parent = $to.node(-1);
  const index = $to.index(-1);
  const after = $to.after();
  const isEmpty = $to.parent.type === paragraph && $to.parent.content.size === 0;
  if (isEmpty) return { parent, from: index, to: index + 1, start: $to.before(), end: after };
  return { parent, from: index + 1, to: index + 1, start: after, end: after };
}

/** All blocks of text that the selection touches. */
export function selectedBlocks(state: EditorState): TextBlock[] {
  const blocks: TextBlock[] = [];
  for (const { $from, $to } of state.selection.ranges) {
    state.doc.nodesBetween($from.pos, $to.pos, (node, pos) => {
      if (node.isTextblock) blocks.push({ node, pos });
      return !node.isTextblock;
    });
  }
  return blocks;
}

/** Turns every selected block that may become one into the kind `make` gives, last to first so that places hold. */
function convertBlocks(state: EditorState, dispatch: ((tr: Transaction) => void) | undefined, make: () => Node): boolean {
  const wanted = make();
  const blocks = selectedBlocks(state).filter(({ node }) => node.inlineContent && !node.hasMarkup(wanted.type, wanted.attrs));
  const freed = freedFromItems(state, wanted);
  const tr = freed ?? state.tr;
  let changed = freed !== null;
  for (const { node, pos } of blocks.reverse()) {
    changed = convertBlock(tr, node, tr.mapping.map(pos), wanted) || changed;
  }
  if (changed) dispatch?.(tr.scrollIntoView());
  return changed;
}

/** The transaction that takes headings-to-be out of items that can hold only body text; null when there are none. */
function freedFromItems(state: EditorState, wanted: Node): Transaction | null {
  if (wanted.type !== heading) return null;
  const narrow = ancestorOf(state.selection.$from, (node) => node.type === schema.nodes.letter_item || holdsTask(node));
  if (narrow === null) return null;
  let lifted: Transaction | null = null;
  liftFromLists(state, (tr) => (lifted = tr));
  return lifted;
}

function holdsTask(node: Node): boolean {
  return node.type === schema.nodes.list_item && node.attrs.checked !== null;
}

function convertBlock(tr: Transaction, node: Node, pos: number, wanted: Node): boolean {
  const $pos = tr.doc.resolve(pos);
  if ($pos.nodeAfter?.type !== node.type) return false;
  if (!$pos.parent.canReplaceWith($pos.index(), $pos.index() + 1, wanted.type)) return false;
  if (wanted.type === heading) joinLines(tr, node, pos);
  tr.setNodeMarkup(pos, wanted.type, wanted.attrs);
  return true;
}

/** Puts spaces in place of a block's line breaks: headings have none. */
function joinLines(tr: Transaction, block: Node, pos: number): void {
  const space = (at: number, child: Node): void => void tr.replaceWith(at, at + 1, schema.text(' ', child.marks));
  block.forEach((child, offset) => {
    const start = pos + 1 + offset;
    if (child.type === hardBreak) space(start, child);
    for (const { index } of child.text?.matchAll(/\n/g) ?? []) space(start + index!, child);
  });
}

function placeCaret(tr: Transaction, pos: number): Transaction {
  return tr.setSelection(TextSelection.near(tr.doc.resolve(pos))).scrollIntoView();
}
