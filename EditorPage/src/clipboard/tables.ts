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
  const rows = rowsOf(text.replace(/\r\n?/g, '\n').replace(/\n$/, ''));
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

/** The cells of each line. One that has line ends or tabs in it stands between quotes, in which two stand for one. */
function rowsOf(text: string): string[][] {
  const rows: string[][] = [[]];
  for (const [, quoted, plain = '', end] of text.matchAll(/(?:"((?:[^"]|"")*)"(?=[\t\n]|$)|([^\t\n]*))(\t|\n|$)/g)) {
    const isWrapped = quoted !== undefined && /[\t\n]/.test(quoted);
    rows.at(-1)!.push(isWrapped ? quoted.replaceAll('""', '"').replace(/\s+/g, ' ') : quoted === undefined ? plain : `"${quoted}"`);
    if (end === '\n') rows.push([]);
    if (end === '') break;
  }
  return rows;
}

function mapTables(content: Fragment): Fragment {
  const mapped = content.content.map((node) => {
    if (node.type === table) return plainTable(node);
    return node.isTextblock || node.isLeaf ? node : node.copy(mapTables(node.content));
  });
  return Fragment.fromArray(mapped);
}

function plainTable(node: Node): Node {
  const rows = gridOf(node);
  const width = Math.max(...rows.map((row) => row.length));
  const aligns = Array.from({ length: width }, (_, column) => columnAlign(rows.map((row) => row[column])));
  return node.copy(Fragment.fromArray(rows.map((row, index) => plainRow(row, index === 0, aligns))));
}

/** A file sets whole columns to a side: as most cells below the head are. */
function columnAlign([head, ...body]: readonly (Node | undefined)[]): string | null {
  const sides = body.filter((cell) => cell !== undefined).map((cell) => cell.attrs.align as string | null);
  const most = sides.find((side) => 2 * sides.filter((other) => other === side).length > sides.length);
  return most === undefined ? (head?.attrs.align ?? null) : most;
}

/** The cells of each row where they stand; nothing where another one reaches over several columns or rows. */
function gridOf(table: Node): (Node | undefined)[][] {
  const grid: (Node | undefined)[][] = table.children.map(() => []);
  const taken = new Set<string>();
  table.children.forEach((row, top) => {
    let left = 0;
    for (const cell of row.children) {
      while (taken.has(`${top} ${left}`)) left += 1;
      grid[top]![left] = cell;
      const { colspan, rowspan } = cell.attrs as { colspan: number; rowspan: number };
      for (let down = 0; down < Math.min(rowspan, table.childCount - top); down++) {
        for (let right = 0; right < colspan; right++) taken.add(`${top + down} ${left + right}`);
        grid[top + down]!.length = Math.max(grid[top + down]!.length, left + colspan);
      }
    }
  });
  return grid;
}

function plainRow(row: readonly (Node | undefined)[], isHead: boolean, aligns: readonly (string | null)[]): Node {
  const type = isHead ? headerType : cellType;
  return rowType.create(null, aligns.map((align, column) => type.create({ align }, row[column]?.content)));
}
