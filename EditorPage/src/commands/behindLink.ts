/** What is typed behind a link is not part of it, and neither has it the type that only the link has. */
import type { Mark, ResolvedPos } from 'prosemirror-model';
import { Plugin } from 'prosemirror-state';
import { schema } from '../schema';

const linkOf = (marks: readonly Mark[] | undefined) => marks?.find((mark) => mark.type === schema.marks.link);

/** The marks for text at a place behind a link; null at any other place. */
export function marksBehindLink($pos: ResolvedPos): readonly Mark[] | null {
  const { nodeBefore, nodeAfter, parent } = $pos;
  const link = linkOf(nodeBefore?.marks);
  if (!link || $pos.textOffset > 0 || linkOf(nodeAfter?.marks)) return null;
  let first = $pos.index() - 1;
  while (first > 0 && link.isInSet(parent.child(first - 1).marks)) first -= 1;
  const outside = [parent.maybeChild(first - 1), nodeAfter].flatMap((node) => node?.marks ?? []);
  return $pos.marks().filter((mark) => mark.isInSet(outside));
}

/** The plugin that sets these marks when the caret comes to such a place. */
export function plainBehindLinks(): Plugin {
  return new Plugin({
    appendTransaction(transactions, before, state) {
      const { selection, tr } = state;
      const hasMoved = state.doc !== before.doc || !selection.eq(before.selection);
      if (!hasMoved || !selection.empty || transactions.some((one) => one.storedMarksSet)) return null;
      const marks = marksBehindLink(selection.$from);
      const isUsual = marks === null || marks.length === selection.$from.marks().length;
      return isUsual ? null : tr.setStoredMarks(marks);
    },
  });
}
