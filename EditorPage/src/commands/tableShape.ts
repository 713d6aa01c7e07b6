/** Keeps every table that an edit touches in the shape a plain file can hold: the first row, and no other, is the head. */
import { Plugin, type Transaction } from 'prosemirror-state';
import { schema } from '../schema';
import { changedPart } from '../views/blockDecorations';

const { table, table_header: headerType, table_cell: cellType } = schema.nodes;

/** The plugin that mends heads after pasting, moving or deleting rows. */
export function tableShape(): Plugin {
  return new Plugin({
    appendTransaction: (transactions, before, after) => {
      if (!transactions.some((tr) => tr.docChanged)) return null;
      const tr = after.tr;
      const { start, end } = changedPart(before.doc, after.doc);
      mendTables(tr, start, end);
      return tr.docChanged ? tr : null;
    },
  });
}

/** Sets the kind of wrong cells of the tables between, and around, two places. That changes no sizes, so places hold. */
function mendTables(tr: Transaction, from: number, to: number): void {
  tr.doc.nodesBetween(from, to, (node, pos) => {
    if (node.type !== table) return !node.isTextblock;
    node.forEach((row, rowOffset, index) => {
      const wanted = index === 0 ? headerType : cellType;
      row.forEach((cell, cellOffset) => {
        if (cell.type !== wanted) tr.setNodeMarkup(pos + 2 + rowOffset + cellOffset, wanted, cell.attrs);
      });
    });
    return false;
  });
}
