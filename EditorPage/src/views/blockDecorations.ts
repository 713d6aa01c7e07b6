/** Decorations that depend on one top-level block each, and are made anew only for blocks that change. */
import type { Node } from 'prosemirror-model';
import { Plugin, PluginKey } from 'prosemirror-state';
import { DecorationSet, type Decoration } from 'prosemirror-view';

/** The decorations of the top-level block `node`, which begins at `pos`. */
export type Decorate = (node: Node, pos: number) => Decoration[];

/** A run of top-level children, and where it begins. */
interface Run {
  from: number;
  to: number;
  start: number;
}

/** A plugin that keeps the decorations of every block. */
export function blockDecorations(name: string, decorate: Decorate): Plugin {
  const key = new PluginKey<DecorationSet>(name);
  const build = (doc: Node, { from, to, start }: Run): Decoration[] => {
    const made: Decoration[] = [];
    let pos = start;
    for (let index = from; index < to; index++) {
      made.push(...decorate(doc.child(index), pos));
      pos += doc.child(index).nodeSize;
    }
    return made;
  };
  return new Plugin<DecorationSet>({
    key,
    state: {
      init: (_config, { doc }) => DecorationSet.create(doc, build(doc, { from: 0, to: doc.childCount, start: 0 })),
      apply: (tr, set) => {
        if (!tr.docChanged) return set;
        const run = changedRun(tr.before, tr.doc);
        const mapped = set.map(tr.mapping, tr.doc);
        const old = mapped.find(run.start, endOf(tr.doc, run));
        return mapped.remove(old).add(tr.doc, build(tr.doc, run));
      },
    },
    props: { decorations: (state) => key.getState(state) },
  });
}

/** The children of `after` that are not the same nodes as in `before`. */
export function changedRun(before: Node, after: Node): Run {
  const shorter = Math.min(before.childCount, after.childCount);
  let from = 0;
  let start = 0;
  while (from < shorter && before.child(from) === after.child(from)) start += after.child(from++).nodeSize;
  let same = 0;
  while (same < shorter - from && before.child(before.childCount - 1 - same) === after.child(after.childCount - 1 - same)) same++;
  return { from, to: after.childCount - same, start };
}

function endOf(doc: Node, { from, to, start }: Run): number {
  let end = start;
  for (let index = from; index < to; index++) end += doc.child(index).nodeSize;
  return end;
}
