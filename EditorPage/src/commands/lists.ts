/** Making, changing and leaving lists. */
import { joinTextblockBackward, joinTextblockForward } from 'prosemirror-commands';
import { Fragment, type Node, type NodeRange, type ResolvedPos } from 'prosemirror-model';
import { liftListItem, sinkListItem, splitListItem, wrapInList } from 'prosemirror-schema-list';
import { liftTarget } from 'prosemirror-transform';
import type { Command, EditorState, Transaction } from 'prosemirror-state';
import { schema } from '../schema';
import { withSameText } from './sameText';
import { ancestorOf, isList } from './selection';

const { list: listType, list_item: itemType, letter_list: letterList, letter_item: letterItem, paragraph } = schema.nodes;

/** The kinds of list that a reader can ask for. */
export type ListChoice = 'bullet' | 'ordered' | 'letter' | 'task';

type Dispatch = ((tr: Transaction) => void) | undefined;

interface FoundList {
  node: Node;
  pos: number;
  depth: number;
}

/** Makes a list of the wanted kind out of the selected blocks or list; takes them out when it is that already. */
export function toggleList(choice: ListChoice): Command {
  return (state, dispatch) => {
    const mixed = mixedRange(state, choice);
    if (mixed !== null) return gather(state, dispatch, mixed, choice);
    const found = listAround(state.selection.$from);
    if (found === null) return wrap(state, dispatch, choice);
    if (choiceOf(found.node, state) === choice) return liftFromLists(state, dispatch);
    return convert(state, dispatch, found, choice);
  };
}

/** The selected blocks, where they are several and lists are among them; null when those are lists of the wanted kind already. */
function mixedRange({ selection: { $from, $to } }: EditorState, choice: ListChoice): NodeRange | null {
  const range = $from.blockRange($to);
  if (range === null || isList(range.parent) || range.endIndex - range.startIndex < 2) return null;
  const blocks = range.parent.children.slice(range.startIndex, range.endIndex);
  return blocks.some(isList) && !blocks.every((block) => isList(block) && plainChoice(block) === choice) ? range : null;
}

const plainChoice = (list: Node): ListChoice => (list.type === letterList ? 'letter' : (list.attrs.kind as 'bullet' | 'ordered'));

/** Makes one list of several blocks: lists give their items, and each other block becomes one. */
function gather(state: EditorState, dispatch: Dispatch, range: NodeRange, choice: ListChoice): boolean {
  const blocks = range.parent.children.slice(range.startIndex, range.endIndex);
  const contents = blocks.flatMap((block) => (isList(block) ? block.children : [block]));
  const items = contents.map((block) => (choice === 'letter' ? asLetter(block) : asItem(block, choice)));
  if (items.some((item) => item === null)) return false;
  const kind = choice === 'ordered' ? 'ordered' : 'bullet';
  const made = choice === 'letter' ? letterList.create(null, items as Node[]) : listType.create({ kind }, items as Node[]);
  if (!range.parent.canReplaceWith(range.startIndex, range.endIndex, made.type)) return false;
  dispatch?.(withSameText(state, range.start, range.end, made));
  return true;
}

function asLetter(block: Node): Node | null {
  if (block.type === letterItem) return block;
  const only = block.type === itemType && block.childCount === 1 ? block.firstChild! : block;
  return only.type === paragraph ? letterItem.create(null, only) : null;
}

function asItem(block: Node, choice: ListChoice): Node {
  const isItem = block.type === itemType || block.type === letterItem;
  const content = isItem ? block.content : Fragment.from(block);
  const mayBeTask = choice === 'task' && content.firstChild?.type === paragraph;
  return itemType.create({ checked: mayBeTask ? ((block.attrs['checked'] as boolean | null | undefined) ?? false) : null }, content);
}

/** The nearest list around a place. */
function listAround($pos: ResolvedPos): FoundList | null {
  const found = ancestorOf($pos, isList);
  return found && { ...found, pos: $pos.before(found.depth) };
}

/** What kind a list is to the reader: one with a checked or unchecked item at the caret is a task list. */
function choiceOf(list: Node, state: EditorState): ListChoice {
  if (list.type === letterList) return 'letter';
  const item = ancestorOf(state.selection.$from, (node) => node.type === itemType)?.node;
  if (item && item.attrs.checked !== null) return 'task';
  return list.attrs.kind as 'bullet' | 'ordered';
}

function wrap(state: EditorState, dispatch: Dispatch, choice: ListChoice): boolean {
  if (choice === 'letter') return wrapInLetters(state, dispatch);
  const attrs = { kind: choice === 'ordered' ? 'ordered' : 'bullet', start: 1 };
  return wrapInList(listType, attrs)(state, dispatch && ((tr) => {
    if (choice === 'task') setTasks(tr, itemsTouched(tr.doc, tr.selection.from, tr.selection.to), false);
    const { $from, $to } = tr.selection;
    const found = listAround($from);
    if (found !== null && $from.sharedDepth($to.pos) >= found.depth) joinLists(tr, found.pos, found.pos + found.node.nodeSize);
    dispatch(tr.scrollIntoView());
  }));
}

/** Joins lists of one kind that stand right beside each other at one of the places. */
function joinLists(tr: Transaction, ...places: number[]): void {
  for (const pos of places.sort((a, b) => b - a)) {
    const { nodeBefore, nodeAfter } = tr.doc.resolve(pos);
    const isOne = nodeBefore?.type === listType && nodeAfter?.type === listType && nodeBefore.attrs.kind === nodeAfter.attrs.kind;
    if (isOne) tr.join(pos);
  }
}

function wrapInLetters(state: EditorState, dispatch: Dispatch): boolean {
  const range = state.selection.$from.blockRange(state.selection.$to);
  if (range === null || !allParagraphs(range)) return false;
  if (!range.parent.canReplaceWith(range.startIndex, range.endIndex, letterList)) return false;
  if (dispatch) {
    const items: Node[] = [];
    for (let index = range.startIndex; index < range.endIndex; index++) items.push(letterItem.create(null, range.parent.child(index)));
    dispatch(withSameText(state, range.start, range.end, letterList.create(null, items)));
  }
  return true;
}

function allParagraphs(range: NodeRange): boolean {
  for (let index = range.startIndex; index < range.endIndex; index++) {
    if (range.parent.child(index).type !== paragraph) return false;
  }
  return true;
}

/** Changes the kind of a whole list; only for tasks, and only when several items are selected, just those. */
function convert(state: EditorState, dispatch: Dispatch, found: FoundList, choice: ListChoice): boolean {
  if (choice === 'letter') return convertToLetters(state, dispatch, found);
  const kind = choice === 'ordered' ? 'ordered' : 'bullet';
  if (found.node.type === letterList) {
    const checked = choice === 'task' ? false : null;
    const items = found.node.children.map((item) => itemType.create({ checked }, item.content));
    dispatch?.(withSameText(state, found.pos, found.pos + found.node.nodeSize, listType.create({ kind }, items)));
    return true;
  }
  const items = itemsToConvert(state, found);
  if (choice === 'task' && !items.every(({ node }) => node.firstChild?.type === paragraph)) return false;
  if (dispatch) {
    const tr = state.tr;
    if (choice !== 'task') tr.setNodeMarkup(found.pos, undefined, { ...found.node.attrs, kind });
    setTasks(tr, items, choice === 'task' ? false : null);
    dispatch(tr);
  }
  return true;
}

function convertToLetters(state: EditorState, dispatch: Dispatch, found: FoundList): boolean {
  const items = found.node.children;
  if (!items.every((item) => item.childCount === 1 && item.firstChild?.type === paragraph)) return false;
  const $list = state.doc.resolve(found.pos);
  if (!$list.parent.canReplaceWith($list.index(), $list.index() + 1, letterList)) return false;
  const letters = letterList.create(null, items.map((item) => letterItem.create(null, item.content)));
  dispatch?.(withSameText(state, found.pos, found.pos + found.node.nodeSize, letters));
  return true;
}

function itemsToConvert(state: EditorState, found: FoundList): { node: Node; pos: number }[] {
  const { from, to } = state.selection;
  const touched = itemsTouched(state.doc, from, to).filter(({ pos }) => state.doc.resolve(pos).parent === found.node);
  if (touched.length > 1) return touched;
  const all: { node: Node; pos: number }[] = [];
  found.node.forEach((node, offset) => all.push({ node, pos: found.pos + 1 + offset }));
  return all;
}

/** The list items whose own first line the range touches. */
function itemsTouched(doc: Node, from: number, to: number): { node: Node; pos: number }[] {
  const items: { node: Node; pos: number }[] = [];
  doc.nodesBetween(from, to, (node, pos) => {
    const line = node.firstChild;
    if (node.type === itemType && line && from <= pos + 1 + line.nodeSize && to > pos + 1) items.push({ node, pos });
    return true;
  });
  return items;
}

/** Gives items a task box, checked or not, or takes it away; an item that starts with something else stays plain. */
function setTasks(tr: Transaction, items: readonly { node: Node; pos: number }[], checked: boolean | null): void {
  for (const { node, pos } of items) {
    const holdsBox = checked !== null && node.attrs.checked !== null;
    if (holdsBox || node.attrs.checked === checked) continue;
    if (checked !== null && node.firstChild?.type !== paragraph) continue;
    tr.setNodeMarkup(pos, undefined, { ...node.attrs, checked });
  }
}

/** Takes the selected items one level out of their list. */
export const liftFromLists: Command = (state, dispatch) => {
  const found = listAround(state.selection.$from);
  if (found === null) return false;
  return found.node.type === letterList ? liftLetters(state, dispatch) : liftListItem(itemType)(state, dispatch);
};

const liftLetters: Command = (state, dispatch) => {
  const { $from, $to } = state.selection;
  const range = $from.blockRange($to, (node) => node.type === letterList);
  if (range === null) return false;
  const tr = state.tr;
  for (let index = range.endIndex - 1; index >= range.startIndex; index--) {
    const paragraphStart = tr.mapping.map($from.posAtIndex(index, range.depth)) + 1;
    const each = tr.doc.resolve(paragraphStart + 1).blockRange();
    const target = each && liftTarget(each);
    if (each && target !== null) tr.lift(each, target);
  }
  if (!tr.docChanged) return false;
  dispatch?.(tr.scrollIntoView());
  return true;
};

/** Enter in an item: a new item after it, unchecked if it is a task. */
export const splitItem: Command = (state, dispatch) => {
  const split: Command = (current, send) => splitListItem(itemType)(current, send && ((tr) => send(uncheckedAtCaret(tr))));
  return split(state, dispatch) || splitLetter(state, dispatch);
};

const splitLetter: Command = (state, dispatch) => {
  if (state.selection.$from.parent.content.size === 0) return false;
  return splitListItem(letterItem)(state, dispatch);
};

function uncheckedAtCaret(tr: Transaction): Transaction {
  const { $from } = tr.selection;
  const found = ancestorOf($from, (node) => node.type === itemType);
  if (found && found.node.attrs.checked === true) tr.setNodeMarkup($from.before(found.depth), undefined, { checked: false });
  return tr;
}

/** Moves items one level in; a list that this makes is of the same kind as the one around it. */
export const sinkItem: Command = (state, dispatch) =>
  sinkListItem(itemType)(state, dispatch && ((tr) => {
    const inner = listAround(tr.selection.$from);
    const outer = inner && listAround(tr.doc.resolve(inner.pos));
    const fresh = inner && inner.node.childCount === tr.selection.$to.index(inner.depth) - tr.selection.$from.index(inner.depth) + 1;
    if (inner && outer && fresh) tr.setNodeMarkup(inner.pos, undefined, { ...outer.node.attrs, start: 1 });
    dispatch(tr);
  }));

/** Shift+Tab: one level out. */
export const liftItem: Command = liftFromLists;

/** Backspace before an item's text: first the task box goes, then the item leaves its list. */
export const backspaceInItem: Command = (state, dispatch) => {
  const { $from, empty } = state.selection;
  if (!empty || $from.parentOffset > 0) return false;
  const item = ancestorOf($from, (node) => node.type === itemType || node.type === letterItem);
  if (item === null || item.depth !== $from.depth - 1 || $from.index(item.depth) > 0) return false;
  if (item.node.attrs.checked === null || item.node.type === letterItem) return liftFromLists(state, dispatch);
  dispatch?.(state.tr.setNodeMarkup($from.before(item.depth), undefined, { checked: null }));
  return true;
};

/** Backspace at the start of text right below a list: the text goes on in the list's last line, and not into an item of its own. */
export const backspaceBelowList: Command = (state, dispatch, view) => {
  const { $from, empty } = state.selection;
  const isStart = empty && $from.depth > 0 && $from.parentOffset === 0;
  if (!isStart || !isListBeside(state, $from.before(), 'nodeBefore')) return false;
  return joinTextblockBackward(state, dispatch && ((tr) => dispatch(joinedBehindCaret(tr))), view);
};

/** Delete at the end of an item, or of text right above a list: the next line goes on here. */
export const deleteBesideItem: Command = (state, dispatch, view) => {
  const { $from, empty } = state.selection;
  const isEnd = empty && $from.parent.inlineContent && $from.parentOffset === $from.parent.content.size;
  if (!isEnd || (listAround($from) === null && !isListBeside(state, $from.after(), 'nodeAfter'))) return false;
  return joinTextblockForward(state, dispatch && ((tr) => dispatch(joinedBehindCaret(tr))), view);
};

function isListBeside({ doc }: EditorState, pos: number, side: 'nodeBefore' | 'nodeAfter'): boolean {
  const node = doc.resolve(pos)[side];
  return node !== null && isList(node);
}

/** What stood between two lists has gone into the first of them: they are one. */
function joinedBehindCaret(tr: Transaction): Transaction {
  const { $from } = tr.selection;
  for (let depth = $from.depth; depth > 0; depth--) {
    if ($from.node(depth).type === listType) joinLists(tr, $from.after(depth));
  }
  return tr;
}

/** Checks or unchecks the task at the caret. */
export const toggleTask: Command = (state, dispatch) => {
  const { $from } = state.selection;
  const item = ancestorOf($from, (node) => node.type === itemType);
  if (item === null || item.node.attrs.checked === null) return false;
  dispatch?.(state.tr.setNodeMarkup($from.before(item.depth), undefined, { checked: !item.node.attrs.checked }));
  return true;
};
