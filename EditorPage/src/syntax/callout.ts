import type { Node } from 'prosemirror-model';
import { schema } from '../schema';

/** What the first line of a callout says: `[!note]- Title`. */
export interface Callout {
  kind: string;
  fold: '' | '+' | '-';
  /** The length of the marker `[!note]-` with the blanks after it, in the first paragraph's text. */
  markerLength: number;
}

const marker = /^\[!([\p{L}\p{N}_-]+)\]([+-]?)[ \t]*/u;

/** Tells whether a quote is a callout. The marker is ordinary text of its first paragraph. */
export function calloutOf(quote: Node): Callout | null {
  const first = quote.type === schema.nodes.blockquote ? quote.firstChild : null;
  const text = first?.type === schema.nodes.paragraph ? first.firstChild : null;
  const match = text?.isText && text.marks.length === 0 ? marker.exec(text.text!) : null;
  if (!match) return null;
  return { kind: match[1]!.toLowerCase(), fold: match[2] as Callout['fold'], markerLength: match[0].length };
}
