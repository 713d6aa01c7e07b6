/** What Enter does beyond starting a new block. */
import { lift } from 'prosemirror-commands';
import { TextSelection, type Command, type EditorState, type Transaction } from 'prosemirror-state';
import type { Node, NodeType, ResolvedPos } from 'prosemirror-model';
import { isInTable, selectedRect } from 'prosemirror-tables';
import { schema } from '../schema';

const { nodes } = schema;

/** A line break in the block; table cells write it as HTML, and headings have none. */
export const lineBreak: Command = (state, dispatch) => {
  const { $from } = state.selection;
  if ($from.parent.type.spec.code) return false;
  const node = isInTable(state) ? nodes.html_inline.create({ value: '<br>' }) : nodes.hard_break.create();
  if (!$from.parent.canReplaceWith($from.index(), $from.index(), node.type)) return true;
  dispatch?.(state.tr.replaceSelectionWith(node).scrollIntoView());
  return true;
};

/** After two dollars: a formula. */
export const openFormula: Command = (state, dispatch) => {
  const $end = endOfParagraph(state);
  if (!$end || $end.parent.textContent !== '$$' || !mayBecome($end, nodes.math_block)) return false;
  dispatch?.(replaceBlock(state, $end, nodes.math_block.create(), 1));
  return true;
};

/** After three backticks and perhaps a language: a code block. */
export const openCodeBlock: Command = (state, dispatch) => {
  const $end = endOfParagraph(state);
  const fence = $end && /^```([\w+#.-]*)$/.exec($end.parent.textContent);
  if (!$end || !fence || !mayBecome($end, nodes.code_block)) return false;
  dispatch?.(replaceBlock(state, $end, nodes.code_block.create({ lang: fence[1] || null }), 1));
  return true;
};

/** After a line of names between bars: a table with that head. */
export const openTable: Command = (state, dispatch) => {
  const $end = endOfParagraph(state);
  if (!$end || !mayBecome($end, nodes.table)) return false;
  const isPlainText = $end.parent.childCount === 1 && $end.parent.firstChild?.marks.length === 0;
  const line = $end.parent.textContent.trim();
  if (!isPlainText || !/^\|(?:[^|\n]+\|){2,}$/.test(line)) return false;
  const names = line.slice(1, -1).split('|').map((name) => name.trim());
  const head = names.map((name) => nodes.table_header.create(null, name === '' ? null : schema.text(name)));
  const headRow = nodes.table_row.create(null, head);
  const firstRow = nodes.table_row.create(null, names.map(() => nodes.table_cell.create()));
  dispatch?.(replaceBlock(state, $end, nodes.table.create(null, [headRow, firstRow]), headRow.nodeSize + 3));
  return true;
};

/** On an empty line of a quote: out of it. */
export const leaveQuote: Command = (state, dispatch) => {
  const { $from, empty } = state.selection;
  const isEmptyLine = empty && $from.parent.type === nodes.paragraph && $from.parent.content.size === 0;
  return isEmptyLine && $from.node(-1).type === nodes.blockquote && lift(state, dispatch);
};

/** After three stars or underscores: a rule. */
export const openRule: Command = (state, dispatch) => {
  const $end = endOfParagraph(state);
  const isLine = $end && /^(?:\*\*\*|___)$/.test($end.parent.textContent);
  if (!$end || !isLine || !mayBecome($end, nodes.horizontal_rule)) return false;
  const tr = state.tr.replaceWith($end.before(), $end.after(), nodes.horizontal_rule.create());
  dispatch?.(withParagraph(tr, $end.before() + 1));
  return true;
};

/** Right after three dashes have become a rule: the caret stands below it already. */
export const afterRule: Command = (state) => {
  const { $from, empty } = state.selection;
  const rules = state.plugins.find(({ spec }) => spec['isInputRules']);
  const isEmptyLine = empty && $from.parent.type === nodes.paragraph && $from.parent.content.size === 0;
  const isFresh = isEmptyLine && rules?.getState(state) != null;
  return isFresh && state.doc.resolve($from.before()).nodeBefore?.type === nodes.horizontal_rule;
};

/** On a second empty last line of code, or one that would close code or a formula in a file: out of the block, without these lines. */
export const leaveCodeBlock: Command = (state, dispatch) => {
  const { $from, empty } = state.selection;
  const isAtEnd = $from.parentOffset === $from.parent.content.size;
  const length = empty && isAtEnd ? closingLength($from.parent) : 0;
  const $after = length > 0 ? state.doc.resolve($from.after()) : null;
  if (!$after?.parent.canReplaceWith($after.index(), $after.index(), nodes.paragraph)) return false;
  dispatch?.(withParagraph(state.tr.delete($from.pos - length, $from.pos), $after.pos - length));
  return true;
};

/** So many characters at the end of code or a formula ask for its end. */
function closingLength({ type, textContent }: Node): number {
  if (type !== nodes.code_block && type !== nodes.math_block) return 0;
  if (type === nodes.code_block && textContent.endsWith('\n\n')) return 2;
  const fence = type === nodes.code_block ? '```' : '$$';
  const lines = textContent.split('\n');
  // Code about Markdown has fences of its own.
  const fences = lines.filter((line) => line.startsWith(fence)).length;
  return lines.at(-1) === fence && fences % 2 === 1 ? Math.min(textContent.length, fence.length + 1) : 0;
}

/** The caret, when it stands at the end of a paragraph. */
function endOfParagraph(state: EditorState): ResolvedPos | null {
  const { $from, empty } = state.selection;
  const isAtEnd = $from.parent.type === nodes.paragraph && $from.parentOffset === $from.parent.content.size;
  return empty && isAtEnd ? $from : null;
}

function mayBecome($pos: ResolvedPos, type: NodeType): boolean {
  return $pos.node(-1).canReplaceWith($pos.index(-1), $pos.indexAfter(-1), type);
}

/** Puts `node` in place of the caret's block, with the caret `offset` into it. */
function replaceBlock(state: EditorState, $pos: ResolvedPos, node: Node, offset: number) {
  const tr = state.tr.replaceWith($pos.before(), $pos.after(), node);
  return tr.setSelection(TextSelection.near(tr.doc.resolve($pos.before() + offset))).scrollIntoView();
}

/** On an empty last row below others: out of the table, without the row. */
export const leaveTable: Command = (state, dispatch) => {
  if (!isInTable(state) || !state.selection.empty) return false;
  const { table, tableStart, map, bottom } = selectedRect(state);
  const last = table.lastChild!;
  const isEmpty = last.textContent === '' && !last.content.content.some((cell) => cell.childCount > 0);
  if (bottom < map.height || map.height < 3 || !isEmpty) return false;
  const end = tableStart + table.content.size;
  const tr = state.tr.delete(end - last.nodeSize, end);
  dispatch?.(withParagraph(tr, end - last.nodeSize + 1));
  return true;
};

/** Arrow down at the end of a note that ends in code or a table: a paragraph below it. */
export const belowLast: Command = (state, dispatch, view) => {
  const { $from, empty } = state.selection;
  if (!empty || $from.index(0) < state.doc.childCount - 1) return false;
  const isAtEnd =
    $from.parent.type === nodes.code_block
      ? $from.depth === 1 && $from.parentOffset === $from.parent.content.size
      : $from.node(1).type === nodes.table && $from.index(1) === $from.node(1).childCount - 1 && view?.endOfTextblock('down');
  if (!isAtEnd) return false;
  dispatch?.(withParagraph(state.tr, state.doc.content.size));
  return true;
};

/**
 * An empty paragraph at `pos`, with the caret in it. No file can hold one at the end of an item or a quote: there it is a new
 * item, or stands below the quote.
 */
function withParagraph(tr: Transaction, pos: number): Transaction {
  const $pos = tr.doc.resolve(pos);
  const holder = $pos.parent;
  const isAtEnd = $pos.depth > 0 && $pos.index() === holder.childCount;
  const isItem = holder.type === nodes.list_item;
  const paragraph = nodes.paragraph.create();
  const item = holder.attrs['checked'] === true ? { ...holder.attrs, checked: false } : holder.attrs;
  const at = !isAtEnd ? pos : isItem ? $pos.after() : $pos.after(1);
  tr.insert(at, isAtEnd && isItem ? holder.type.create(item, paragraph) : paragraph);
  return tr.setSelection(TextSelection.near(tr.doc.resolve(at + 1))).scrollIntoView();
}
