/** Runs commands on notes written as Markdown, where "‹" and "›" stand around what is selected and "‸" at the caret. */
import { history } from 'prosemirror-history';
import type { Mark, Node } from 'prosemirror-model';
import { EditorState, TextSelection, type Command, type Plugin, type Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { tableShape } from '../../src/commands/tableShape';
import { schema } from '../../src/schema';
import { SourceDocument } from '../../src/source/SourceDocument';

/** A note with a selection, as it stands in a test. */
export interface Situation {
  source: SourceDocument;
  state: EditorState;
}

/** Loads a note and takes the marks for the selection out of it. */
export function situation(marked: string, plugins: Plugin[] = []): Situation {
  const source = SourceDocument.load(marked);
  let state = EditorState.create({ doc: source.doc, plugins: [history(), tableShape(), ...plugins] });
  const places: number[] = [];
  for (const mark of ['‹', '›', '‸']) {
    const pos = find(state.doc, mark);
    if (pos === null) continue;
    places.push(pos);
    state = state.apply(state.tr.delete(pos, pos + 1).setMeta('addToHistory', false));
  }
  const [from = 1, to = from] = places;
  return { source: SourceDocument.load(marked.replace(/[‹›‸]/g, '')), state: select(state, from, to) };
}

function select(state: EditorState, from: number, to: number): EditorState {
  return state.apply(state.tr.setSelection(TextSelection.create(state.doc, from, to)));
}

function find(doc: Node, mark: string): number | null {
  let found: number | null = null;
  doc.descendants((node, pos) => {
    const at = node.text?.indexOf(mark) ?? -1;
    if (at >= 0 && found === null) found = pos + at;
    return found === null;
  });
  return found;
}

/** The note after the command, with its selection; null when the command does not apply. */
export function after(command: Command, marked: string): string | null {
  const { source, state } = situation(marked);
  let next: EditorState | null = null;
  const applies = command(state, (tr) => (next = state.apply(tr)));
  if (!applies) return null;
  return written(source, next ?? state);
}

/** The note of a state as text, with its selection shown. */
export function written(source: SourceDocument, state: EditorState): string {
  const { $from, $to, empty } = state.selection;
  const tr = state.tr.setMeta('addToHistory', false);
  if (empty) insertMark(tr, $from.pos, '‸', $from.marks());
  else {
    insertMark(tr, $to.pos, '›', $to.nodeBefore?.marks ?? []);
    insertMark(tr, $from.pos, '‹', $from.nodeAfter?.marks ?? []);
  }
  source.apply(tr.doc);
  return source.text;
}

function insertMark(tr: Transaction, pos: number, mark: string, marks: readonly Mark[]): void {
  if (tr.doc.resolve(pos).parent.inlineContent) tr.insert(pos, schema.text(mark, marks));
}

/** The state after a text was typed at once, if the plugin has something else to make of it; null if it has not. */
export function replacedInput(plugin: Plugin, state: EditorState, text: string): EditorState | null {
  const { from, to } = state.selection;
  const view = { state, composing: false, dispatch: (tr: Transaction) => (view.state = view.state.apply(tr)) } as unknown as EditorView & { state: EditorState };
  return plugin.props.handleTextInput?.call(plugin, view, from, to, text, () => state.tr) ? view.state : null;
}

/** Types letter by letter as input rules see it, without a screen. */
export function typed(plugin: Plugin, marked: string, text: string): string {
  const { source, state } = situation(marked, [plugin]);
  let current = state;
  for (const letter of text) {
    current = replacedInput(plugin, current, letter) ?? current.apply(current.tr.insertText(letter));
    source.apply(current.doc);
  }
  return written(source, current);
}
