import type { Node } from 'prosemirror-model';
import type { Labels } from '../markdown/parse';
import { attrSplices } from './attrs';
import { changesBetween, type Change } from './changes';
import { childSplices } from './children';
import { readAnyBlock, readBlock, type Block } from './entries';
import { readPart } from './local';
import { isSame, isSameButLinks, isSource, tidy } from './normal';
import { bracketed, withBrackets } from './angled';
import { withBareBlanks, withMovedEdges } from './edges';
import { withGuards, withNeededGuards, withoutGuards } from './guards';
import { inlineSplices, isCoded, spliced, type Splice } from './patch';
import { quickEdit } from './quick';
import { leadsTo, linePrefix, nodeAt, placesAlong, withChildren, withNode } from './place';
import type { Pool } from './pool';

/** What reading a block depends on outside of it. */
export interface Context {
  /** The labels that the whole note defines. */
  labels: Labels;
}

/** So many attempts are read back for one change, and so many changes are made to one block. */
const attemptLimit = 24;
const changeLimit = 60;

/**
 * Changes a block's source until it says what `target` says, with as few changed bytes as can be. Every step is read
 * back. Null when there is no such way.
 */
export function reconcile(block: Block, target: Node, pool: Pool, context: Context): Block | null {
  // Where the source itself says blanks that nobody sees, they stay.
  let aim = tidy(block.parsed).eq(block.parsed) ? tidy(target) : target;
  let current = block;
  for (let step = 0; step < changeLimit; step += 1) {
    if (isSame(current.parsed, aim)) return current;
    const next = changed(current, aim, pool, context);
    if (!next) return null;
    current = current.wasSource && next.block.wasSource === undefined ? { ...next.block, wasSource: true } : next.block;
    // What has become a link by itself is one from now on.
    if (next.settled) aim = withNode(aim, next.settled, nodeAt(current.parsed, next.settled));
  }
  return null;
}

interface Changed {
  block: Block;
  /** The path of a text block that now says a little else than was asked: in which typing has made a link, or ended one. */
  settled: number[] | null;
}

type InlineChange = Change & { kind: 'inline' };

function changed(block: Block, aim: Node, pool: Pool, context: Context): Changed | null {
  for (const change of changesBetween(block.parsed, aim)) {
    const isInline = change.kind === 'inline';
    const source = isInline && block.wasSource ? followingSource(block, change, pool, context) : null;
    if (source) return { block: source, settled: change.path };
    const expected = outcome(block.parsed, change);
    const linked = isInline ? withLinksOfItsOwn(block, change, expected) : null;
    const coded: Splice[] = [];
    let attempts = 0;
    for (const splice of splices(block, change, pool)) {
      if (isInline && isCoded(splice)) {
        coded.push(splice);
        continue;
      }
      const quick = isInline ? quickEdit(block, splice, expected, change.path) : null;
      if (quick) return { block: withGuards(quick, block, splice), settled: null };
      const next = readBack(block, splice, expected, context, linked);
      if (next) {
        const lean = withNeededGuards(withGuards(next, block, splice), block, (one, by) => readBack(one, by, expected, context, linked));
        return { block: lean, settled: isSame(lean.parsed, expected) ? null : change.path };
      }
      attempts += 1;
      if (attempts === attemptLimit) break;
    }
    if (!isInline) continue;
    const last =
      besideMarks(block, change, pool, context) ??
      firstThatSays(block, coded, expected, context) ??
      followingSource(block, change, pool, context);
    if (last) return { block: last, settled: change.path };
  }
  return null;
}

/** The block with words that could not stand beside marked text: they are marked as it is, or have blanks without marks beside them. */
function besideMarks(block: Block, change: InlineChange, pool: Pool, context: Context): Block | null {
  const before = nodeAt(block.parsed, change.path);
  for (const node of [...withMovedEdges(before, change.node), ...withBareBlanks(before, change.node)]) {
    const moved = { ...change, node };
    const uncoded = [...splices(block, moved, pool)].filter((splice) => !isCoded(splice));
    const found = firstThatSays(block, uncoded, outcome(block.parsed, moved), context);
    if (found) return found;
  }
  return null;
}

/** The block after typing in a definition or HTML, or in what was one: its source says what that text is now. */
function followingSource(block: Block, change: InlineChange, pool: Pool, context: Context): Block | null {
  const { path, node } = change;
  const [splice] = splices(block, change, pool);
  const next = splice ? readAnyBlock(spliced(block.source, splice), false, context.labels) : null;
  if (!next || !leadsTo(next.parsed, path)) return null;
  const isAlone = isSame(withNode(next.parsed, path, node), withNode(block.parsed, path, node));
  const isSourceNow = isSource(nodeAt(next.parsed, path));
  return isAlone && isSource(node) !== isSourceNow ? { ...next, wasSource: !isSourceNow } : null;
}

function firstThatSays(block: Block, attempts: readonly Splice[], expected: Node, context: Context): Block | null {
  for (const splice of attempts.slice(0, attemptLimit)) {
    const next = readBack(block, splice, expected, context, null);
    if (next) return next;
  }
  return null;
}

/**
 * What the block should say with the brackets around its addresses shown, for an edit that may make links of addresses
 * or end them: links follow what is typed. Making one of a text, or putting one in, is another matter.
 */
function withLinksOfItsOwn(block: Block, { path, node }: InlineChange, expected: Node): Linked | null {
  const before = nodeAt(block.parsed, path);
  const isTyping = before.textContent !== node.textContent && linkCount(node) <= linkCount(before);
  if (!isTyping) return null;
  return { path, expected: withNode(expected, path, withBrackets(node, bracketed(block, path), before)) };
}

/** A block as it should read when links are left out of account, and where in it the edit is. */
interface Linked {
  path: readonly number[];
  expected: Node;
}

const linkCount = (block: Node) => block.children.filter((child) => child.marks.some((mark) => mark.attrs.auto)).length;

/** What the block should say after a change. */
function outcome(root: Node, change: Change): Node {
  switch (change.kind) {
    case 'inline':
      return withNode(root, change.path, change.node);
    case 'attrs': {
      const old = nodeAt(root, change.path);
      return withNode(root, change.path, old.type.create(change.node.attrs, old.content));
    }
    case 'children':
      return withChildren(root, change.path, change.from, change.to, change.nodes);
  }
}

function splices(block: Block, change: Change, pool: Pool): Iterable<Splice> {
  const places = placesAlong(block, change.path);
  const place = places.at(-1)!;
  const parent = places.at(-2);
  switch (change.kind) {
    case 'inline':
      return unguardedFirst(block, inlineSplices(block.source, place, change.node, parent ? linePrefix(block.source, parent) : ''));
    case 'attrs':
      return attrSplices(block.source, place, change.node);
    case 'children':
      return childSplices(block.source, place, change, pool);
  }
}

/** The most faithful splice first without the guards near it. */
function* unguardedFirst(block: Block, all: Iterable<Splice>): Generator<Splice> {
  let isFirst = true;
  for (const splice of all) {
    const bare = isFirst ? withoutGuards(block, splice) : null;
    if (bare) yield bare;
    yield splice;
    isFirst = false;
  }
}

/** The block after a splice, if it then says what is expected. */
function readBack(
  block: Block,
  splice: Splice,
  expected: Node,
  context: Context,
  linked: Linked | null,
): Block | null {
  const part = readPart(block, splice, expected, context.labels, linked?.expected);
  if (part !== undefined) return part;
  const next = readBlock(spliced(block.source, splice), expected.type, context.labels);
  if (!next) return null;
  return isSame(next.parsed, expected) || (linked && saysWithLinks(next, linked)) ? next : null;
}

function saysWithLinks(block: Block, { path, expected }: Linked): boolean {
  const { parsed } = block;
  if (isSameButLinks(parsed, expected)) return true;
  const found = bracketed(block, path);
  if (found.length === 0) return false;
  return isSameButLinks(withNode(parsed, path, withBrackets(nodeAt(parsed, path), found)), expected);
}
