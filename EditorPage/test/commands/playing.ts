/** Plays keys on notes written as Markdown, as the page takes them, without a screen. */
import type { Command, EditorState, Plugin, Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { plainBehindLinks } from '../../src/commands/behindLink';
import { commandFor } from '../../src/commands/exec';
import { typingRules } from '../../src/commands/inputRules';
import { keyPlugins } from '../../src/commands/keys';
import { correct } from '../../src/corrections';
import { SourceDocument } from '../../src/source/SourceDocument';
import { disagreement } from '../editing';
import { situation, written } from './onText';

const rules = typingRules();
const keys = keyPlugins({ definitionFor: () => null, peek: () => [] });

/** A note after some keys, and where the caret then is. */
export interface Played {
  text: string;
  /** The note as it would be written from nothing, with the caret. */
  shown: string;
}

/**
 * Types each of `acts` letter by letter; what stands between angle brackets is a key by its name, and between braces one of
 * the toolbar's commands. Throws when text and document stop saying the same.
 */
export function played(marked: string, ...acts: readonly string[]): Played {
  return play(marked, acts, null);
}

/** The same with keys that may do nothing; each state is looked at, first the one before anything is done. */
export function play(marked: string, acts: readonly string[], look: ((state: EditorState) => void) | null): Played {
  const { source, state: first } = situation(marked, [rules, ...keys, plainBehindLinks()]);
  source.apply(first.doc);
  let state = first;
  const take = (tr: Transaction): void => {
    state = state.apply(tr);
    const { corrections } = source.apply(state.doc);
    if (corrections.length === 0) return;
    state = state.apply(correct(state.tr, corrections).setMeta('appendedTransaction', tr));
    source.apply(state.doc);
  };
  const run = (command: Command): boolean => command(state, take, viewOf(() => state, take));
  const press = (name: string): boolean => run((_state, _dispatch, view) => keys.some((plugin) => isTaken(plugin, view!, name)));
  look?.(state);
  for (const act of acts) {
    const key = /^<(.+)>$/.exec(act)?.[1];
    const command = /^\{(.+)\}$/.exec(act)?.[1];
    if (key) {
      if (!press(key) && look === null) throw new Error(`nothing takes ${key} on ${JSON.stringify(source.text)}`);
    } else if (command) run(commandFor(command)!);
    else for (const letter of act) typeLetter(letter);
    const wrong = disagreement(source);
    if (wrong) throw new Error(`${act}: ${wrong}`);
    look?.(state);
  }
  return { text: source.text, shown: written(SourceDocument.load(''), state) };

  function typeLetter(letter: string): void {
    const { from, to } = state.selection;
    const view = viewOf(() => state, take);
    if (!rules.props.handleTextInput?.call(rules, view, from, to, letter, () => state.tr)) take(state.tr.insertText(letter));
  }
}

function viewOf(state: () => EditorState, dispatch: (tr: Transaction) => void): EditorView {
  return {
    get state() {
      return state();
    },
    dispatch,
    dom: { querySelectorAll: () => [] },
    domAtPos: () => ({ node: null }),
    composing: false,
    endOfTextblock: () => true,
  } as unknown as EditorView;
}

function isTaken(plugin: Plugin, view: EditorView, name: string): boolean {
  const held = name.split('-');
  const key = held.pop()!;
  const event = { key, keyCode: 0, shiftKey: held.includes('Shift'), ctrlKey: held.includes('Ctrl'), altKey: held.includes('Alt'), metaKey: false };
  return plugin.props.handleKeyDown?.call(plugin, view, event as KeyboardEvent) === true;
}
