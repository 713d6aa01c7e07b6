import type { Nodes } from 'mdast';
import { frontmatterToMarkdown } from 'mdast-util-frontmatter';
import { gfmToMarkdown } from 'mdast-util-gfm';
import { toMarkdown, type Options } from 'mdast-util-to-markdown';
import type { Fragment, Node } from 'prosemirror-model';
import { highlightToMarkdown } from '../syntax/highlight';
import { mathToMarkdown } from '../syntax/math';
import { wikilinkToMarkdown } from '../syntax/wikilink';
import { ownHandlers } from './handlers';
import { blockTree, inlineTree, type Verbatim } from './toTree';

/** Which of the equivalent markers are written. */
export interface Style {
  bullet: '-' | '*' | '+';
  bulletOrdered: '.' | ')';
  emphasis: '*' | '_';
  strong: '*' | '_';
  fence: '`' | '~';
  rule: '-' | '*' | '_';
}

export const defaultStyle: Style = {
  bullet: '-',
  bulletOrdered: '.',
  emphasis: '*',
  strong: '*',
  fence: '`',
  rule: '-',
};

const extensions = [
  gfmToMarkdown({ tablePipeAlign: false }),
  frontmatterToMarkdown(['yaml', 'toml']),
  mathToMarkdown,
  highlightToMarkdown,
  wikilinkToMarkdown,
  ownHandlers,
];

const fixed: Options = { listItemIndent: 'one', fences: true, resourceLink: true, incrementListMarker: true, extensions };

function toText(tree: Nodes, style: Partial<Style>): string {
  return toMarkdown(tree, { ...fixed, ...defaultStyle, ...style });
}

/** Markdown for one block, without a line end after it. `verbatim` may give source for any block in it. */
export function writeBlock(node: Node, style: Partial<Style> = {}, verbatim?: Verbatim): string {
  const tree = { type: 'root' as const, children: [blockTree(node, verbatim)] };
  return toText(tree, style).replace(/\n+$/, '');
}

/** Markdown for several blocks, with a line end after the last one. */
export function markdownOf(blocks: readonly Node[], style: Partial<Style> = {}): string {
  return toText({ type: 'root', children: blocks.map((block) => blockTree(block)) }, style);
}

/** Where a stretch of inline content is to stand. */
export interface Surroundings {
  before: string;
  after: string;
  isCell: boolean;
}

/** Markdown for a stretch of a text block's content. */
export function writeInline(content: Fragment, around: Surroundings, style: Partial<Style> = {}): string {
  return toText({ type: 'stretch', ...around, children: inlineTree(content) }, style).replace(/\n$/, '');
}
