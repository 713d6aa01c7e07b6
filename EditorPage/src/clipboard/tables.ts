/** Tables from elsewhere, brought into the one shape that a plain file can hold. */
import { Fragment, Slice, type Node } from 'prosemirror-model';
import { schema } from '../schema';

const { table, table_row: rowType, table_cell: cellType, table_header: headerType } = schema.nodes;

/** The slice with every table in it a full grid whose first row, and no other, is the head. */
export function withPlainTables(slice: Slice): Slice {
  return new Slice(mapTables(slice.content), slice.openStart, slice.openEnd);
}

/** Text whose lines all have as many tabs, as a spreadsheet puts it on the clipboard, as a table; null for other text. */
export function tableFromTabs(text: string): Node | null {
  const rows = text.replace(/\r\n?/g, '\n').replace(/\n$/, '').split('\n').map((line) => line.split('\t'));
  const width = rows[0]!.length;
  // Code begins its lines with tabs; a range has something in its first column.
  const isRange = rows.length > 1 && width > 1 && rows.every((row) => row.length === width && row[0] !== '');
  if (!isRange) return null;
  const made = rows.map((row, index) => {
    const type = index === 0 ? headerType : cellType;
    return rowType.create(null, row.map((words) => type.create(null, words.trim() === '' ? null : schema.text(words.trim()))));
  });
  return table.create(null, made);
}

function mapTables(content: Fragment): Fragment {
  const mapped = content.content.map((node) => {
    if (node.type === table) return plainTable(node);
    return node.isTextblock || node.isLeaf ? node : node.copy(mapTables(node.content));
  });
  return Fragment.fromArray(mapped);
}

function plainTable(node: Node): Node {
  const width = Math.max(...node.children.map(rowWidth));
  return node.copy(Fragment.fromArray(node.children.map((row, index) => plainRow(row, index === 0, width))));
}

function rowWidth(row: Node): number {
  return row.children.reduce((sum, cell) => sum + (cell.attrs.colspan as number), 0);
}

function plainRow(row: Node, isHead: boolean, width: number): Node {
  const type = isHead ? headerType : cellType;
  const cells: Node[] = [];
  for (const cell of row.children) {
    cells.push(type.create({ align: cell.attrs.align }, cell.content));
    for (let extra = 1; extra < cell.attrs.colspan; extra++) cells.push(type.create());
  }
  while (cells.length < width) cells.push(type.create());
  return rowType.create(null, cells);
}
