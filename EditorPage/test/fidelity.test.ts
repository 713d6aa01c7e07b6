import assert from 'node:assert/strict';
import { test, type TestContext } from 'node:test';
import type { Node } from 'prosemirror-model';
import { EditorState, TextSelection } from 'prosemirror-state';
import { plainBehindLinks } from '../src/commands/behindLink';
import { SourceDocument } from '../src/source/SourceDocument';
import { commonMarkExamples, edgeNotes, gfmExamples, packageFiles, systemFiles, variants, type Sample } from './corpus';
import { difference, disagreement } from './editing';
import { Random, seedOf } from './random';

/** Typed into every sample. The blank makes it a word of its own, and dangerous beside a marker. */
const word = ' zqword';

/** Longer texts are read back whole only when LONG is set: the blocks that were edited are read back anyway. */
const rereadLimit = process.env.LONG ? Infinity : 3000;

/** Every so manieth inexact edit is looked into: trying all places takes long. */
const inexactStep = process.env.LONG ? 1 : 4;

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
  /** Edits that were not written as exactly the typed word. */
  inexact: string[];
  /** Those of them for which there would have been a place: the word alone, put there, reads as what is shown. */
  missed: string[];
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

function typeWord(source: SourceDocument, sample: Sample, { at, block }: Place, outcome: Outcome) {
  const name = `${sample.name} at ${at}`;
  const original = source.doc;
  const [before, behind] = outside(source, block);
  const fresh = EditorState.create({ doc: original, plugins: [plainBehindLinks()] });
  const state = fresh.apply(fresh.tr.setSelection(TextSelection.create(original, at)));
  const typed = state.apply(state.tr.insertText(word)).doc;
  const { change } = source.apply(typed);
  const { text } = source;

  outcome.edits += 1;
  if (text !== source.pieces.join('')) outcome.wrong.push(`${name}: the text is not the sum of its pieces`);
  if (!text.startsWith(before) || !text.endsWith(behind)) outcome.wrong.push(`${name}: another block changed`);
  const isInsertion = change?.from === change?.to && change?.insert.trim() === word.trim();
  if (!isInsertion) outcome.inexact.push(`${name}: ${JSON.stringify(change)}`);
  const isLookedInto = !isInsertion && text.length <= rereadLimit && outcome.inexact.length % inexactStep === 0;
  if (isLookedInto && hasPlace(sample.text, before.length, behind.length, typed)) {
    outcome.missed.push(`${name}: ${JSON.stringify(change)}`);
  }
  const wrong = text.length <= rereadLimit ? disagreement(source) : null;
  if (wrong) outcome.wrong.push(`${name}: ${wrong}`);

  source.apply(original);
  if (source.text !== sample.text) outcome.wrong.push(`${name}: taking the word back did not bring the bytes back`);
}

/** Every sample as it is and, in turn, with other line ends or with a byte order mark; in a long run with each. */
const inTurn = (sample: Sample, index: number): Sample[] =>
  variants(sample).filter((_, variant) => process.env.LONG || variant === 0 || variant === 1 + (index % 2));

function check(samples: readonly Sample[], forms: (sample: Sample, index: number) => Sample[] = variants): Outcome {
  const outcome: Outcome = { edits: 0, wrong: [], inexact: [], missed: [] };
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

/** Fails when anything was wrong, or when fewer than `share` of the edits were exact. Lists every case by name. */
function assertFaithful(context: TestContext, { edits, wrong, inexact, missed }: Outcome, share: number) {
  const exact = (edits - inexact.length) / edits;
  context.diagnostic(`${edits} words typed, ${(100 * exact).toFixed(2)} % exactly that insertion`);
  for (const line of inexact) context.diagnostic(`not exact: ${line}`);
  assert.deepEqual(wrong, []);
  assert.deepEqual(missed, []);
  assert.ok(exact >= share, `only ${(100 * exact).toFixed(2)} % of the words were written as exactly that insertion`);
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

if (process.env.LONG) {
  test('all Markdown files of the system keep their bytes', (context) => {
    assertFaithful(context, check(systemFiles()), 0.99);
  });
}
