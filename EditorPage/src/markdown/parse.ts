import type { Root, RootContent } from 'mdast';
import { fromMarkdown, type Extension as FromMarkdown } from 'mdast-util-from-markdown';
import { frontmatterFromMarkdown } from 'mdast-util-frontmatter';
import { gfmFromMarkdown } from 'mdast-util-gfm';
import { frontmatter } from 'micromark-extension-frontmatter';
import { gfm } from 'micromark-extension-gfm';
import { normalizeIdentifier } from 'micromark-util-normalize-identifier';
import { highlightFromMarkdown, highlightSyntax } from '../syntax/highlight';
import { mathFromMarkdown, mathSyntax } from '../syntax/math';
import { wikilinkFromMarkdown, wikilinkSyntax } from '../syntax/wikilink';
import { textRuns } from './segments';

// One tilde is a tilde: H~2~O is nobody's wish to strike the 2.
const syntax = [gfm({ singleTilde: false }), mathSyntax, highlightSyntax, wikilinkSyntax];

// Addresses are found while the source is read. The later search through finished text, which would also join what
// escapes keep apart, is left out: its finds have no place in the source.
const gfmTree: FromMarkdown[] = gfmFromMarkdown().map((extension) => ({ ...extension, transforms: [] }));
const tree: FromMarkdown[] = [...gfmTree, mathFromMarkdown, highlightFromMarkdown, wikilinkFromMarkdown, textRuns];

const formats: Array<'yaml' | 'toml'> = ['yaml', 'toml'];
const inside = { extensions: syntax, mdastExtensions: tree };
const atStart = {
  extensions: [...syntax, frontmatter(formats)],
  mdastExtensions: [...tree, frontmatterFromMarkdown(formats)],
};

/** Labels of link definitions, and of footnotes with a "^" before them, in the form that Markdown compares. */
export type Labels = ReadonlySet<string> | ReadonlyMap<string, unknown>;

/** Markdown's own form of a label: case and runs of blanks do not count. */
export function labelKey(label: string): string {
  return normalizeIdentifier(label).toLowerCase();
}

const bracketed = /\[((?:[^[\]\\]|\\.){1,999})\]/gs;

/** Definitions for those labels in `source` that the rest of the note defines. */
function stubs(source: string, labels: Labels): string {
  if (labels.size === 0 || !source.includes('[')) return '';
  const needed = new Map<string, string>();
  for (const [, label] of source.matchAll(bracketed)) {
    const key = labelKey(label!);
    if (labels.has(key)) needed.set(key, label!.replace(/\s+/g, ' ').trim());
  }
  const all = [...needed.values()];
  const notes = all.filter((label) => label.startsWith('^')).map((label) => `[${label}]: .\n\n`);
  const links = all.filter((label) => !label.startsWith('^')).map((label) => `[${label}]: <>\n\n`);
  // An indented block would belong to a footnote before it: the comment ends that.
  return [...notes, notes.length > 0 ? '<!-- -->\n\n' : '', ...links].join('');
}

/** Front matter with both its fences. */
export const frontMatter = /^(---|\+\+\+)[ \t]*\n(?:[\s\S]*?\n)?\1[ \t]*(?:\n|$)/;

/** A read source: its blocks, with offsets that are `shift` too large. */
export interface Reading {
  blocks: RootContent[];
  shift: number;
}

/**
 * Reads Markdown with line feeds as its only line ends. `isStart` says that the source begins the note, where front
 * matter may stand; `labels` are those that the rest of the note defines.
 */
export function read(source: string, isStart: boolean, labels: Labels = new Set()): Reading {
  // Asked for where there is none, the parser would take the lines it looked through for plain ones.
  const hasFrontMatter = isStart && frontMatter.test(source);
  const definitions = stubs(source, labels);
  if (hasFrontMatter) return { blocks: readFrontMatter(source, definitions), shift: 0 };
  // The parser drops a byte order mark at the start, which is not the note's here.
  const guard = definitions === '' && source.startsWith('\ufeff') ? '\ufeff' : '';
  const root: Root = fromMarkdown(guard + definitions + source, inside);
  const blocks = root.children.filter((block) => block.position!.end.offset! > definitions.length);
  return { blocks, shift: definitions.length };
}

/** Front matter stands at the very start, so the definitions follow; what would take them in is read without them. */
function readFrontMatter(source: string, definitions: string): RootContent[] {
  if (definitions === '') return fromMarkdown(source, atStart).children;
  const { children } = fromMarkdown(`${source}\n\n${definitions}`, atStart);
  const blocks = children.filter((block) => block.position!.start.offset! < source.length);
  const reachesOut = blocks.some((block) => block.position!.end.offset! > source.length);
  return reachesOut ? fromMarkdown(source, atStart).children : blocks;
}
