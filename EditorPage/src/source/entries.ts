import type { Node, NodeType } from 'prosemirror-model';
import { BlockReader } from '../markdown/blocks';
import { read, type Labels } from '../markdown/parse';
import type { Built, Piece } from '../markdown/piece';
import { schema } from '../schema';
import { unify, type Unified } from './text';

const { nodes } = schema;

/** A block with its source: what the source says, and where each part of that stands in it. */
export interface Block {
  /** The source with line feeds only. */
  source: string;
  /** What `source` reads as. */
  parsed: Node;
  /** The place of `parsed` in `source`. */
  piece: Piece;
  /** Where in `source` backslashes stand that are there only because of what was typed last. In ascending order. */
  guards?: readonly number[];
  /** Set where a text in it was a definition or HTML until something was typed into that, and may be one again with the next letter. */
  wasSource?: boolean;
}

/** A top-level block of a note: the block as the document shows it, its bytes, and what stands before them. */
export interface Entry extends Block {
  /** The document's node: `parsed`, or one that says the same. */
  node: Node;
  /** The bytes of the block, with the line ends of the file. */
  raw: string;
  /** The bytes between the block before and this one. */
  gap: string;
  /** A list in the place of this one, with other markers: without them it would be one list with the one before. */
  insteadOf?: Entry;
  /** The gap that stood here before a blank line had to keep the block apart from the one before. */
  ownGap?: string;
}

/** The entries of a text, and what stands after the last one. */
export interface Entries {
  entries: Entry[];
  tail: string;
}

/** Cuts a text into entries. Every byte of it is in one of them or in the tail. */
export function readEntries(raw: string, isStart: boolean, labels?: Labels): Entries {
  const unified = unify(raw);
  const source = unified.text;
  const entries: Entry[] = [];
  let end = 0;
  for (const { built, start, stop } of readBlocks(source, isStart, labels)) {
    const gap = raw.slice(unified.at(end), unified.at(start));
    entries.push({ ...entryOf(built, source.slice(start, stop)), raw: rawSlice(raw, unified, start, stop), gap });
    end = stop;
  }
  return { entries, tail: raw.slice(unified.at(end)) };
}

const rawSlice = (raw: string, { at }: Unified, from: number, to: number) => raw.slice(at(from), at(to));

function entryOf({ node, piece }: Built, source: string): Omit<Entry, 'raw' | 'gap'> {
  return { node, parsed: node, piece, source };
}

/** An entry for an empty paragraph: it has no bytes. */
export function emptyEntry(node: Node, gap: string): Entry {
  const piece = { start: 0, end: 0, children: [], segments: [], inner: [0, 0] as const };
  return { node, parsed: nodes.paragraph.create(), piece, source: '', raw: '', gap };
}

interface Found {
  built: Built;
  start: number;
  stop: number;
}

/** The blocks of a source, each from the start of its first line. The piece counts from there. */
function readBlocks(source: string, isStart: boolean, labels?: Labels): Found[] {
  const reading = readSafely(source, isStart, labels);
  if (!reading) return source.trim() === '' ? [] : [rawBlock(source)];
  const reader = new BlockReader(source, reading.shift);
  const found: Found[] = [];
  let end = 0;
  for (const block of reading.blocks) {
    const from = block.position!.start.offset! - reading.shift;
    const stop = block.position!.end.offset! - reading.shift;
    const lineStart = source.lastIndexOf('\n', from - 1) + 1;
    const start = lineStart >= end && /^\s*$/.test(source.slice(lineStart, from)) ? lineStart : Math.max(from, end);
    found.push({ built: reader.read(block, start), start, stop });
    end = stop;
  }
  return found;
}

/** A parser that stumbles must not cost a note: its text is then shown as it is. */
function readSafely(source: string, isStart: boolean, labels?: Labels) {
  try {
    return read(source, isStart, labels);
  } catch {
    return null;
  }
}

function rawBlock(source: string): Found {
  const node = nodes.raw_block.create(null, schema.text(source));
  const segment = { at: 0, size: source.length, from: 0, length: source.length };
  const piece = { start: 0, end: source.length, children: [], segments: [segment], inner: [0, source.length] as const };
  return { built: { node, piece }, start: 0, stop: source.length };
}

/** Reads a source that should be exactly one block, of the given type, and nothing else. Null when it is not. */
export function readBlock(source: string, type: NodeType, labels?: Labels): Block | null {
  const block = readAnyBlock(source, type === nodes.front_matter, labels);
  return block?.parsed.type === type ? block : null;
}

/** The same for a block of any type. */
export function readAnyBlock(source: string, isStart: boolean, labels?: Labels): Block | null {
  const [only, ...more] = readBlocks(source, isStart, labels);
  if (!only || more.length > 0 || only.start !== 0 || source.slice(only.stop).trim() !== '') return null;
  return { source, parsed: only.built.node, piece: only.built.piece };
}
