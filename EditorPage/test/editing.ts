import { joinBackward, joinForward, setBlockType, splitBlock, toggleMark, wrapIn } from 'prosemirror-commands';
import { history, isHistoryTransaction, redo, undo } from 'prosemirror-history';
import type { Node } from 'prosemirror-model';
import { liftListItem, sinkListItem, splitListItem, wrapInList } from 'prosemirror-schema-list';
import { EditorState, TextSelection, type Command, type Transaction } from 'prosemirror-state';
import {
  addColumnAfter,
  addRowAfter,
  addRowBefore,
  deleteColumn,
  deleteRow,
  toggleHeaderRow,
} from 'prosemirror-tables';
import { tableShape } from '../src/commands/tableShape';
import { schema } from '../src/schema';
import type { Sample } from './corpus';
import { Pins } from '../src/folding/pins';
import { execEdits } from './execEdits';
import { SourceDocument, type Correction } from '../src/source/SourceDocument';
import { isBlank, isSame } from '../src/source/normal';
import type { Random } from './random';

const { nodes, marks } = schema;

/** A note being edited, as the page does it: the text follows every change of the document. */
export class Session {
  readonly source: SourceDocument;
  state: EditorState;
  readonly pins = new Pins();

  /** A longer note than `length` is folded behind its first part. */
  constructor(text: string, length = Infinity) {
    this.source = SourceDocument.load(text, length);
    this.state = EditorState.create({ doc: this.source.doc, plugins: [history({ newGroupDelay: 0 }), tableShape()] });
  }

  /** Carries out a change, and what the text then makes of the document. */
  dispatch(transaction: Transaction): void {
    const next = this.state.apply(transaction);
    if (!transaction.docChanged) {
      this.state = next;
      return;
    }
    const { corrections } = this.source.apply(next.doc);
    this.state = next;
    this.pins.take(transaction);
    if (corrections.length === 0) return;
    const { tr } = this.state;
    for (const { from, to, nodes: come } of [...corrections].reverse()) {
      const start = offsetOf(next.doc, from);
      tr.replaceWith(start, offsetOf(next.doc, to), come);
    }
    this.pins.take(tr);
    if (isHistoryTransaction(transaction)) tr.setMeta('addToHistory', false);
    else tr.setMeta('appendedTransaction', transaction);
    this.state = this.state.apply(tr);
    const again = this.source.apply(this.state.doc);
    if (again.change || again.corrections.length > 0) throw new Error('a correction changed the text again');
  }

  /** Brings the document to what folding or unfolding has made of it. */
  refold(corrections: readonly Correction[]): void {
    const { tr } = this.state;
    for (const { from, to, nodes: come } of [...corrections].reverse()) {
      tr.replaceWith(offsetOf(this.state.doc, from), offsetOf(this.state.doc, to), come);
    }
    this.state = this.state.apply(tr.setMeta('addToHistory', false));
  }

  /** Runs a command. False when it does not apply. */
  run(command: Command): boolean {
    return command(this.state, (transaction) => this.dispatch(transaction));
  }

  select(from: number, to = from): void {
    const { doc } = this.state;
    this.state = this.state.apply(
      this.state.tr.setSelection(TextSelection.between(doc.resolve(from), doc.resolve(to))),
    );
  }

  undoAll(): void {
    while (this.run(undo));
  }

  redoAll(): void {
    while (this.run(redo));
  }
}

function offsetOf(doc: Node, index: number): number {
  let offset = 0;
  for (let child = 0; child < index; child += 1) offset += doc.child(child).nodeSize;
  return offset;
}

/** What is wrong between a document and its text, or null. */
export function disagreement(source: SourceDocument): string | null {
  return difference(source.doc, SourceDocument.load(source.text).doc);
}

/** Where two documents do not say the same, or null. */
export function difference(one: Node, other: Node): string | null {
  const shown = one.children.filter((node) => !isBlank(node));
  const read = other.children.filter((node) => !isBlank(node));
  const count = Math.max(shown.length, read.length);
  for (let index = 0; index < count; index += 1) {
    const a = shown[index];
    const b = read[index];
    if (!a || !b || !isSame(a, b)) return `shown ${clip(a)}, read ${clip(b)}`;
  }
  return null;
}

const clip = (node: Node | undefined) =>
  node ? `${node.type.name} ${JSON.stringify(node.toJSON()).slice(0, 400)}` : 'nothing';

interface TextBlock {
  node: Node;
  start: number;
  end: number;
}

function textBlocks(doc: Node, only?: (node: Node) => boolean): TextBlock[] {
  const found: TextBlock[] = [];
  doc.descendants((node, pos) => {
    if (!node.isTextblock) return true;
    if (!only || only(node)) found.push({ node, start: pos + 1, end: pos + 1 + node.content.size });
    return false;
  });
  return found;
}

const isParagraph = (node: Node) => node.type === nodes.paragraph;

function at(session: Session, random: Random, command: Command, only = isParagraph, place?: 'start'): boolean {
  const blocks = textBlocks(session.state.doc, only);
  if (blocks.length === 0) return false;
  const { start, end } = random.pick(blocks);
  session.select(place === 'start' ? start : start + random.below(end - start + 1));
  return session.run(command);
}

const words = [' word', 'x', ' ', 'Å', '. ', '漢字', '👩‍👧'];
const active = [
  '_',
  '*',
  '**',
  '# ',
  '#',
  '[a]',
  '[[b]]',
  '1. ',
  '- ',
  '+ ',
  '<b>',
  '<',
  '|',
  '$5',
  '$x$',
  '`',
  '``',
  '==',
  '=',
  '~~',
  '> ',
  '\\',
  '&amp;',
  '![',
  ']',
  '(',
  ')',
  'A. ',
  'www.x.se',
  'http://y.se ',
  '---',
  '```',
  '    ',
  '\t',
  '!',
  '[^1]',
  ':',
  '%%',
  '^',
];

function typeText(session: Session, random: Random, text: string): boolean {
  const blocks = textBlocks(session.state.doc);
  if (blocks.length === 0) return false;
  const { start, end } = random.pick(blocks);
  session.dispatch(session.state.tr.insertText(text, start + random.below(end - start + 1)));
  return true;
}

function selectPart(session: Session, random: Random, only?: (node: Node) => boolean): boolean {
  const blocks = textBlocks(session.state.doc, (node) => node.content.size > 1 && (!only || only(node)));
  if (blocks.length === 0) return false;
  const { start, end } = random.pick(blocks);
  const from = start + random.below(end - start);
  session.select(from, Math.min(end, from + 1 + random.below(12)));
  return true;
}

function deletePart(session: Session, random: Random): boolean {
  const blocks = textBlocks(session.state.doc, (node) => node.content.size > 0);
  if (blocks.length === 0) return false;
  const { start, end } = random.pick(blocks);
  const from = start + random.below(end - start);
  session.dispatch(session.state.tr.delete(from, Math.min(end, from + 1 + random.below(6))));
  return true;
}

function selectRange(session: Session, random: Random, reach: number): boolean {
  const { size } = session.state.doc.content;
  const from = random.below(size + 1);
  session.select(from, Math.min(size, from + random.below(reach)));
  return !session.state.selection.empty;
}

function toggleTask(session: Session, random: Random): boolean {
  const items: number[] = [];
  session.state.doc.descendants((node, pos) => {
    if (node.type === nodes.list_item) items.push(pos);
  });
  if (items.length === 0) return false;
  const pos = random.pick(items);
  const next = random.pick([null, false, true]);
  session.dispatch(session.state.tr.setNodeMarkup(pos, null, { checked: next }));
  return true;
}

function insertNode(session: Session, random: Random): boolean {
  const node = random.pick([
    () => nodes.image.create({ src: 'a b.png', alt: 'x' }),
    () => nodes.wikilink.create({ target: 'Note', alias: random.pick([null, 'other']) }),
    () => nodes.math_inline.create({ value: 'x^2' }),
    () => nodes.hard_break.create(),
    () => nodes.html_inline.create({ value: '<br>' }),
  ])();
  return at(
    session,
    random,
    (state, dispatch) => {
      const { $from } = state.selection;
      if (!$from.parent.canReplaceWith($from.index(), $from.index(), node.type)) return false;
      dispatch?.(state.tr.replaceSelectionWith(node));
      return true;
    },
    (block) => !block.type.spec.code,
  );
}

const delimited = [marks.strong, marks.em, marks.strike, marks.highlight, marks.code];
const item = nodes.list_item;

/** One edit at a place of chance. False when there is no place for it. */
export type Edit = (session: Session, random: Random) => boolean;

/** The edits that a random sequence is made of. */
export const edits: Record<string, Edit> = {
  word: (session, random) => typeText(session, random, random.pick(words)),
  active: (session, random) => typeText(session, random, random.pick(active)),
  erase: deletePart,
  split: (session, random) => at(session, random, splitBlock, (node) => !node.type.spec.code),
  joinBackward: (session, random) => at(session, random, joinBackward, isParagraph, 'start'),
  joinForward: (session, random) => {
    const blocks = textBlocks(session.state.doc, isParagraph);
    if (blocks.length === 0) return false;
    session.select(random.pick(blocks).end);
    return session.run(joinForward);
  },
  mark: (session, random) =>
    selectPart(session, random, (node) => !node.type.spec.code) && session.run(toggleMark(random.pick(delimited))),
  link: (session, random) =>
    selectPart(session, random, (node) => !node.type.spec.code) &&
    session.run(toggleMark(marks.link, { href: 'http://z.se' })),
  heading: (session, random) => at(session, random, setBlockType(nodes.heading, { level: 1 + random.below(6) })),
  paragraph: (session, random) =>
    at(session, random, setBlockType(nodes.paragraph), (node) => node.type === nodes.heading),
  code: (session, random) => at(session, random, setBlockType(nodes.code_block, { lang: random.pick([null, 'js']) })),
  quote: (session, random) => at(session, random, wrapIn(nodes.blockquote)),
  bulletList: (session, random) => at(session, random, wrapInList(nodes.list, { kind: 'bullet' })),
  orderedList: (session, random) =>
    at(session, random, wrapInList(nodes.list, { kind: 'ordered', start: 1 + random.below(3) })),
  splitItem: (session, random) => at(session, random, splitListItem(item)),
  sinkItem: (session, random) => at(session, random, sinkListItem(item)),
  liftItem: (session, random) => at(session, random, liftListItem(item)),
  task: toggleTask,
  insert: insertNode,
  deleteRange: (session, random) => {
    if (!selectRange(session, random, 400)) return false;
    session.dispatch(session.state.tr.deleteSelection());
    return true;
  },
  moveBlock: (session, random) => {
    const { doc, tr } = session.state;
    if (doc.childCount < 2) return false;
    const index = random.below(doc.childCount - 1);
    const first = doc.child(index);
    if (first.type === nodes.front_matter) return false;
    const start = offsetOf(doc, index);
    const second = doc.child(index + 1);
    session.dispatch(tr.replaceWith(start, start + first.nodeSize + second.nodeSize, [second, first]));
    return true;
  },
  rule: (session, random) => {
    const { doc } = session.state;
    const index = 1 + random.below(doc.childCount);
    session.dispatch(session.state.tr.insert(offsetOf(doc, index), nodes.horizontal_rule.create()));
    return true;
  },
  cell: (session, random) => {
    const blocks = textBlocks(
      session.state.doc,
      (node) => node.type === nodes.table_cell || node.type === nodes.table_header,
    );
    if (blocks.length === 0) return false;
    const { start, end } = random.pick(blocks);
    session.dispatch(
      session.state.tr.insertText(random.pick([...words, ...active]), start + random.below(end - start + 1)),
    );
    return true;
  },
};

const isCell = (node: Node) => node.type === nodes.table_cell || node.type === nodes.table_header;

const letters: Command = (state, dispatch) => {
  const { $from } = state.selection;
  if ($from.depth !== 1) return false;
  const make = (paragraph: Node) => nodes.letter_item.create(null, paragraph);
  const list = nodes.letter_list.create({ start: 1 }, [
    make($from.parent),
    make(nodes.paragraph.create(null, schema.text('two'))),
  ]);
  dispatch?.(state.tr.replaceWith($from.before(1), $from.after(1), list));
  return true;
};

const newTable: Command = (state, dispatch) => {
  const { $from } = state.selection;
  const row = (type: Node['type']) =>
    nodes.table_row.create(null, [type.create(), type.create(null, schema.text('b'))]);
  const table = nodes.table.create(null, [row(nodes.table_header), row(nodes.table_cell), row(nodes.table_cell)]);
  dispatch?.(state.tr.insert($from.after(1), table));
  return true;
};

Object.assign(edits, {
  letters: (session, random) => at(session, random, letters),
  splitLetter: (session, random) => at(session, random, splitListItem(nodes.letter_item)),
  liftLetter: (session, random) => at(session, random, liftListItem(nodes.letter_item)),
  newTable: (session, random) => at(session, random, newTable),
  tableShape: (session, random) => {
    const change = random.pick([addColumnAfter, addRowAfter, addRowBefore, deleteColumn, deleteRow, toggleHeaderRow]);
    return at(session, random, change, isCell);
  },
  footnote: (session, random) => {
    const label = random.pick(['1', 'å b']);
    const { state } = session;
    const definition = nodes.footnote_definition.create({ label }, nodes.paragraph.create(null, schema.text('note')));
    const end = state.doc.content.size;
    return at(session, random, ({ tr }, dispatch) => {
      tr.insert(end, definition).replaceSelectionWith(nodes.footnote_reference.create({ label }));
      dispatch?.(tr);
      return true;
    });
  },
} satisfies typeof edits);

/** What went wrong in a sequence of random edits, and after which of them. */
export interface Failure {
  what: string;
  edits: string[];
  text: string;
}

/** Makes up to `count` random edits, looking after each whether text and document agree, then undoes and redoes all. */
export function runSequence({ text }: Sample, random: Random, count: number): Failure | null {
  const all = { ...edits, ...execEdits };
  const done: string[] = [];
  let session: Session;
  const failed = (what: string): Failure => ({ what, edits: done, text: session?.source.text ?? '' });
  try {
    session = new Session(text);
    for (let step = 0; step < count; step += 1) {
      const name = random.pick(Object.keys(all));
      done.push(name);
      if (!all[name]!(session, random)) {
        done.pop();
        continue;
      }
      session.state.doc.check();
      const wrong = disagreement(session.source);
      if (wrong) return failed(wrong);
    }
    const edited = session.source.text;
    session.undoAll();
    if (session.source.text !== text) return failed('undo did not bring the bytes back');
    session.redoAll();
    if (session.source.text !== edited) return failed('redo did not bring the edited bytes back');
  } catch (error) {
    return failed((error as Error).stack ?? String(error));
  }
  return null;
}
