import { Fragment, type Node } from 'prosemirror-model';
import { schema } from '../schema';

const { nodes, marks } = schema;

/**
 * The node without what Markdown has no way to write although the document allows it: a box on an item that does not
 * begin with a paragraph, line ends in a table cell, a table whose first row is no header. The same node when there
 * is nothing of the kind.
 */
export function adjusted(node: Node): Node {
  if (fine.has(node)) return node;
  const next = adjust(node);
  fine.add(next);
  return next;
}

/** Nodes with nothing to adjust. */
const fine = new WeakSet<Node>();

function adjust(node: Node): Node {
  if (node.isTextblock) return node.type.spec.code ? node : withoutStrayCode(oneLine(node));
  if (node.isLeaf) return node;
  switch (node.type) {
    case nodes.table:
      return adjustedTable(node);
    case nodes.list_item:
      return adjustedItem(withChildren(node, node.children.map(adjusted)));
    case nodes.letter_item:
      return withChildren(
        node,
        node.children.map((child) => spaced(adjusted(child))),
      );
    default:
      return withChildren(node, node.children.map(adjusted));
  }
}

function withChildren(node: Node, children: readonly Node[]): Node {
  const isSame = children.length === node.childCount && children.every((child, index) => child === node.child(index));
  return isSame ? node : node.copy(Fragment.fromArray([...children]));
}

function adjustedItem(item: Node): Node {
  const isBoxAllowed = item.attrs.checked === null || item.firstChild!.type === nodes.paragraph;
  return isBoxAllowed ? item : item.type.create({ ...item.attrs, checked: null }, item.content);
}

/** Headings below the second level, and cells, are written on one line. */
function oneLine(node: Node): Node {
  const isCell = node.type === nodes.table_cell || node.type === nodes.table_header;
  return isCell || (node.type === nodes.heading && node.attrs.level > 2) ? spaced(node) : node;
}

/** Line ends of the text as spaces. */
function spaced(node: Node): Node {
  const children = node.children.map((child) =>
    child.isText && child.text!.includes('\n') ? schema.text(child.text!.replace(/ *\n */g, ' '), child.marks) : child,
  );
  return withChildren(node, children);
}

/** Only text can be code. */
function withoutStrayCode(node: Node): Node {
  const children = node.children.map((child) =>
    child.isText || !marks.code.isInSet(child.marks) ? child : child.mark(marks.code.removeFromSet(child.marks)),
  );
  return withChildren(node, children);
}

const widthOf = (row: Node) => row.children.reduce((sum, cell) => sum + (cell.attrs.colspan as number), 0);

function adjustedTable(table: Node): Node {
  const width = Math.max(...table.children.map(widthOf));
  const aligns = cellsOf(table.firstChild!, nodes.table_header, width).map((cell) => cell.attrs.align);
  const rows = table.children.map((row, index) => {
    const type = index === 0 ? nodes.table_header : nodes.table_cell;
    const cells = cellsOf(row, type, width).map((cell, column) => {
      const isRight = cell.type === type && cell.attrs.align === aligns[column];
      return isRight ? cell : type.create({ align: aligns[column] }, cell.content);
    });
    return withChildren(row, cells);
  });
  return withChildren(table, rows);
}

/** A row's cells, each one column wide and one row high, and as many as there are columns. */
function cellsOf(row: Node, type: Node['type'], width: number): Node[] {
  const cells = row.children.flatMap((cell) => {
    const { colspan, rowspan, colwidth, align } = cell.attrs;
    const single =
      colspan === 1 && rowspan === 1 && colwidth === null ? cell : cell.type.create({ align }, cell.content);
    const more = Array.from({ length: colspan - 1 }, () => type.create({ align }));
    return [oneCell(single), ...more];
  });
  while (cells.length < width) cells.push(type.create());
  return cells;
}

const oneCell = (cell: Node) => withoutStrayCode(oneLine(cell));
