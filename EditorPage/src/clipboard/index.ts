/** Copy and paste: Markdown as text, and HTML through an inert, allow-listed reading. */
import { Fragment, Slice, type Node } from 'prosemirror-model';
import type { EditorProps, EditorView } from 'prosemirror-view';
import { writeBlock } from '../markdown/write';
import { schema } from '../schema';
import { SourceDocument } from '../source/SourceDocument';
import { pastedHtml } from './pastedHtml';
import { withPlainTables } from './tables';

const { paragraph } = schema.nodes;

/** The editor's clipboard behaviour over the note that `source` gives. */
export function clipboardProps(source: () => SourceDocument): EditorProps {
  return {
    transformPastedHTML: pastedHtml,
    transformPasted: withPlainTables,
    clipboardTextSerializer: (slice, view) => (holdsAll(view) ? source().text : copiedText(slice)),
    clipboardTextParser: (text, _context, plain) => (plain ? literalText(text) : markdownText(text)),
  };
}

function holdsAll({ state }: EditorView): boolean {
  return state.selection.from === 0 && state.selection.to === state.doc.content.size;
}

/** Selected content as Markdown; a piece of one line as that line without what it stands in. */
export function copiedText(slice: Slice): string {
  let { content, openStart, openEnd } = slice;
  while (content.childCount === 1 && openStart > 1 && openEnd > 1) {
    content = content.firstChild!.content;
    openStart--;
    openEnd--;
  }
  const only = content.childCount === 1 ? content.firstChild! : null;
  if (only?.type.spec.code) return only.textContent;
  if (only?.isTextblock && openStart > 0) return writeBlock(paragraph.create(null, only.content));
  return content.content.map((node) => writeBlock(asBlock(node))).join('\n\n');
}

/** Parts of lists and tables can be selected without the whole. */
function asBlock(node: Node): Node {
  if (node.isInline) return paragraph.create(null, node);
  if (node.type === schema.nodes.list_item) return schema.nodes.list.create(null, node);
  if (node.type === schema.nodes.letter_item) return node.firstChild ?? paragraph.create();
  if (node.type === schema.nodes.table_row) return schema.nodes.table.create(null, node);
  return node;
}

/** Pasted Markdown as what it says. Fences of dashes at its start are no front matter in the midst of a note. */
function markdownText(text: string): Slice {
  const nodes = SourceDocument.load(`\n${text}`).doc.children;
  const open = (node: Node | undefined): number => (node?.type === paragraph ? 1 : 0);
  return new Slice(Fragment.from(nodes), open(nodes[0]), open(nodes.at(-1)));
}

/** Text pasted to be taken letter by letter: blank lines part paragraphs. */
function literalText(text: string): Slice {
  const parts = text.replace(/\r\n?/g, '\n').split(/\n{2,}/);
  const blocks = parts.map((part) => paragraph.create(null, part === '' ? null : schema.text(part)));
  return new Slice(Fragment.from(blocks), 1, 1);
}
