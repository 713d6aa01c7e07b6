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
  /** Addresses that are links by themselves, bare or between angle brackets. */
  address: 'bare' | 'angled';
}

const defaultStyle: Style = {
  bullet: '-',
  bulletOrdered: '.',
  emphasis: '*',
  strong: '*',
  fence: '`',
  rule: '-',
  address: 'bare',
};

const { address: _, ...markers } = defaultStyle;

const extensions = [
  gfmToMarkdown({ tablePipeAlign: false }),
  frontmatterToMarkdown(['yaml', 'toml']),
  mathToMarkdown,
  highlightToMarkdown,
  wikilinkToMarkdown,
  ownHandlers,
];

const fixed: Options = {
  ...markers,
  listItemIndent: 'one',
  fences: true,
  resourceLink: true,
  incrementListMarker: true,
  extensions,
};

function toText(tree: Nodes, { address: _, ...style }: Partial<Style>): string {
  return toMarkdown(tree, { ...fixed, ...style });
}

/** Markdown for one block, without a line end after it. `verbatim` may give source for any block in it. */
export function writeBlock(node: Node, style: Partial<Style> = {}, verbatim?: Verbatim): string {
  const options = { verbatim, angled: style.address === 'angled' };
  const tree = { type: 'root' as const, children: [blockTree(node, options)] };
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
  return toText(
    { type: 'stretch', ...around, children: inlineTree(content, { angled: style.address === 'angled' }) },
    style,
  ).replace(/\n$/, '');
}
