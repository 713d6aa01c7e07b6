import assert from 'node:assert/strict';
import { test, type TestContext } from 'node:test';
import type { Node } from 'prosemirror-model';
import { EditorState, TextSelection } from 'prosemirror-state';
import { plainBehindLinks } from '../src/commands/behindLink';
import { typingRules } from '../src/commands/inputRules';
import { SourceDocument } from '../src/source/SourceDocument';
import { changeBetween } from '../src/source/update';
import { replacedInput } from './commands/onText';
import { commonMarkExamples, edgeNotes, gfmExamples, packageFiles, systemFiles, variants, type Sample } from './corpus';
import { difference, disagreement } from './editing';
import { Random, seedOf } from './random';

/** Typed into every sample. The blank makes it a word of its own, and dangerous beside a marker. */
const word = ' zqword';

const isLong = Boolean(process.env.LONG);

/** Longer texts are read back whole only in a long run: the blocks that were edited are read back anyway. */
const rereadLimit = isLong ? Infinity : 3000;

/** Every so manieth inexact edit is looked into: trying all places takes long. */
const inexactStep = isLong ? 1 : 4;

/** So many characters are read at most to look into one. */
const lookLimit = isLong ? 2_000_000 : 300_000;

interface Place {
  /** Position in the document. */
  at: number;
  /** Index of the top-level block. */
  block: number;
}

function textBlocks(doc: Node, only: (node: Node) => boolean): Array<{ start: number; size: number }> {
  const found: Array<{ start: number; size: number }> = [];
  doc.descendants((node, pos) => {
    if (node.isTextblock && only(node)) found.push({ start: pos + 1, size: node.content.size });
    return !node.isTextblock;
  });
  return found;
}

const place = (doc: Node, at: number): Place => ({ at, block: doc.resolve(at).index(0) });

function endOfLastParagraph(doc: Node): Place | null {
  const last = textBlocks(doc, (node) => node.type.name === 'paragraph').at(-1);
  return last ? place(doc, last.start + last.size) : null;
}

function somewhere(doc: Node, name: string): Place | null {
  const random = new Random(seedOf(name));
  const blocks = textBlocks(doc, () => true);
  if (blocks.length === 0) return null;
  const { start, size } = random.pick(blocks);
  return place(doc, start + random.below(size + 1));
}

/** The text before and behind a top-level block. */
function outside(source: SourceDocument, block: number): [string, string] {
  const { pieces } = source;
  const bytes = 2 + 2 * block;
  return [pieces.slice(0, bytes).join(''), pieces.slice(bytes + 1).join('')];
}

interface Outcome {
  edits: number;
  /** What must never happen. */
  wrong: string[];
  /** Edits that were not written as exactly the typed word, by what else was written. */
  inexact: Map<string, string[]>;
  /** How many of them were looked into for a place where the word alone would have done. */
  lookedInto: number;
  /** Those for which there is one: the word alone, put there, reads as what is shown. */
  missed: string[];
}

const countInexact = ({ inexact }: Outcome) => [...inexact.values()].reduce((sum, { length }) => sum + length, 0);

/** What was written with the word, where all older bytes still stand in their order. Null where some do not. */
function addition(older: string, written: string): string | null {
  if (!written.includes(word.trim())) return null;
  let kept = 0;
  let added = '';
  for (const letter of written.replace(word.trim(), '')) {
    if (kept < older.length && letter === older[kept]) kept += 1;
    else added += letter;
  }
  return kept === older.length ? added : null;
}

/** The kind of those that took older bytes away. */
const writtenAnew = 'the block is written anew';

/** A name for what an edit has written besides the word. */
function kindOf(older: string, written: string): string {
  const added = addition(older, written);
  if (added === null) return writtenAnew;
  if (written.includes('][')) return "the word is in a link's label, which stays behind the link";
  if (added.trim() === '') return /[\r\n]/.test(added) ? 'a line end keeps the next block apart' : "a mark's edge has moved";
  if (/^[\s\\]+$/.test(added)) return 'backslashes keep a character from becoming a marker';
  return /^[\s|:-]+$/.test(added) ? 'cells that the row did not have' : 'other marks';
}

/** Whether the word, put somewhere into the edited block and nothing else changed, reads as the document that is shown. */
function hasPlace(text: string, from: number, behind: number, shown: Node): boolean {
  for (let at = from; at <= text.length - behind; at += 1) {
    for (const insert of [word, word.trim()]) {
      if (difference(shown, SourceDocument.load(text.slice(0, at) + insert + text.slice(at)).doc) === null) return true;
    }
  }
  return false;
}

const rules = typingRules();

/** What is shown after the word was typed. */
interface Typed {
  doc: Node;
  /** Whether the blank has made a list or heading of the line before the word came. */
  isShortcut: boolean;
}

function withWord(source: SourceDocument, at: number): Typed {
  const fresh = EditorState.create({ doc: source.doc, plugins: [plainBehindLinks(), rules] });
  const state = fresh.apply(fresh.tr.setSelection(TextSelection.create(source.doc, at)));
  const shortened = replacedInput(rules, state, word[0]!);
  if (shortened && source.apply(shortened.doc).corrections.length === 0) {
    return { doc: shortened.apply(shortened.tr.insertText(word.trim())).doc, isShortcut: true };
  }
  return { doc: state.apply(state.tr.insertText(word)).doc, isShortcut: false };
}

function typeWord(source: SourceDocument, sample: Sample, { at, block }: Place, outcome: Outcome) {
  const name = `${sample.name} at ${at}`;
  const original = source.doc;
  const [before, behind] = outside(source, block);
  const typed = withWord(source, at);
  source.apply(typed.doc);
  const change = changeBetween(sample.text, source.text);
  const { text } = source;

  outcome.edits += 1;
  if (text !== source.pieces.join('')) outcome.wrong.push(`${name}: the text is not the sum of its pieces`);
  if (!text.startsWith(before) || !text.endsWith(behind)) outcome.wrong.push(`${name}: another block changed`);
  const isInsertion = change?.from === change?.to && change?.insert.trim() === word.trim();
  if (change && !isInsertion) {
    const kind = kindOf(sample.text.slice(change.from, change.to), change.insert);
    outcome.inexact.set(kind, [...(outcome.inexact.get(kind) ?? []), `${name}: ${JSON.stringify(change)}`]);
    const places = sample.text.length - before.length - behind.length + 1;
    // What a shortcut has written stays when the word comes.
    const isQuick = !typed.isShortcut && 2 * places * text.length <= lookLimit;
    const isLookedInto = isQuick && countInexact(outcome) % inexactStep === 0;
    if (isLookedInto) outcome.lookedInto += 1;
    if (isLookedInto && hasPlace(sample.text, before.length, behind.length, typed.doc)) {
      outcome.missed.push(`${name}: ${JSON.stringify(change)}`);
    }
  }
  const wrong = text.length <= rereadLimit ? disagreement(source) : null;
  if (wrong) outcome.wrong.push(`${name}: ${wrong}`);

  source.apply(original);
  if (source.text !== sample.text) outcome.wrong.push(`${name}: taking the word back did not bring the bytes back`);
}

/** Every sample as it is and, in turn, with other line ends or with a byte order mark; in a long run with each. */
const inTurn = (sample: Sample, index: number): Sample[] =>
  variants(sample).filter((_, variant) => isLong || variant === 0 || variant === 1 + (index % 2));

function check(samples: readonly Sample[], forms: (sample: Sample, index: number) => Sample[] = variants): Outcome {
  const outcome: Outcome = { edits: 0, wrong: [], inexact: new Map(), lookedInto: 0, missed: [] };
  for (const sample of samples.flatMap(forms)) {
    const source = SourceDocument.load(sample.text);
    if (source.text !== sample.text || source.pieces.join('') !== sample.text) {
      outcome.wrong.push(`${sample.name}: not byte-identical after load`);
    }
    source.doc.check();
    for (const place of [endOfLastParagraph(source.doc), somewhere(source.doc, sample.name)]) {
      if (place) typeWord(source, sample, place, outcome);
    }
  }
  return outcome;
}

const total: Outcome = { edits: 0, wrong: [], inexact: new Map(), lookedInto: 0, missed: [] };

function addToTotal(outcome: Outcome) {
  total.edits += outcome.edits;
  total.lookedInto += outcome.lookedInto;
  for (const [kind, cases] of outcome.inexact) total.inexact.set(kind, [...(total.inexact.get(kind) ?? []), ...cases]);
}

const percent = (share: number) => `${(100 * share).toFixed(2)} %`;

/** Says how many edits were exact, and fails when fewer than `share` of them were. */
function assertShare(context: TestContext, outcome: Outcome, share: number) {
  const exact = 1 - countInexact(outcome) / outcome.edits;
  context.diagnostic(`${outcome.edits} words typed, ${percent(exact)} exactly that insertion`);
  assert.ok(exact >= share, `only ${percent(exact)} of the words were written as exactly that insertion`);
}

/** Fails when anything was wrong, or when fewer than `share` of the edits were exact. Lists every case by name. */
function assertFaithful(context: TestContext, outcome: Outcome, share: number) {
  addToTotal(outcome);
  for (const [kind, cases] of outcome.inexact) for (const line of cases) context.diagnostic(`not exact, ${kind}: ${line}`);
  assert.deepEqual(outcome.wrong, []);
  assert.deepEqual(outcome.missed, []);
  assertShare(context, outcome, share);
}

test('the CommonMark examples keep their bytes', (context) => {
  assertFaithful(context, check(commonMarkExamples()), 0.97);
});

test('the GFM constructs keep their bytes', (context) => {
  assertFaithful(context, check(gfmExamples()), 0.98);
});

test('the edge notes keep their bytes', (context) => {
  assertFaithful(context, check(edgeNotes()), 0.99);
});

test('all Markdown files of the packages keep their bytes', (context) => {
  const files = packageFiles();
  assert.ok(files.length > 100, 'the packages are installed');
  assertFaithful(context, check(files, inTurn), 0.997);
});

/** A few of the system's files are enough where the run is to be quick. */
const isTried = ({ text }: Sample, index: number) => isLong || (index % 6 === 0 && text.length < 30_000);
const ofTheSystem = systemFiles().filter(isTried);

test("the Markdown files of the system's documentation keep their bytes", { skip: ofTheSystem.length === 0 }, (context) => {
  // Every machine has others.
  assertFaithful(context, check(ofTheSystem, inTurn), 0.975);
});

test('of all words typed so many are exactly that insertion', (context) => {
  for (const [kind, { length }] of total.inexact) context.diagnostic(`${length} not exact: ${kind}`);
  context.diagnostic(`${total.lookedInto} of these were looked into: the word alone would have read differently at every place`);
  assertShare(context, total, 0.978);
});

test('nearly all words typed take no older byte away', (context) => {
  const anew = total.inexact.get(writtenAnew)?.length ?? 0;
  const share = 1 - anew / total.edits;
  context.diagnostic(`${percent(share)} of ${total.edits} words are in the note with every older byte in its place`);
  assert.ok(share >= 0.99, `only ${percent(share)}`);
});
