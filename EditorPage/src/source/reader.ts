import { labelKey } from '../markdown/parse';
import { schema } from '../schema';
import { safeCuts } from './cuts';
import { emptyEntry, readEntries } from './entries';
import { countLabels } from './labels';
import { mainLineEnd } from './text';
import type { Note } from './update';

const { nodes } = schema;

/** Lines that look like definitions of links and footnotes, also in quotes and lists. Not all of them need be some. */
const definitionForm =
  /^[ \t>*+\-\d.)]*\[(\^[^\]\r\n]+(?=\]:)|(?:[^[\]\\\r\n]|\\.)+(?=\]:[ \t]*(?:(?:<[^>\r\n]*>|[^\s<]\S*)[ \t]*(?:["'(].*)?)?$))/gm;

/**
 * Reads a note at once or part by part. A part ends where what follows reads the same without it. What was not read yet
 * stands in the note's tail, so that the note has its whole text from the first part on.
 */
export class NoteReader {
  private readonly mark: string;
  private readonly body: string;
  private readonly cuts: Generator<number, void>;
  /** Labels that the note seems to define somewhere: every part is read as if it did. */
  private readonly assumed: ReadonlySet<string>;
  /** How much of the body was read. */
  private at = 0;
  /** What stands behind the last block that was read. */
  private space = '';

  constructor(private readonly text: string) {
    this.mark = text.startsWith('\ufeff') ? '\ufeff' : '';
    this.body = text.slice(this.mark.length);
    this.cuts = safeCuts(this.body);
    const labels = [...this.body.matchAll(definitionForm)].map(([, label]) => labelKey(label!));
    this.assumed = new Set(labels);
  }

  get isAtEnd(): boolean {
    return this.at === this.body.length;
  }

  /** Whether the note that was read defines what it seemed to. If not, some links may have been read for text, or text for links. */
  isRight({ labels }: Note): boolean {
    return labels.size === this.assumed.size && [...labels.keys()].every((label) => this.assumed.has(label));
  }

  /** Reads the first part, of at least `length` characters where there are as many. */
  begin(length: number): Note {
    const part = this.part(length);
    const { entries, tail } = readEntries(part, true, this.isAtEnd ? undefined : this.assumed);
    const hasBlock = entries.some((entry) => entry.node.type !== nodes.front_matter);
    if (!hasBlock) entries.push(emptyEntry(nodes.paragraph.create(), ''));
    this.space = tail;
    const labels = countLabels(new Map(), [], entries.map((entry) => entry.parsed));
    return { mark: this.mark, entries, tail: this.tail, text: this.text, labels, lineEnd: mainLineEnd(this.text) };
  }

  /** The note with the next part read too. */
  readOn(note: Note, length: number): Note {
    const { entries, tail } = readEntries(this.part(length), false, this.assumed);
    const [first, ...others] = entries;
    const added = first ? [{ ...first, gap: this.space + first.gap }, ...others] : [];
    this.space = first ? tail : this.space + tail;
    const labels = countLabels(note.labels, [], added.map((entry) => entry.parsed));
    return { ...note, entries: note.entries.concat(added), labels, tail: this.tail };
  }

  private get tail(): string {
    return this.space + this.body.slice(this.at);
  }

  private part(length: number): string {
    const from = this.at;
    let cut = this.cuts.next();
    while (!cut.done && cut.value - from < length) cut = this.cuts.next();
    this.at = cut.done ? this.body.length : cut.value;
    return this.body.slice(from, this.at);
  }
}
