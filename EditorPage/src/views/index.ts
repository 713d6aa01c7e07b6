/** How each node and mark of a note is drawn, where the schema's own way is not enough. */
import type { MarkViewConstructor, NodeViewConstructor } from 'prosemirror-view';
import { codeBlockView } from './code';
import type { NoteContext } from './context';
import { drawnBlock } from './drawn';
import { foldedBlock, type Watcher } from '../folding/foldedBlock';
import { footnoteView } from './footnotes';
import { frontMatter } from './frontMatter';
import { htmlBlock } from './html';
import { footnoteReferenceView, htmlInlineView, rawInlineView, wikilinkView } from './inline';
import { inlineSource } from './inlineSource';
import { linkView } from './links';
import { listItemView } from './lists';
import { mathBlock, mathInlineView } from './math';
import { embedKind, pictureKind } from './media';
import { tableCellView, tableHeaderView, tableView } from './tables';

/** The views of a note's nodes. */
export function nodeViews(context: NoteContext, folding: Watcher): Record<string, NodeViewConstructor> {
  return {
    code_block: codeBlockView,
    embed: inlineSource(embedKind),
    folded: foldedBlock(folding),
    footnote_definition: footnoteView,
    footnote_reference: footnoteReferenceView,
    front_matter: drawnBlock(frontMatter, context),
    html_block: drawnBlock(htmlBlock, context),
    html_inline: htmlInlineView,
    image: inlineSource(pictureKind(context)),
    list_item: listItemView,
    math_block: drawnBlock(mathBlock, context),
    math_inline: mathInlineView,
    raw_inline: rawInlineView,
    table: tableView,
    table_cell: tableCellView,
    table_header: tableHeaderView,
    wikilink: wikilinkView,
  };
}

export const markViews: Record<string, MarkViewConstructor> = { link: linkView };
