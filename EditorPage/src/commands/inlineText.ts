/** Inline content as the Markdown that a reader would type for it, where it has to stand as plain text. */
import type { Node } from 'prosemirror-model';
import { schema } from '../schema';

const { nodes } = schema;

/** The text of a block with its pictures, links to notes and formulas written out, so that none is lost. */
export function inlineAsText(block: Node): string {
  let text = '';
  block.forEach((child) => (text += child.isText ? (child.text ?? '') : atomAsText(child)));
  return text;
}

/** One inline node that is not text, as source. */
export function atomAsText(node: Node): string {
  const { attrs } = node;
  switch (node.type) {
    case nodes.hard_break:
      return '\n';
    case nodes.image:
      return `![${attrs.alt}](${attrs.src})`;
    case nodes.wikilink:
      return wikiText(attrs.target, attrs.alias);
    case nodes.embed:
      return `!${wikiText(attrs.target, attrs.alias)}`;
    case nodes.math_inline:
      return `$${attrs.value}$`;
    case nodes.footnote_reference:
      return `[^${attrs.label}]`;
    case nodes.html_inline:
      return attrs.value as string;
    case nodes.raw_inline:
      return attrs.source as string;
    default:
      return node.textContent;
  }
}

function wikiText(target: string, alias: string | null): string {
  return alias === null ? `[[${target}]]` : `[[${target}|${alias}]]`;
}
