/** How high folded blocks are, or will be about when they are drawn; in lines of body text. */
import type { Node } from 'prosemirror-model';
import { sourceOf } from '../source/folded';

/** The height of a line, in the size of the text. */
export const LINE = 1.5;

/** Of ordinary notes so many characters of source take the height of one line. */
const CHARACTERS = 55;

const known = new WeakMap<Node, number>();

export function linesOf(folded: Node): number {
  return known.get(folded) ?? Math.max(1, sourceOf(folded).length / CHARACTERS);
}

/** The blocks were seen in `note`: they are `height` pixels high. */
export function rememberHeight(folded: Node, height: number, note: Element): void {
  known.set(folded, height / (parseFloat(getComputedStyle(note).fontSize) * LINE));
}
