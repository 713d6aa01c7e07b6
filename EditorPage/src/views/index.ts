/** How each node and mark of a note is drawn, where the schema's own way is not enough. */
import type { MarkViewConstructor, NodeViewConstructor } from 'prosemirror-view';
import { codeBlockView } from './code';
import { footnoteView } from './footnotes';
import { frontMatterView } from './frontMatter';
import { htmlBlockView } from './html';
import { footnoteReferenceView, htmlInlineView, rawInlineView, wikilinkView } from './inline';
import { linkView } from './links';
import { listItemView } from './lists';
import { mathBlockView, mathInlineView } from './math';
import { embedView, imageView } from './media';
import { tableCellView, tableHeaderView, tableView } from './tables';

export const nodeViews: Record<string, NodeViewConstructor> = {
  code_block: codeBlockView,
  embed: embedView,
  footnote_definition: footnoteView,
  footnote_reference: footnoteReferenceView,
  front_matter: frontMatterView,
  html_block: htmlBlockView,
  html_inline: htmlInlineView,
  image: imageView,
  list_item: listItemView,
  math_block: mathBlockView,
  math_inline: mathInlineView,
  raw_inline: rawInlineView,
  table: tableView,
  table_cell: tableCellView,
  table_header: tableHeaderView,
  wikilink: wikilinkView,
};

export const markViews: Record<string, MarkViewConstructor> = { link: linkView };
