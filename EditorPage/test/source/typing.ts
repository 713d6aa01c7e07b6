import assert from 'node:assert/strict';
import { disagreement, Session } from '../editing';

/** Types letter by letter. */
export function type(session: Session, text: string) {
  for (const letter of text) session.dispatch(session.state.tr.insertText(letter));
}

/** Puts the caret behind the last occurrence of a text. */
export function moveBehind(session: Session, text: string) {
  session.state.doc.descendants((node, pos) => {
    const found = node.isText ? node.text!.indexOf(text) : -1;
    if (found >= 0) session.select(pos + found + text.length);
  });
}

/** The note after something was typed behind the words `place`. */
export function typedBehind(text: string, place: string, typed: string): string {
  const session = new Session(text);
  moveBehind(session, place);
  type(session, typed);
  assert.equal(disagreement(session.source), null);
  return session.source.text;
}
