/** Brings a document to what its text says, with the selection on the letters that it was on. */
import type { Node } from 'prosemirror-model';
import { Selection, TextSelection, type Transaction } from 'prosemirror-state';
import { before, placeBehind, type Before } from './caret';
import type { Correction } from './source/SourceDocument';

/** Puts the corrections into the transaction's document, of which they are. */
export function correct(tr: Transaction, corrections: readonly Correction[]): Transaction {
  for (const { from, to, nodes } of [...corrections].reverse()) replaceChildren(tr, from, to, nodes);
  return tr;
}

function replaceChildren(tr: Transaction, from: number, to: number, nodes: readonly Node[]): void {
  const start = tr.doc.resolve(0).posAtIndex(from, 0);
  const end = tr.doc.resolve(0).posAtIndex(to, 0);
  const { anchor, head, empty } = tr.selection;
  const isInside = (pos: number) => pos > start && pos < end;
  const [toAnchor, toHead] = [anchor, head].map((pos) => (isInside(pos) ? before(tr.doc, start, pos) : null));
  const isText = tr.selection instanceof TextSelection;
  tr.replaceWith(start, end, nodes);
  if (!isInside(anchor) && !isInside(head)) return;
  const step = tr.mapping.maps.at(-1)!;
  const kept = (pos: number, known: Before | null | undefined) => {
    if (!known) return step.map(pos);
    return placeBehind(tr.doc, start, step.map(end), known) ?? Math.min(pos, tr.doc.content.size);
  };
  const $head = tr.doc.resolve(kept(head, toHead));
  if (empty || !isText) tr.setSelection(Selection.near($head));
  else tr.setSelection(TextSelection.between(tr.doc.resolve(kept(anchor, toAnchor)), $head));
}
