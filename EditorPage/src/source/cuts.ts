/**
 * Finds where a note can be cut so that its parts read as the whole does. It looks at the beginnings of lines only, which is
 * many times faster than reading; where it cannot be sure it finds no more cuts.
 */

const frontMatterForm = /^(---|\+\+\+)[ \t]*(?:\r\n?|\n)(?:[^]*?(?:\r\n?|\n))?\1[ \t]*(?:\r\n?|\n|$)/;
const lineForm = /([^\r\n]*)(?:\r\n?|\n|$)/y;

/** A line that begins a paragraph or a heading, whatever stands before the blank line above it. */
const plainForm = /^(?:#{1,6}[ \t]|(?!\p{L}{1,3}[.)])\p{L})/u;
/** Whether a line begins a block of its own wherever it stands behind an empty line. */
export const isPlainLine = (line: string): boolean => plainForm.test(line);

const ruleForm = /^(?:[-*_][ \t]*){3,}$/;
const markerForm = /^([-+*]|\d{1,9}[.)]|\[\^[^\]]+\]:)([ \t]+|$)(.*)/;
const footnoteIndent = 4;

/** What may open something lasting, wherever it stands. */
const maybeLasting = /`{3}|~{3}|\${2}|<[!?a-z]/i;

/** Something that goes on over blank lines until `end` matches a line. */
interface Lasting {
  opening: RegExp;
  end: (fence: string) => RegExp;
  /** Whether the end may stand in the line of the opening. */
  canBeOneLine: boolean;
}

const closingFence = (fence: string) => new RegExp(`^ {0,3}[${fence[0]}]{${fence.length},}[ \\t]*$`);

const lasting: readonly Lasting[] = [
  { opening: /^`{3,}(?=[^`]*$)/, end: closingFence, canBeOneLine: false },
  { opening: /^~{3,}/, end: closingFence, canBeOneLine: false },
  { opening: /^\${2,}(?=[^$]*$)/, end: closingFence, canBeOneLine: false },
  { opening: /^<(?:script|pre|style|textarea)(?=[ \t>]|$)/i, end: () => /<\/(?:script|pre|style|textarea)>/i, canBeOneLine: true },
  { opening: /^<!--/, end: () => /-->/, canBeOneLine: true },
  { opening: /^<\?/, end: () => /\?>/, canBeOneLine: true },
  { opening: /^<!\[CDATA\[/, end: () => /\]\]>/, canBeOneLine: true },
  { opening: /^<![A-Za-z]/, end: () => />/, canBeOneLine: true },
];

/**
 * Gives the offsets of safe cuts in ascending order, each at the start of a line, never before the first block. `isStart`
 * says that the text begins a note, where front matter may stand.
 */
export function* safeCuts(text: string, isStart = true): Generator<number, void> {
  const lines = new Lines();
  let at = (isStart && frontMatterForm.exec(text)?.[0].length) || 0;
  while (at < text.length) {
    lineForm.lastIndex = at;
    const [ended, line] = lineForm.exec(text) as unknown as [string, string];
    if (lines.canCutBefore(line)) yield at;
    if (!lines.take(line)) return;
    at += ended.length;
  }
}

/** What is open while the lines of a note go by. */
class Lines {
  private until: RegExp | null = null;
  /** The indentation of lines that belong to the list item or footnote last seen; 'unsure' where that cannot be told. */
  private inner: number | 'unsure' | null = null;
  private isMarkup = false;
  /** Whether an item, quote or footnote may hold something that only its end closes: it must not end a part. */
  private isOpenInside = false;
  private isAfterBlank = true;
  private hasBlock = false;

  /** Whether the note can be cut before `line`, the next one. */
  canCutBefore(line: string): boolean {
    return this.hasBlock && this.isAfterBlank && !this.isOpenInside && isPlainLine(line);
  }

  /** Takes the next line. False when it cannot be told for sure what it opens. */
  take(line: string): boolean {
    const blanks = /^[ \t]*/.exec(line)![0];
    const isBlank = blanks.length === line.length;
    let isSure = true;
    if (this.until) {
      if (this.until.test(line)) this.until = null;
      this.isAfterBlank = false;
      return true;
    }
    if (isBlank) this.isMarkup = false;
    else isSure = this.takeText(line.slice(blanks.length), blanks.includes('\t') ? Infinity : blanks.length);
    this.isAfterBlank = isBlank;
    this.hasBlock ||= !isBlank;
    return isSure;
  }

  private takeText(content: string, indent: number): boolean {
    const isInside = indent > 3 || (typeof this.inner === 'number' && indent >= this.inner);
    const marker = isInside || ruleForm.test(content) ? null : markerForm.exec(content);
    if (marker) this.inner = this.innerOf(marker, indent);
    if (isInside || marker || content.startsWith('>')) {
      this.isOpenInside ||= maybeLasting.test(content);
      if (isInside || marker) return true;
    } else if (indent === 0 && this.isAfterBlank) {
      this.isOpenInside = false;
    }
    const found = lasting.find(({ opening }) => opening.test(content));
    if (found) return this.open(found, content, indent);
    this.isMarkup ||= content.startsWith('<');
    this.endContainer(indent);
    return true;
  }

  /** Where the text of an item begins, if the line is an item for sure and has text. */
  private innerOf([, marker, blanks, text]: RegExpExecArray, indent: number): number | 'unsure' {
    const isItem = indent === 0 && (this.isAfterBlank || typeof this.inner === 'number');
    if (!isItem || text === '' || blanks!.includes('\t')) return 'unsure';
    if (marker!.startsWith('[')) return footnoteIndent;
    return marker!.length + (blanks!.length > 4 ? 1 : blanks!.length);
  }

  private open({ opening, end, canBeOneLine }: Lasting, content: string, indent: number): boolean {
    const isMaybeInside = this.inner !== null && indent > 0;
    if (isMaybeInside || this.isMarkup || /^<!--?-?>/.test(content)) return false;
    const [start] = opening.exec(content)!;
    const closing = end(start);
    const isOneLine = canBeOneLine && closing.test(content.slice(start.length));
    this.until = isOneLine ? null : closing;
    this.inner = null;
    return true;
  }

  /** A line that does not belong to an item ends it after a blank line; otherwise it may continue its paragraph. */
  private endContainer(indent: number) {
    if (this.inner === null) return;
    const hasEnded = this.isAfterBlank && (indent === 0 || this.inner !== 'unsure');
    this.inner = hasEnded ? null : 'unsure';
  }
}
