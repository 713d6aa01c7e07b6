/** Shows what was found in the note. */
import type { Node } from 'prosemirror-model';
import { Plugin, PluginKey, type EditorState, type Transaction } from 'prosemirror-state';
import { Decoration, DecorationSet } from 'prosemirror-view';
import { FROM_TEXT } from '../folding/folding';
import type { NoteContext } from '../views/context';
import { Finder, type Match } from './matches';
import { around, indexFrom, sameQuery, type Query } from './query';

/** Of so many matches on either side of the current one the places are shown. */
const SHOWN = 1_000;

/** Happens on the note's element when what was found has changed. */
export const FOUND = 'found';

/** What was found, and which of it is the current match. */
export interface Found {
  finder: Finder;
  matches: readonly Match[];
  current: number;
  decorations: DecorationSet;
}

/** A new query (null ends the search), or a step to another match. */
type Order = { query: Query | null; from: number } | { current: number } | { more: true };

const key = new PluginKey<Found | null>('find');

/** What the note's search has found; null while nothing is looked for. */
export function foundIn(state: EditorState): Found | null {
  return key.getState(state) ?? null;
}

/** What a transaction says to the search. */
export const findOrder = {
  search: (query: Query | null, from: number) => [key, { query, from } satisfies Order] as const,
  more: () => [key, { more: true } satisfies Order] as const,
  goTo: (current: number) => [key, { current } satisfies Order] as const,
};

/** The plugin that finds and shows. */
export function findMarks({ peek }: Pick<NoteContext, 'peek'>): Plugin {
  return new Plugin<Found | null>({
    key,
    state: {
      init: () => null,
      apply(tr, found) {
        const order = tr.getMeta(key) as Order | undefined;
        if (order !== undefined && 'query' in order) return begin(tr.doc, order, found, peek);
        if (found === null) return null;
        if (order !== undefined && 'current' in order) return shown(tr.doc, { ...found, current: order.current });
        if (!tr.docChanged && order === undefined) return found;
        const matches = found.finder.matches(tr.doc);
        return shown(tr.doc, { ...found, matches, current: currentAfter(tr, found, matches) });
      },
    },
    props: { decorations: (state) => foundIn(state)?.decorations },
    view: (view) => {
      const tell = () => void view.dom.dispatchEvent(new Event(FOUND));
      // Made anew with every note.
      queueMicrotask(tell);
      let isDue = false;
      const lookOn = (): void => {
        isDue = false;
        if (foundIn(view.state)?.finder.isComplete === false) view.dispatch(view.state.tr.setMeta(...findOrder.more()));
      };
      return {
        update: (now, before) => {
          if (foundIn(now.state) === foundIn(before)) return;
          tell();
          if (isDue || foundIn(now.state)?.finder.isComplete !== false) return;
          isDue = true;
          requestIdleCallback(lookOn, { timeout: 100 });
        },
      };
    },
  });
}

/** The match that is the current one now. */
function currentAfter(tr: Transaction, found: Found, matches: readonly Match[]): number {
  const before = found.matches[found.current];
  if (before === undefined) return indexFrom(matches, tr.selection.from);
  // Folding moves no match past another.
  if (tr.getMeta(FROM_TEXT) === true && matches.length === found.matches.length) return found.current;
  const from = tr.mapping.map(before.from, -1);
  const within = found.current - found.matches.findIndex((match) => match.from === before.from);
  return Math.min(indexFrom(matches, from) + (before.folded ? within : 0), matches.length - 1);
}

function begin(doc: Node, { query, from }: { query: Query | null; from: number }, found: Found | null, peek: NoteContext['peek']): Found | null {
  if (query === null || query.text === '') return null;
  const finder = found !== null && sameQuery(found.finder.query, query) ? found.finder : new Finder(query, peek);
  const matches = finder.matches(doc);
  return shown(doc, { finder, matches, current: indexFrom(matches, from) });
}

function shown(doc: Node, found: Omit<Found, 'decorations'>): Found {
  const first = Math.max(0, found.current - SHOWN);
  const made = found.matches.slice(first, first + 2 * SHOWN + 1).flatMap((match, index) => (match.folded ? [] : [mark(match, first + index === found.current)]));
  return { ...found, decorations: DecorationSet.create(doc, made) };
}

function mark({ from, to, isNode }: Match, isCurrent: boolean): Decoration {
  const attrs = { class: isCurrent ? 'find-match find-current' : 'find-match' };
  return isNode ? Decoration.node(from, to, attrs) : Decoration.inline(from, to, attrs);
}

/** The index of the match one step from the current one. */
export function nextIndex(found: Found, by: 1 | -1): number {
  return around(found.current, by, found.matches.length);
}
