/** Copy and paste: Markdown as text, and HTML through an inert, allow-listed reading. */
import { Fragment, Slice, type Node } from 'prosemirror-model';
import { AllSelection, Selection } from 'prosemirror-state';
import { isInTable } from 'prosemirror-tables';
import type { EditorProps, EditorView } from 'prosemirror-view';
import { markdownOf, writeBlock } from '../markdown/write';
import { schema } from '../schema';
import type { SourceDocument } from '../source/SourceDocument';
import { isOwnCopy, pastedHtml } from './pastedHtml';
import { tableFromTabs, withPlainTables } from './tables';

const { paragraph } = schema.nodes;

/** The editor's clipboard behaviour over the note that `source` gives. */
export function clipboardProps(source: () => SourceDocument): EditorProps {
  let isOwn = false;
  return {
    transformPastedHTML: (html) => {
      isOwn = isOwnCopy(html);
      return pastedHtml(html);
    },
    transformPasted: (slice, view, asText) => shapedFor(view, isOwn && !asText ? slice : openAtParagraphs(slice.content)),
    clipboardTextSerializer: (slice, view) => selectedText(slice, view, source()),
    clipboardTextParser: (text, _context, plain) => (plain ? literalText(text) : markdownText(text, source())),
  };
}

function selectedText(slice: Slice, view: EditorView, source: SourceDocument): string {
  return holdsAll(view) ? source.text : copiedText(slice);
}

/** Copies the selection as its text alone, or cuts it out. */
export function copyAsText(event: ClipboardEvent, view: EditorView, source: SourceDocument): void {
  event.clipboardData?.setData('text/plain', selectedText(view.state.selection.content(), view, source));
  event.preventDefault();
  if (event.type === 'cut') view.dispatch(view.state.tr.deleteSelection().scrollIntoView());
}

/** Pasted content in the shape that fits where it goes: a table's cell takes running text only. */
function shapedFor(view: EditorView, slice: Slice): Slice {
  const holdsCells = slice.content.firstChild?.type.spec['tableRole'] !== undefined;
  return isInTable(view.state) && !holdsCells ? asRunningText(slice) : withPlainTables(slice);
}

/** All text of the slice in one run, with blanks where blocks ended. */
function asRunningText(slice: Slice): Slice {
  let run = Fragment.empty;
  slice.content.descendants((node) => {
    if (!node.isTextblock) return true;
    if (run.size > 0) run = run.addToEnd(schema.text(' '));
    run = run.append(inOneLine(node));
    return false;
  });
  return run.size > 0 ? new Slice(run, 0, 0) : slice;
}

function inOneLine(block: Node): Fragment {
  const children = block.children.map((child) => {
    if (child.type === schema.nodes.hard_break) return schema.text(' ');
    return child.isText ? schema.text(child.text!.replace(/\n/g, ' '), child.marks) : child;
  });
  return Fragment.from(children);
}

/** Whether the whole note is selected. The words of its only block, however they were selected, are just words. */
function holdsAll({ state: { doc, selection } }: EditorView): boolean {
  if (doc.childCount === 1) return selection instanceof AllSelection;
  return selection.from <= Selection.atStart(doc).from && selection.to >= Selection.atEnd(doc).to;
}

/** Selected content as Markdown; a piece of one line as that line without what it stands in. */
export function copiedText(slice: Slice): string {
  let { content, openStart, openEnd } = slice;
  while (content.childCount === 1 && content.firstChild!.childCount === 1 && openStart > 1 && openEnd > 1) {
    content = content.firstChild!.content;
    openStart--;
    openEnd--;
  }
  const only = content.childCount === 1 ? content.firstChild! : null;
  if (only?.type.spec.code) return only.textContent;
  if (only?.isTextblock && openStart > 0) return writeBlock(paragraph.create(null, only.content));
  return markdownOf(asBlocks(content)).trimEnd();
}

/** Parts of lists and tables can be selected without the whole. */
function asBlocks(content: Fragment): readonly Node[] {
  const { list_item: item, letter_item: letter, table_row: row, list, table } = schema.nodes;
  switch (content.firstChild?.type) {
    case item:
      return [list.create(null, content)];
    case row:
      return [table.create(null, content)];
    case letter:
      return content.content.map((one) => one.firstChild ?? paragraph.create());
    default:
      return content.firstChild?.isInline ? [paragraph.create(null, content)] : content.content;
  }
}

/** Pasted Markdown as what it says. Whole blocks keep their own source. */
function markdownText(text: string, source: SourceDocument): Slice {
  const range = tableFromTabs(text);
  if (range !== null) return new Slice(Fragment.from(range), 0, 0);
  const blocks = source.adopt(text);
  const isLine = blocks.length === 1 && blocks[0]!.type === paragraph && !/[\r\n]/.test(text.trim());
  if (!isLine) return openAtParagraphs(Fragment.from(blocks));
  // Blanks around a single line part it from the words it is pasted between.
  const [before = '', after = ''] = [/^[ \t]*/.exec(text)?.[0], /[ \t]*$/.exec(text)?.[0]];
  const words = blocks[0]!.content;
  const padded = [...(before ? [schema.text(before)] : []), ...words.content, ...(after ? [schema.text(after)] : [])];
  return openAtParagraphs(Fragment.from(paragraph.create(null, Fragment.from(padded))));
}

/** Only paragraphs at the ends melt into the text around them; lists, headings and the rest stay what they are. */
function openAtParagraphs(content: Fragment): Slice {
  const open = (node: Node | null): number => (node?.type === paragraph ? 1 : 0);
  return new Slice(content, open(content.firstChild), open(content.lastChild));
}

/** Text pasted to be taken letter by letter: a blank line parts paragraphs, and each further one is an empty one. */
export function literalText(text: string): Slice {
  const lines = text.replace(/\r\n?/g, '\n').replace(/\n{2,}/g, (run) => '\n\n'.repeat(run.length - 1));
  const blocks = lines.split('\n\n').map((part) => paragraph.create(null, part === '' ? null : schema.text(part)));
  return new Slice(Fragment.from(blocks), 1, 1);
}
