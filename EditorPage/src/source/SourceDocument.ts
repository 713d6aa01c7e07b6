import { Fragment, type Node } from 'prosemirror-model';
import { read, labelKey } from '../markdown/parse';
import { schema } from '../schema';
import { readEntries, type Entry } from './entries';
import { Journal } from './journal';
import { differingRange } from './range';
import { NoteReader } from './reader';
import { Retired } from './retired';
import { changeBetween, restored, update, type Correction, type Note, type TextChange, type Updated } from './update';

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
  /** The document that was handed in last, if it had to be corrected: until it is, it may be handed in again. */
  private uncorrected: { doc: Node; corrections: readonly Correction[] } | null = null;

  private constructor(
    private note: Note,
    private reader: NoteReader,
  ) {
    this.root = rootOf(note.entries);
  }

  /**
   * Reads a note. Any text is one. Of a longer note only the first part is read, of about `length` characters, and its
   * document is complete once `readOn` has read the rest; its text is from the start.
   */
  static load(text: string, length = Infinity): SourceDocument {
    const reader = new NoteReader(text);
    return new SourceDocument(reader.begin(length), reader);
  }

  /** Whether the document is complete. */
  get isRead(): boolean {
    return this.reader.isAtEnd;
  }

  /** Reads about `length` characters more, and tells what the document has to become with them. */
  readOn(length = Infinity): Correction | null {
    if (this.isRead) return null;
    const before = this.note.entries;
    this.readPart(length);
    if (this.isRead && !this.reader.isRight(this.note)) return this.replaced(before, this.text);
    return { from: before.length, to: before.length, nodes: this.root.children.slice(before.length) };
  }

  /** Reads the note to its end, and gives the edited document with the rest behind it. */
  completed(edited: Node): Node {
    if (this.isRead) return edited;
    const count = this.root.childCount;
    this.readPart(Infinity);
    return edited.copy(edited.content.append(Fragment.fromArray(this.root.children.slice(count))));
  }

  private readPart(length: number) {
    this.note = this.reader.readOn(this.note, length);
    this.root = rootOf(this.note.entries);
  }

  /** The document that the text says. */
  get doc(): Node {
    return this.root;
  }

  /** The whole note, byte order mark and all. */
  get text(): string {
    return this.note.text;
  }

  /** The top-level blocks with their bytes, as far as they were read. */
  get blocks(): readonly Entry[] {
    return this.note.entries;
  }

  /** The pieces that the text is the sum of: the mark, then gap and bytes of each block in turn, then the tail. */
  get pieces(): readonly string[] {
    const { mark, entries, tail } = this.note;
    return [mark, ...entries.flatMap((entry) => [entry.gap, entry.raw]), tail];
  }

  /** Brings the text in step with an edited document, which is complete. */
  apply(next: Node): Applied {
    if (!this.isRead) throw new Error('an edit of a note that was not read to its end');
    if (next === this.root) return { change: null, corrections: [] };
    if (next === this.uncorrected?.doc) return { change: null, corrections: this.uncorrected.corrections };
    const before = this.note;
    const range = differingRange(this.root, next);
    const updated = this.earlier(this.root, next, range) ?? update(before, next, range, this.retired);
    const { corrections } = updated;
    const old = this.root;
    this.root = corrections.length > 0 ? rootOf(updated.note.entries) : next;
    // A corrected document may be one that there was before, with bytes of its own.
    const { note, change } = (corrections.length > 0 && this.earlier(old, this.root)) || updated;
    this.note = note;
    this.uncorrected = corrections.length > 0 ? { doc: next, corrections } : null;
    this.journal.record(before.entries, note.entries);
    return { change, corrections };
  }

  /** The note as it was when it last had this document. */
  private earlier(old: Node, doc: Node, range = differingRange(old, doc)): Updated | null {
    const entries = this.journal.find(this.note.entries, doc, range);
    if (!entries) return null;
    const note = restored(this.note, entries);
    return { note, change: changeBetween(this.note.text, note.text), corrections: [] };
  }

  /**
   * Takes over a text that was changed from outside. Tells which top-level children of the document become which
   * nodes, or null when the text is the one at hand.
   */
  reload(text: string): Correction | null {
    if (text === this.note.text) return null;
    return this.replaced(this.note.entries, text);
  }

  /** Reads a text at once, in place of one that had the entries `before`. */
  private replaced(before: readonly Entry[], text: string): Correction {
    this.reader = new NoteReader(text);
    const next = this.reader.begin(Infinity);
    const { start, end } = commonEntries(before, next.entries);
    const offset = before.length - next.entries.length;
    const entries = next.entries.map((entry, index) => {
      if (index < start) return { ...entry, node: before[index]!.node };
      return index >= next.entries.length - end ? { ...entry, node: before[index + offset]!.node } : entry;
    });
    this.note = { ...next, entries };
    this.uncorrected = null;
    this.root = rootOf(entries);
    this.journal.record(before, entries);
    const nodes = entries.slice(start, entries.length - end).map((entry) => entry.node);
    return { from: start, to: before.length - end, nodes };
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

  /** The bytes of a top-level block of the document. Null for a node that is none. */
  sliceOf(node: Node): string | null {
    return this.note.entries.find((entry) => entry.node === node)?.raw ?? null;
  }

  /** What a reference link or picture points to. Null for a label that is not defined. */
  definitionFor(label: string): Target | null {
    const key = labelKey(label);
    for (const entry of this.note.entries) {
      if (!entry.source.includes(']:')) continue;
      const target = definitionIn(entry, key);
      if (target) return target;
    }
    return null;
  }
}

function rootOf(entries: readonly Entry[]): Node {
  return nodes.doc.create(null, Fragment.fromArray(entries.map((entry) => entry.node)));
}

const isUnchanged = (a: Entry, b: Entry) => a.raw === b.raw && (a.parsed === b.parsed || a.parsed.eq(b.parsed));

function commonEntries(a: readonly Entry[], b: readonly Entry[]): { start: number; end: number } {
  const shorter = Math.min(a.length, b.length);
  let start = 0;
  while (start < shorter && isUnchanged(a[start]!, b[start]!)) start += 1;
  let end = 0;
  while (end < shorter - start && isUnchanged(a[a.length - 1 - end]!, b[b.length - 1 - end]!)) end += 1;
  return { start, end };
}

function definitionIn(entry: Entry, key: string): Target | null {
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
  for (const block of read(entry.source, false).blocks) visit(block as never);
  return found[0] ?? null;
}
