import { Fragment, type Node } from 'prosemirror-model';
import { read, labelKey } from '../markdown/parse';
import { schema } from '../schema';
import { readEntries, type Entry } from './entries';
import { Journal } from './journal';
import { cutOut, isFolded, readFolded } from './folded';
import { Exchanged } from './exchanged';
import { foldedGroup, groupSize, rememberGroup } from './groups';
import { countLabels, differingLabels, rememberLabels, seemingDefinitions } from './labels';
import { differingRange, type Range } from './range';
import { readNote } from './reader';
import { reloaded } from './reload';
import { Retired } from './retired';
import type { TextChange } from './noteText';
import { relabel, restored, single, update, type Correction, type Note, type Updated } from './update';

const { nodes } = schema;

export type { Correction, TextChange };

/** What an edit of the document did to the text. */
export interface Applied {
  /** Null when the text is what it was. */
  change: TextChange | null;
  /**
   * Where the document that was handed in cannot be written as it is: what it has to become to say what the text
   * says. In ascending order, in children of that document.
   */
  corrections: readonly Correction[];
}

/** Where a definition points. */
export interface Target {
  url: string;
  title: string | null;
}

/**
 * A note as a document and as text at once. Every top-level block keeps its own bytes, so that an edit changes those
 * of the edited blocks and no others; what is written is read back before it counts.
 */
export class SourceDocument {
  private root: Node;
  private readonly retired = new Retired();
  private readonly journal = new Journal();
  private readonly exchanged = new Exchanged();
  /** The document that was handed in last, if it had to be corrected: until it is, it may be handed in again. */
  private uncorrected: { doc: Node; corrections: readonly Correction[] } | null = null;

  private constructor(private note: Note) {
    this.root = rootOf(note.entries);
  }

  /** Reads a note. Any text is one. Of a note longer than `length` the first part is read; the rest is folded. */
  static load(text: string, length = Infinity): SourceDocument {
    return new SourceDocument(readNote(text, length));
  }

  /**
   * Reads of a folded run what stands from `offset` on, `length` characters, to the next cuts. Tells what becomes of the
   * document; the text is the same.
   */
  unfold(folded: Node, offset = 0, length = Infinity): readonly Correction[] {
    const index = this.note.entries.findIndex(({ node }) => node === folded);
    if (index < 0) return [];
    const old = this.note.entries[index]!;
    const { entries, first, last } = cutOut(old, offset, length);
    const groups = entries.slice(first, last).map((entry) => readFolded(entry, this.note.labels));
    const corrections = this.exchange(index, [old], [...entries.slice(0, first), ...groups.flat(), ...entries.slice(last)]);
    let start = index + first;
    for (const [place, group] of groups.entries()) {
      const blocks = this.root.children.slice(start, (start += group.length));
      rememberLabels(entries[first + place]!.node, blocks);
      rememberGroup(entries[first + place]!.node, blocks);
    }
    return corrections;
  }

  /** Folds the blocks from `index` on that were folded together before. Nothing when they have changed since. */
  fold(index: number): readonly Correction[] {
    const folded = foldedGroup(this.note.entries, index);
    if (!folded) return [];
    const count = groupSize(this.root.children, index);
    return this.exchange(index, this.note.entries.slice(index, index + count), [folded]);
  }

  /** Puts other entries for the same bytes in place of some. */
  private exchange(index: number, gone: readonly Entry[], come: readonly Entry[]): readonly Correction[] {
    const { note } = this;
    const to = index + gone.length;
    const entries = [...note.entries.slice(0, index), ...come, ...note.entries.slice(to)];
    this.remember(index, gone, come);
    const grown = come.length - gone.length;
    const near = note.near && note.near.index >= to ? { ...note.near, index: note.near.index + grown } : undefined;
    const labels = countLabels(note.labels, gone.map(({ parsed }) => parsed), come.map(({ parsed }) => parsed));
    const before = entries.slice();
    const changed = relabel(entries, differingLabels(note.labels, labels), labels);
    for (const at of changed) this.remember(at, [before[at]!], [entries[at]!]);
    this.note = { ...note, entries, labels, near: note.near && note.near.index <= index ? note.near : near };
    this.uncorrected = null;
    this.root = rootOf(entries);
    const nodes = nodesOf(entries.slice(index, index + come.length));
    const elsewhere = changed
      .filter((at) => at < index || at >= index + come.length)
      .map((at) => single(entries, at, at < index ? at : at - grown));
    return [{ from: index, to, nodes }, ...elsewhere].sort((one, other) => one.from - other.from);
  }

  private remember(index: number, gone: readonly Entry[], come: readonly Entry[]) {
    this.journal.exchange(index, gone, come);
    this.exchanged.record(nodesOf(gone), nodesOf(come));
  }

  /** What stands for the blocks of an earlier state now that their labels are those of that state again. */
  private rememberRead(found: readonly Entry[], read: readonly Entry[]) {
    for (const [at, entry] of found.entries()) if (entry !== read[at]) this.remember(at, [entry], [read[at]!]);
  }

  /** The document that the text says. */
  get doc(): Node {
    return this.root;
  }

  /** The whole note, byte order mark and all. */
  get text(): string {
    return this.note.text.whole;
  }

  get length(): number {
    return this.note.text.length;
  }

  /** The top-level blocks with their bytes. */
  get blocks(): readonly Entry[] {
    return this.note.entries;
  }

  /** The pieces that the text is the sum of: the mark, then gap and bytes of each block in turn, then the tail. */
  get pieces(): readonly string[] {
    const { mark, entries, tail } = this.note;
    return [mark, ...entries.flatMap((entry) => [entry.gap, entry.raw]), tail];
  }

  /** Brings the text in step with an edited document. */
  apply(next: Node): Applied {
    if (next === this.root) return { change: null, corrections: [] };
    if (next === this.uncorrected?.doc) return { change: null, corrections: this.uncorrected.corrections };
    const before = this.note;
    const range = differingRange(this.root, next);
    const updated = this.earlier(this.root, next, range) ?? this.earlierNow(next, range) ?? update(before, next, range, this.retired);
    const { corrections } = updated;
    const old = this.root;
    this.root = corrections.length > 0 ? rootOf(updated.note.entries) : next;
    // A corrected document may be one that there was before, with bytes of its own.
    const { note, change, found } = (corrections.length > 0 && this.earlier(old, this.root)) || updated;
    this.note = note;
    this.uncorrected = corrections.length > 0 ? { doc: next, corrections } : null;
    this.journal.record(before.entries, found ?? note.entries);
    if (found) this.rememberRead(found, note.entries);
    return { change, corrections };
  }

  /** The same for a document in which the history has brought back runs that were unfolded since, or blocks that were folded. */
  private earlierNow(next: Node, { from, nextTo }: Range): Updated | null {
    const corrections = this.exchanged.since(next.children, from, nextTo);
    if (corrections.length === 0) return null;
    const children = next.children.slice();
    for (const { from: at, to, nodes } of [...corrections].reverse()) children.splice(at, to - at, ...nodes);
    const found = this.earlier(this.root, next.copy(Fragment.fromArray(children)));
    return found && { ...found, corrections: found.corrections.length > 0 ? [{ from: 0, to: next.childCount, nodes: nodesOf(found.note.entries) }] : corrections };
  }

  /** The note as it was when it last had this document. */
  private earlier(old: Node, doc: Node, range = differingRange(old, doc)): Updated | null {
    const entries = this.journal.find(this.note.entries, doc, range);
    if (!entries) return null;
    const { note, change } = restored(this.note, entries);
    // Blocks that were unfolded since were read with the labels of now.
    const relabelled = note.entries.slice();
    const changed = relabel(relabelled, differingLabels(this.note.labels, note.labels), note.labels);
    return { note: { ...note, entries: relabelled }, change, corrections: changed.map((at) => single(relabelled, at, at)), found: entries };
  }

  /**
   * Takes over a text that was changed from outside. Tells which top-level children of the document become which
   * nodes, or null when the text is the one at hand.
   */
  reload(text: string): readonly Correction[] | null {
    if (text === this.text) return null;
    const { note, corrections } = reloaded(this.note, text);
    this.journal.record(this.note.entries, note.entries);
    this.note = note;
    this.uncorrected = null;
    this.root = rootOf(note.entries);
    return corrections;
  }

  /**
   * Reads Markdown that is to be put into the note, such as pasted text. The nodes that come back keep the bytes of
   * their source if they are put in whole.
   */
  adopt(text: string): Node[] {
    const { entries } = readEntries(text, false, this.note.labels);
    for (const entry of entries) this.retired.add(entry);
    return entries.map((entry) => entry.node);
  }

  /** Reads a part of the note that is folded, to look into it. */
  peek(part: string): Node[] {
    return nodesOf(readEntries(part, false, this.note.labels).entries);
  }

  /** The bytes of a top-level block of the document. Null for a node that is none. */
  sliceOf(node: Node): string | null {
    return this.note.entries.find((entry) => entry.node === node)?.raw ?? null;
  }

  /** What a reference link or picture points to. Null for a label that is not defined. */
  definitionFor(label: string): Target | null {
    const key = labelKey(label);
    for (const entry of this.note.entries) {
      if (!entry.source.includes(']:')) continue;
      const target = isFolded(entry.node) ? definitionInFolded(entry.source, key) : definitionIn(entry.source, key);
      if (target) return target;
    }
    return null;
  }
}

const nodesOf = (entries: readonly Entry[]): Node[] => entries.map(({ node }) => node);

function rootOf(entries: readonly Entry[]): Node {
  return nodes.doc.create(null, Fragment.fromArray(nodesOf(entries)));
}

/** A run that is not read is looked through for the lines that seem to define. */
function definitionInFolded(source: string, key: string): Target | null {
  for (const { label, at } of seemingDefinitions(source)) {
    if (label !== key) continue;
    const lines = source.slice(at, at + 2_000).split('\n', 3).join('\n');
    const target = definitionIn(lines, key);
    if (target) return target;
  }
  return null;
}

function definitionIn(source: string, key: string): Target | null {
  const found: Target[] = [];
  const visit = (block: {
    type: string;
    children?: unknown[];
    identifier?: string;
    url?: string;
    title?: string | null;
  }) => {
    if (block.type === 'definition' && block.identifier === key)
      found.push({ url: block.url!, title: block.title ?? null });
    for (const child of block.children ?? []) visit(child as never);
  };
  for (const block of read(source, false).blocks) visit(block as never);
  return found[0] ?? null;
}
