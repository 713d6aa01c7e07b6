import type { Node } from 'prosemirror-model';
import { writeBlock } from '../markdown/write';
import { schema } from '../schema';
import { isPlainLine } from './cuts';
import { readBlock, readEntries, type Entry } from './entries';
import { isFolded } from './folded';
import { isSame, isSource } from './normal';
import type { Context } from './reconcile';
import { carryOver, unify, withLineEnd } from './text';

const { nodes } = schema;

/** Two blocks that follow each other in the text, and the bytes between them. */
export interface Joint {
  before: Entry;
  after: Entry;
  gap: string;
}

const isFrontMatter = (entry: Entry) => entry.parsed.type === nodes.front_matter;

const blankLine = /\n[ \t]*\n/;

/** How blocks begin that cannot stand in the middle of a paragraph. Right below a definition they are text. */
const lowBlockStart = /^(?: {4}| {0,3}\t| {0,3}(?:<|(?:[-+*]|\d{1,9}[.)])(?:\s|$)))/;

const isLowText = ({ parsed, source }: Entry) => parsed.isTextblock && lowBlockStart.test(source);

/** Whether two blocks might read differently together than each alone. */
export function isRisky({ before, after, gap }: Joint): boolean {
  if (!blankLine.test(unify(gap).text)) return true;
  const isIndented = /^[ \t]/.test(after.source);
  if (isLowText(after)) return true;
  switch (before.parsed.type) {
    case nodes.list:
      return isIndented || after.parsed.type === nodes.list || isOpenAtEnd(before);
    case nodes.footnote_definition:
      return isIndented || isOpenAtEnd(before);
    case nodes.html_block:
    case nodes.raw_block:
      return true;
    case nodes.code_block:
    case nodes.math_block:
      return isIndented || isOpenAtEnd(before);
    default:
      return false;
  }
}

/** Whether a block ends in code or a formula that nothing closes: it may go on behind empty lines. */
function isOpenAtEnd({ parsed, source }: Entry): boolean {
  let last = parsed;
  while (!last.isTextblock && last.lastChild) last = last.lastChild;
  const mayBeOpen = last.type === nodes.code_block || last.type === nodes.math_block;
  return mayBeOpen && !/\n *(`{3,}|~{3,}|\${2,})[ \t]*$/.test(source);
}

/** The same where one of the two is a run of blocks that is not read. Such a run begins and ends where a note can be cut. */
export function isFoldedJointSafe(joint: Joint): boolean {
  const { before, after, gap } = joint;
  const isCut = isFolded(after.node) || isPlainLine(after.source.split('\n', 1)[0]!);
  return isCut && blankLine.test(unify(gap).text) && (isFolded(before.node) || !isRisky(joint));
}

/** Longer lists are looked at only with the item that is next to the joint. */
const wholeLimit = 3000;

interface Side {
  source: string;
  node: Node;
}

function lastPart({ source, parsed, piece }: Entry): Side {
  if (parsed.type !== nodes.list || source.length < wholeLimit) return { source, node: parsed };
  const start = piece.start + piece.children.at(-1)!.start;
  const lineStart = source.lastIndexOf('\n', start - 1) + 1;
  return {
    source: source.slice(lineStart),
    node: parsed.copy(parsed.content.cut(parsed.content.size - parsed.lastChild!.nodeSize)),
  };
}

function firstPart({ source, parsed, piece }: Entry): Side {
  if (parsed.type !== nodes.list || source.length < wholeLimit) return { source, node: parsed };
  const end = piece.start + piece.children[0]!.end;
  return { source: source.slice(0, end), node: parsed.copy(parsed.content.cut(0, parsed.firstChild!.nodeSize)) };
}

/**
 * Whether two blocks stay what they are when they are read together. Whether a line goes on with a container above it
 * the parser may decide by the line end behind it, which is not always there.
 */
export function holds({ before, after, gap }: Joint, context: Context): boolean {
  const left = lastPart(before);
  const right = firstPart(after);
  const between = unify(gap).text;
  const mayReachOn = !before.parsed.isTextblock && !blankLine.test(between);
  return (mayReachOn ? ['', '\n'] : ['']).every((end) => {
    const { entries } = readEntries(left.source + between + right.source + end, isFrontMatter(before), context.labels);
    const [first, second] = entries;
    if (entries.length !== 2 || !first || !second) return false;
    const isWhole = second.source === right.source || second.source === right.source + end;
    return isWhole && sameSide(first.parsed, left.node) && sameSide(second.parsed, right.node);
  });
}

/** Of a part of a list the first number says nothing. */
function sameSide(found: Node, expected: Node): boolean {
  if (found.type !== nodes.list || found.attrs.kind !== expected.attrs.kind) return isSame(found, expected);
  return isSame(found, expected.type.create({ ...expected.attrs, start: found.attrs.start }, expected.content));
}

/** Other ways to write the two blocks so that they stay apart, the least change first. */
export function* separations(joint: Joint, context: Context, lineEnd: string): Generator<Joint> {
  const { before, after } = joint;
  const isApart = blankLine.test(unify(joint.gap).text);
  const apart = isApart ? joint.gap : withLineEnd('\n\n', lineEnd);
  if (!isApart) yield { ...joint, gap: apart };
  const fenced = after.parsed.type === nodes.code_block ? rewritten(after, context, lineEnd) : null;
  if (fenced) yield { before, after: fenced, gap: apart };
  const isOpen = before.parsed.type === nodes.code_block || before.parsed.type === nodes.math_block;
  const closed = isOpen ? rewritten(before, context, lineEnd) : null;
  if (closed) yield { before: closed, after, gap: apart };
  if (closed && fenced) yield { before: closed, after: fenced, gap: apart };
  const other = /^[ \t]/.test(after.source) || isLowText(after) ? rewritten(after, context, lineEnd) : null;
  if (other) yield { before, after: other, gap: apart };
}

/** Longer lists do not get other markers. */
const remarkedLimit = 20_000;

/** A list below another and an empty line, with other markers: the line is there to be written on, and the lists are not one. */
export function* remarked(joint: Joint, context: Context, lineEnd: string): Generator<Joint> {
  const { before, after } = joint;
  const isListed = [before, after].every(({ parsed }) => parsed.type === nodes.list);
  if (!isListed || after.source.length > remarkedLimit) return;
  const markers = after.piece.children.map((child) => after.piece.start + child.start);
  for (const others of otherMarkers) {
    const remark = (item: string) => item.replace(/^(\d*)([-+*.)])/, (_all, number: string, marker: string) => number + others[marker]);
    const source = [...markers].reverse().reduce((text, at) => text.slice(0, at) + remark(text.slice(at)), after.source);
    const block = readBlock(source, nodes.list, context.labels);
    if (!block || !isSame(block.parsed, after.parsed)) continue;
    yield { ...joint, after: { ...after, ...block, raw: carryOver(after.raw, after.source, source, lineEnd), insteadOf: after } };
  }
}

/** What each marker may be exchanged for. An item that begins with a rule would be one after a marker of the same kind. */
const otherMarkers: ReadonlyArray<Readonly<Record<string, string>>> = [
  { '-': '*', '*': '-', '+': '-', '.': ')', ')': '.' },
  { '-': '+', '*': '+', '+': '*', '.': ')', ')': '.' },
];

/** The list that was there before it got other markers, where nothing asks for them any more. */
export function unremarked({ before, after, gap }: Joint, context: Context): Entry | null {
  const old = after.insteadOf;
  if (!old || !isSame(old.parsed, after.parsed)) return null;
  const isFree = before.parsed.type !== nodes.list || holds({ before, after: old, gap }, context);
  return isFree ? { ...old, node: after.node, gap: after.gap } : null;
}

/** The block with its own gap, where what stands before is a definition or HTML once more and no longer runs on into it. */
export function unspaced({ before, after }: Joint, context: Context): Entry | null {
  const { ownGap, ...entry } = after;
  if (ownGap === undefined || !isSource(before.parsed)) return null;
  return holds({ before, after, gap: ownGap }, context) ? { ...entry, gap: ownGap } : null;
}

/** What begins a note when nothing stands above it any more that made it text. Null where it stays what it is. */
export function standingFirst(entry: Entry, context: Context, lineEnd: string): Entry[] | null {
  if (!isLowText(entry)) return null;
  const { entries } = readEntries(entry.raw, false, context.labels);
  if (entries.length === 1 && isSame(entries[0]!.parsed, entry.parsed)) return null;
  const other = rewritten(entry, context, lineEnd);
  return other ? [other] : entries.map((one, index) => (index === 0 ? { ...one, gap: entry.gap } : one));
}

function rewritten(entry: Entry, { labels }: Context, lineEnd: string): Entry | null {
  const block = readBlock(writeBlock(entry.parsed), entry.parsed.type, labels);
  if (!block || !isSame(block.parsed, entry.parsed)) return null;
  return { ...entry, ...block, raw: withLineEnd(block.source, lineEnd) };
}

/** The two blocks as they read together, where nothing keeps them apart. */
export function merged({ before, after, gap }: Joint, context: Context): Entry[] {
  const { entries, tail } = readEntries(before.raw + gap + after.raw, isFrontMatter(before), context.labels);
  const last = entries.at(-1);
  if (!last) return [];
  return [{ ...entries[0]!, gap: before.gap }, ...entries.slice(1)].map((entry, index, all) =>
    index === all.length - 1 && tail !== '' ? withTail(entry, tail) : entry,
  );
}

const withTail = (entry: Entry, tail: string): Entry => ({
  ...entry,
  raw: entry.raw + tail,
  source: entry.source + unify(tail).text,
});
