/** Commands for tables. What they leave as the first row becomes the head; see `tableShape`. */
import { Fragment, type Node } from 'prosemirror-model';
import { TextSelection, type Command, type EditorState, type Transaction } from 'prosemirror-state';
import { isInTable, selectedRect, type TableRect } from 'prosemirror-tables';
import { schema } from '../schema';
import { insertBlocks } from './blocks';

const { table: tableType, table_row: rowType, table_cell: cellType, table_header: headerType } = schema.nodes;

const NEW_TABLE_SIZE = 3;

type Dispatch = ((tr: Transaction) => void) | undefined;

/** A table of three by three with the caret in its first cell. */
export const insertTable: Command = (state, dispatch) => {
  if (isInTable(state)) return false;
  const columns = Array<null>(NEW_TABLE_SIZE).fill(null);
  const rows = Array.from({ length: NEW_TABLE_SIZE }, (_, index) => emptyRow(index === 0, columns));
  return insertBlocks(state, dispatch, [tableType.create(null, rows)], false);
};

export const addRowBefore: Command = inTable((rect, tr) => addRow(tr, rect, rect.top));
export const addRowAfter: Command = inTable((rect, tr) => addRow(tr, rect, rect.bottom));
export const addColumnBefore: Command = inTable((rect, tr) => addColumn(tr, rect, rect.left));
export const addColumnAfter: Command = inTable((rect, tr) => addColumn(tr, rect, rect.right));

/** Deletes the rows that the selection touches; the row below the head becomes the head when that goes. */
export const deleteRows: Command = inTable((rect, tr) => {
  const rows = rowsOf(rect.table);
  if (rect.bottom - rect.top === rows.length) return removeTable(tr, rect);
  tr.delete(rowPos(rect, rect.top), rowPos(rect, rect.bottom));
  const row = Math.min(rect.top, rows.length - (rect.bottom - rect.top) - 1);
  placeCaret(tr, rect, row, rect.left);
});

/** Deletes the columns that the selection touches. */
export const deleteColumns: Command = inTable((rect, tr) => {
  if (rect.right - rect.left === rect.map.width) return removeTable(tr, rect);
  for (let row = rect.map.height - 1; row >= 0; row--) {
    tr.delete(cellPos(rect, row, rect.left), cellPos(rect, row, rect.right));
  }
  placeCaret(tr, rect, rect.top, Math.min(rect.left, rect.map.width - (rect.right - rect.left) - 1));
});

/** Turns the head into an ordinary row below an empty head, and takes an empty head away again. */
export const toggleHeaderRow: Command = inTable((rect, tr) => {
  const [head, ...body] = rowsOf(rect.table);
  if (!head) return;
  const isEmpty = head.textContent === '' && !hasInlineNodes(head);
  if (!isEmpty) addRow(tr, rect, 0);
  else if (body.length > 0) tr.delete(rowPos(rect, 0), rowPos(rect, 1));
});

export const deleteTable: Command = inTable((rect, tr) => removeTable(tr, rect));

/** Enter in a cell: the cell below, in a new row when there is none. */
export const cellBelow: Command = (state, dispatch) => {
  if (!isInTable(state)) return false;
  const rect = selectedRect(state);
  if (rect.bottom < rect.map.height) {
    const target = rect.tableStart + rect.map.map[rect.bottom * rect.map.width + rect.left]!;
    dispatch?.(caretInCell(state.tr, target));
    return true;
  }
  return addRowBelow(state, dispatch, rect.left);
};

/** Tab in the last cell: a new row, with the caret in its first cell. */
export const tabPastEnd: Command = (state, dispatch) => {
  if (!isInTable(state)) return false;
  const rect = selectedRect(state);
  const isLast = rect.bottom === rect.map.height && rect.right === rect.map.width;
  return isLast && addRowBelow(state, dispatch, 0);
};

function addRowBelow(state: EditorState, dispatch: Dispatch, column: number): boolean {
  const rect = selectedRect(state);
  if (dispatch) {
    const tr = state.tr;
    addRow(tr, rect, rect.bottom);
    dispatch(caretInCell(tr, rowPos(rect, rect.bottom) + 1 + column * 2));
  }
  return true;
}

/** Puts the caret into a cell of the table that the transaction has made. */
function placeCaret(tr: Transaction, rect: TableRect, row: number, column: number): void {
  const table = tr.doc.nodeAt(rect.tableStart - 1)!;
  caretInCell(tr, cellPos({ ...rect, table }, row, column));
}

function caretInCell(tr: Transaction, cell: number): Transaction {
  return tr.setSelection(TextSelection.near(tr.doc.resolve(cell + 1))).scrollIntoView();
}

/** A command that works on the table around the selection, and does nothing outside of one. */
function inTable(change: (rect: TableRect, tr: Transaction) => void): Command {
  return (state, dispatch) => {
    if (!isInTable(state)) return false;
    const tr = state.tr;
    change(selectedRect(state), tr);
    if (!tr.docChanged) return false;
    dispatch?.(tr.scrollIntoView());
    return true;
  };
}

function addRow(tr: Transaction, rect: TableRect, at: number): void {
  tr.insert(rowPos(rect, at), emptyRow(at === 0, alignments(rect.table)));
}

function addColumn(tr: Transaction, rect: TableRect, at: number): void {
  for (let row = rect.map.height - 1; row >= 0; row--) {
    const type = row === 0 ? headerType : cellType;
    tr.insert(cellPos(rect, row, at), type.create());
  }
}

/** Takes the table away; a paragraph stays in its place where nothing else would. */
function removeTable(tr: Transaction, rect: TableRect): void {
  const pos = rect.tableStart - 1;
  const $pos = tr.doc.resolve(pos);
  const end = pos + rect.table.nodeSize;
  if ($pos.parent.childCount === 1) tr.replaceWith(pos, end, schema.nodes.paragraph.create());
  else tr.delete(pos, end);
  tr.setSelection(TextSelection.near(tr.doc.resolve(Math.min(pos, tr.doc.content.size))));
}

function emptyRow(isHead: boolean, columns: readonly (string | null)[]): Node {
  const type = isHead ? headerType : cellType;
  return rowType.create(null, Fragment.fromArray(columns.map((align) => type.create({ align }))));
}

function alignments(table: Node): (string | null)[] {
  return [...(table.firstChild?.children ?? [])].map((cell) => cell.attrs.align as string | null);
}

function rowsOf(table: Node): readonly Node[] {
  return table.children;
}

function hasInlineNodes(row: Node): boolean {
  return row.children.some((cell) => cell.childCount > 0);
}

/** Where the row `index` begins; one past the last is the table's end. */
function rowPos(rect: TableRect, index: number): number {
  const before = rowsOf(rect.table).slice(0, index);
  return rect.tableStart + before.reduce((size, row) => size + row.nodeSize, 0);
}

/** Where the cell `column` of a row begins; one past the last is the row's end. */
function cellPos(rect: TableRect, row: number, column: number): number {
  const cells = rect.table.child(row).children.slice(0, column);
  return rowPos(rect, row) + 1 + cells.reduce((size, cell) => size + cell.nodeSize, 0);
}
