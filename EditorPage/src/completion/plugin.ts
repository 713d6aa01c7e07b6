/** Offers names of notes while a link to one is typed. */
import { Plugin, PluginKey, type EditorState, type Transaction } from 'prosemirror-state';
import type { EditorView } from 'prosemirror-view';
import { post } from '../bridge';
import { noteLink } from '../commands/insert';
import { schema } from '../schema';
import { CompletionList, LIST_ID, optionId } from './list';
import { offered } from './ranking';

/** What is being completed, and what is offered for it. */
interface Offer {
  /** Where the brackets begin, and where the caret stands. */
  from: number;
  to: number;
  typed: string;
  isEmbed: boolean;
  names: readonly string[];
  index: number;
}

interface Completion {
  offer: Offer | null;
  /** Where the reader has sent the list away: there it stays away. */
  dismissed: number | null;
}

type Order = { names: true } | { index: number } | { dismiss: true };

const key = new PluginKey<Completion>('completion');

/** The names that the host gave last. */
let known: readonly string[] = [];

/** Takes over the names of all notes, and offers them where some are asked for. */
export function takeNoteNames(view: EditorView, names: readonly string[]): void {
  known = names;
  if (offerIn(view.state) !== null) view.dispatch(view.state.tr.setMeta(key, { names: true } satisfies Order));
}

function offerIn(state: EditorState): Offer | null {
  return key.getState(state)?.offer ?? null;
}

/** The plugin that offers. */
export function noteCompletion(): Plugin {
  return new Plugin<Completion>({
    key,
    state: { init: () => ({ offer: null, dismissed: null }), apply: (tr, before, _old, state) => next(tr, before, state) },
    props: {
      handleKeyDown: (view, event) => press(view, event),
      attributes: (state): Record<string, string> => attributesFor(offerIn(state)),
      handleDOMEvents: { blur: (view) => (dismiss(view), false) },
    },
    view: (view) => {
      const list = new CompletionList((index) => choose(view, index));
      let asked: number | null = null;
      return {
        update: () => {
          const offer = offerIn(view.state);
          if (offer !== null && asked !== offer.from) post('noteNames', {});
          asked = offer?.from ?? null;
          if (offer === null || offer.names.length === 0) list.hide();
          else list.show(offer.names, offer.index, view.coordsAtPos(offer.from));
        },
        destroy: () => list.hide(),
      };
    },
  });
}

function attributesFor(offer: Offer | null): Record<string, string> {
  if (offer === null || offer.names.length === 0) return {};
  return { 'aria-autocomplete': 'list', 'aria-controls': LIST_ID, 'aria-activedescendant': optionId(offer.index) };
}

function next(tr: Transaction, before: Completion, state: EditorState): Completion {
  const order = tr.getMeta(key) as Order | undefined;
  if (order && 'dismiss' in order) return { offer: null, dismissed: before.offer?.from ?? before.dismissed };
  if (order && 'index' in order && before.offer) return { ...before, offer: { ...before.offer, index: order.index } };
  const mayOpen = tr.docChanged || before.offer !== null;
  if (!tr.docChanged && !tr.selectionSet && !order) return before;
  const found = mayOpen ? linkAtCaret(state) : null;
  if (found === null) return { offer: null, dismissed: null };
  if (found.from === before.dismissed) return { offer: null, dismissed: before.dismissed };
  const keepsIndex = before.offer !== null && before.offer.typed === found.typed;
  const names = offered(known, found.typed);
  const index = keepsIndex ? Math.min(before.offer!.index, Math.max(0, names.length - 1)) : 0;
  return { offer: { ...found, names, index }, dismissed: null };
}

/** The unfinished link to a note right before the caret. */
function linkAtCaret(state: EditorState): Pick<Offer, 'from' | 'to' | 'typed' | 'isEmbed'> | null {
  const { $from, empty } = state.selection;
  if (!empty || !$from.parent.inlineContent || $from.parent.type.spec.code) return null;
  if (schema.marks.code.isInSet(state.storedMarks ?? $from.marks())) return null;
  const text = $from.parent.textBetween(0, $from.parentOffset, undefined, '\ufffc');
  const match = /(!?)\[\[([^[\]|#\n\ufffc]{0,200})$/.exec(text);
  if (match === null) return null;
  return { from: $from.start() + match.index, to: $from.pos, typed: match[2]!, isEmbed: match[1] === '!' };
}

function press(view: EditorView, event: KeyboardEvent): boolean {
  const offer = offerIn(view.state);
  if (offer === null || event.isComposing || event.ctrlKey || event.altKey || event.metaKey || event.shiftKey) return false;
  if (event.key === 'Escape') return dismiss(view);
  if (offer.names.length === 0) return false;
  if (event.key === 'Enter' || event.key === 'Tab') return choose(view, offer.index);
  if (event.key !== 'ArrowDown' && event.key !== 'ArrowUp') return false;
  const step = event.key === 'ArrowDown' ? 1 : -1;
  const index = (offer.index + step + offer.names.length) % offer.names.length;
  view.dispatch(view.state.tr.setMeta(key, { index } satisfies Order));
  return true;
}

function dismiss(view: EditorView): boolean {
  if (offerIn(view.state) === null) return false;
  view.dispatch(view.state.tr.setMeta(key, { dismiss: true } satisfies Order));
  return true;
}

/** Puts the link in place of what was typed, and of brackets that close it already. */
function choose(view: EditorView, index: number): boolean {
  const offer = offerIn(view.state);
  const name = offer?.names[index];
  if (!offer || name === undefined) return false;
  const { $from } = view.state.selection;
  const rest = $from.parent.textBetween($from.parentOffset, $from.parent.content.size, undefined, '\ufffc');
  const end = offer.to + (rest.startsWith(']]') ? 2 : 0);
  view.dispatch(view.state.tr.replaceWith(offer.from, end, noteLink(name, null, offer.isEmbed)).scrollIntoView());
  view.focus();
  return true;
}
