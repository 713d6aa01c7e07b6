import type { Node } from 'prosemirror-model';
import { writeBlock, type Style } from '../markdown/write';
import { schema } from '../schema';
import { adjusted } from './adjust';
import { emptyEntry, readBlock, readEntries, type Block, type Entry } from './entries';
import { allGuarded } from './guards';
import { isBlank, isLoneLetter, isSame, isSource, tidy } from './normal';
import type { Pool } from './pool';
import { inlineSplices, sourceOffsets, spliced } from './patch';
import { rootPlace } from './place';
import { reconcile, type Context } from './reconcile';
import { carryOver, unify } from './text';

const { nodes } = schema;

/** The text that entries come from, and what it needs to know about the rest of the note. */
export interface Writing extends Context {
  pool: Pool;
  lineEnd: string;
}

/**
 * Writes one top-level block, `shown`. `old` is the entry that it was made from, whose bytes are kept as far as can
 * be. What comes back is always what its source reads as: one entry that says what the block says, or, where Markdown
 * cannot say that, the entries that the nearest text gives. They have no gaps yet.
 */
export function writeEntries(shown: Node, old: Entry | undefined, writing: Writing): Entry[] {
  if (isBlank(shown)) return [emptyEntry(shown, '')];
  try {
    const node = adjusted(shown);
    const block = (old && patched(node, old, writing)) ?? written(node, old, writing);
    if (block) return [entryOf(block, node, old, writing.lineEnd)];
    if (!isSource(node)) return reread(writeBlock(tidy(node), styleOf(old?.source ?? '')), node, old, writing);
    return reread(sourceOf(node, old), node, old, writing).map((entry) => (isSource(entry.node) ? entry : { ...entry, wasSource: true }));
  } catch {
    // No fault of the writers may cost a word: what is left is the text itself.
    return reread(shown.textBetween(0, shown.content.size, '\n\n', '\n'), shown, old, writing);
  }
}

/** The source that a block of source has become: where its text has changed, and not where its lines begin. */
function sourceOf(node: Node, old: Entry | undefined): string {
  if (old?.parsed.type !== node.type) return node.textContent;
  const [splice] = inlineSplices(old.source, rootPlace(old), node, '');
  return splice ? spliced(old.source, splice) : node.textContent;
}

function patched(node: Node, old: Entry, writing: Writing): Block | null {
  if (old.parsed.type !== node.type || old.source === '') return null;
  return reconcile(old, node, writing.pool, writing);
}

function entryOf(block: Block, node: Node, old: Entry | undefined, lineEnd: string): Entry {
  const raw = carryOver(old?.raw ?? '', old?.source ?? '', block.source, lineEnd);
  if (block.parsed.eq(node)) return { ...block, parsed: node, raw, gap: '', node };
  return { ...block, raw, gap: '', node: isSame(block.parsed, node) ? node : block.parsed };
}

function written(node: Node, old: Entry | undefined, writing: Writing): Block | null {
  const type = isLoneLetter(node) ? nodes.paragraph : node.type;
  for (const source of candidates(node, old, writing)) {
    const block = readBlock(source, type, writing.labels);
    if (block && isSame(block.parsed, node)) return isNew(old) ? allGuarded(block) : block;
  }
  return null;
}

/** Whether nothing of a block was written before. */
const isNew = (old: Entry | undefined): boolean => !old || old.source === '';

/** What a paragraph says letter by letter; null where it is more than that. */
function plainText(node: Node): string | null {
  const isPlain = node.type === nodes.paragraph && node.children.every((child) => child.isText && child.marks.length === 0);
  return isPlain ? node.textContent : null;
}

/** The block's Markdown, in forms that keep less and less of the older text. */
function candidates(node: Node, old: Entry | undefined, { pool }: Writing): Set<string> {
  if (isSource(node)) return new Set([node.textContent]);
  const found = new Set<string>();
  const typed = old && node.type !== old.parsed.type ? withBlankBehindMarker(old) : null;
  if (typed !== null) found.add(typed);
  const clean = tidy(node);
  const plain = isNew(old) ? plainText(clean) : null;
  if (plain !== null) found.add(plain);
  const style = styleOf(old?.source ?? '');
  for (const known of [pool.parts, pool.whole, undefined]) {
    found.add(writeBlock(clean, style, known));
    found.add(writeBlock(clean, { ...style, emphasis: '_', strong: '_', address: 'angled' }, known));
  }
  return found;
}

/** A paragraph's source as it reads when its first characters are a marker: the blank that made them one was just typed. */
function withBlankBehindMarker({ source, parsed, piece }: Entry): string | null {
  const marker = /^(?:[-+*>]|#{1,6}|\d{1,9}[.)])/.exec(parsed.textContent)?.[0];
  if (marker === undefined || parsed.type !== nodes.paragraph) return null;
  const [end] = sourceOffsets(piece, marker.length, parsed.content.size);
  return end === undefined ? null : `${/^ */.exec(source)![0]}${marker} ${source.slice(piece.start + end)}`;
}

/** The markers that a source uses. */
function styleOf(source: string): Partial<Style> {
  const bullet = /^[ >\t]*([-+*])[ \t]/m.exec(source)?.[1] as Style['bullet'] | undefined;
  const numbered = /^[ >\t]*\d{1,9}([.)])[ \t]/m.exec(source)?.[1] as Style['bulletOrdered'] | undefined;
  const fence = /^[ >\t]*(~{3}|`{3})/m.exec(source)?.[1]?.[0] as Style['fence'] | undefined;
  return { ...(bullet && { bullet }), ...(numbered && { bulletOrdered: numbered }), ...(fence && { fence }) };
}

/** When nothing says what the document says, the text decides, and the document follows. */
function reread(text: string, node: Node, old: Entry | undefined, { labels, lineEnd }: Writing): Entry[] {
  const raw = carryOver(old?.raw ?? '', old?.source ?? '', text, lineEnd);
  const { entries, tail } = readEntries(raw, node.type === nodes.front_matter, labels);
  const last = entries.at(-1);
  if (!last) return [emptyEntry(nodes.paragraph.create(), '')];
  return [...entries.slice(0, -1), { ...last, raw: last.raw + tail, source: last.source + unify(tail).text }];
}
